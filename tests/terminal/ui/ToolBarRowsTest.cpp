// The window's bars and parts in windows of every width.
#include "terminal/ui/ToolBarRows.h"
#include "terminal/trade/TradeDocks.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <QDockWidget>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

namespace Terminal {
namespace {

class ToolBarRowsTest : public OverlayWindow
{
protected:
    void resize(const QSize &size)
    {
        m_window->resize(size);
        ASSERT_TRUE(waitUntil([&] { return m_window->width() == size.width(); }));
        QApplication::processEvents();
    }

    /// Names of the bars of which buttons hide.
    QStringList crowdedBars() const
    {
        QStringList names;
        for (const QToolBar *const bar : m_window->findChildren<QToolBar *>()) {
            const auto *const more = bar->findChild<QToolButton *>(QStringLiteral("qt_toolbar_ext_button"));
            if (more != nullptr && more->isVisible()) {
                names.append(bar->objectName());
            }
        }
        return names;
    }

    QToolBar *bar(const char *name) const { return m_window->findChild<QToolBar *>(QLatin1String(name)); }
};

TEST_F(ToolBarRowsTest, HideNoButtonHoweverNarrowTheWindow)
{
    show({}, ChartPeriod::Minute);
    for (const bool english : {false, true}) {
        if (english) {
            speakEnglish();
        }
        for (const int width : {1280, 1024, 900, 800, 1600, 800}) {
            resize({width, 600});
            EXPECT_EQ(crowdedBars(), QStringList()) << width << (english ? " English" : " Chinese");
        }
    }
}

TEST_F(ToolBarRowsTest, AreOneWhereThereIsRoom)
{
    show({}, ChartPeriod::Minute);
    resize({1600, 600});
    EXPECT_EQ(bar("chartBar")->y(), bar("overlayBar")->y());
    resize({800, 600});
    EXPECT_LT(bar("chartBar")->y(), bar("overlayBar")->y());
    resize({1600, 600});
    EXPECT_EQ(bar("chartBar")->y(), bar("overlayBar")->y());
}

TEST_F(ToolBarRowsTest, LeaveRoomForChartTicketAndListInASmallWindow)
{
    show({}, ChartPeriod::Minute);
    for (const bool english : {false, true}) {
        if (english) {
            speakEnglish();
        }
        m_window->trade()->setShown(true);
        resize({800, 500});
        EXPECT_EQ(m_window->size(), QSize(800, 500));
        EXPECT_GE(chart()->width(), 400);
        EXPECT_GE(chart()->height(), 140);
        const auto *const list = m_window->findChild<QTableView *>(QStringLiteral("ordersView"));
        EXPECT_GE(list->viewport()->height(), 2 * 24) << "two rows";
        const auto *const send = m_window->findChild<QPushButton *>(QStringLiteral("sendOrder"));
        const QRect place(send->mapTo(m_window.get(), QPoint()), send->size());
        EXPECT_TRUE(m_window->rect().contains(place));
        EXPECT_GE(send->height(), 24);
    }
}

TEST_F(ToolBarRowsTest, CutNoneOfTheTicketsTexts)
{
    show({}, ChartPeriod::Minute);
    m_window->trade()->setShown(true);
    resize({900, 700});
    for (const QLabel *const label : m_window->findChildren<QLabel *>()) {
        if (label->objectName().startsWith(QLatin1String("ticket")) && label->isVisible()) {
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << qPrintable(label->text());
        }
    }
}

} // namespace
} // namespace Terminal
