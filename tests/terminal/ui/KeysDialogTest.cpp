// The table of keys against what the keys do, and the guide against it.
#include "terminal/ui/KeysDialog.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <QFile>
#include <QTableWidget>

namespace Terminal {
namespace {

class KeysDialogTest : public OverlayWindow
{
protected:
    static QString actOf(const QString &keys)
    {
        const KeysDialog dialog(nullptr);
        const auto *const table = dialog.findChild<QTableWidget *>();
        const auto found = table->findItems(keys, Qt::MatchExactly);
        return found.size() == 1 ? table->item(found.front()->row(), 1)->text() : QString();
    }

    const QString m_periodKeys = QStringLiteral(u"Alt+1 … Alt+4");
};

TEST_F(KeysDialogTest, NamesThePeriodsAsTheirKeysChooseThem)
{
    show({});
    speakEnglish();
    activateWindow();
    QStringList chosen;
    for (const Qt::Key digit : {Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4}) {
        QTest::keyClick(chart(), digit, Qt::AltModifier);
        chosen.append(periodTitle(chart()->data().period));
    }
    EXPECT_EQ(actOf(m_periodKeys), chosen.join(QStringLiteral(", ")));
}

TEST_F(KeysDialogTest, SaysOfThePeriodsWhatTheGuideSays)
{
    show({});
    speakEnglish();
    QFile guide(QStringLiteral(TRADECHART_EXAMPLES "/../docs/terminal.md"));
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    const QString row = QStringLiteral("| %1 | %2 |").arg(m_periodKeys, actOf(m_periodKeys));
    EXPECT_TRUE(QString::fromUtf8(guide.readAll()).contains(row)) << qPrintable(row);
}

} // namespace
} // namespace Terminal
