#pragma once

#include "endpoint/LocalBroker.h"
#include "terminal/services/BusProbe.h"
#include "terminal/services/SharedChannel.h"
#include "terminal/services/TradeLink.h"
#include "terminal/services/TradeModuleProcess.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/WhenOpen.h"
#include "tests/terminal/support/WindowFixture.h"

#include <QMenu>
#include <QTemporaryDir>

namespace Terminal {

/// The window with the real overlay library, on the bus of this program's folder with a broker and the
/// trading module, whose ledger has the sample statement.
class TradingWindow : public WindowFixture
{
protected:
    void SetUp() override
    {
        QProcess import;
        import.start(QStringLiteral(TRADEMODULE),
                     {QStringLiteral("--ledger"), ledger(), QStringLiteral("import"),
                      QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")});
        ASSERT_TRUE(import.waitForFinished());
        ASSERT_EQ(import.exitCode(), 0);

        m_broker.start(address());
        m_module = std::make_unique<TradeModuleProcess>(QStringLiteral(TRADEMODULE), ledger(), address(),
                                                        QStringLiteral("en"), nullptr);
        m_module->start();
        m_link.start(address());
        m_shared.start(address());
        ASSERT_TRUE(waitUntil([this] { return m_link.isAnswering(); }));
    }

    void openWindow(const QString &overlay, const OpenedChart &chart)
    {
        TerminalOptions options;
        options.overlays = QStringList(overlay);
        options.size = QSize(1280, 720);
        options.refreshSeconds = 1;
        WindowFixture::openWindow(chart, options);
    }

    /// Those of the real library.
    void startOverlays()
    {
        WindowFixture::startOverlays(PLUGIN_FILE, {busGate(address()), m_link.answerGate()});
        QObject::connect(&m_shared, &SharedChannel::heard, m_window.get(), [this](const SharedNews &news) {
            news.kind == SharedNews::Spoilt ? m_window->overlays()->renewCombined(news.code)
                                            : m_window->overlays()->showHeard(news.code);
        });
    }

    static QString address() { return QApplication::applicationDirPath(); }
    QString ledger() const { return m_folder.filePath(QStringLiteral("account.db")); }

    QStringList rowsAtAClick(const QPointF &position)
    {
        QStringList rows;
        whenOpen<QMenu>([&rows](QMenu *menu) {
            for (const QAction *const action : menu->actions()) {
                rows.append(action->text());
            }
            QTest::keyClick(menu, Qt::Key_Escape);
        });
        QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, position.toPoint());
        return rows;
    }

    QTemporaryDir m_folder;
    LocalCommunication::LocalBroker m_broker;
    std::unique_ptr<TradeModuleProcess> m_module;
    TradeLink m_link{nullptr};
    SharedChannel m_shared{nullptr};
};

} // namespace Terminal
