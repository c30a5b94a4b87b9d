#pragma once

#include "endpoint/LocalBroker.h"
#include "terminal/results/ResultsDock.h"
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
        importStatement();
        startModule();
    }

    void importStatement() { import({QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")}); }

    /// Imports a file and tells the charts.
    void importBesideCharts(const QString &file) { import({QStringLiteral("--bus"), address(), file}); }

    void import(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral(TRADEMODULE),
                      QStringList({QStringLiteral("--ledger"), ledger(), QStringLiteral("import")}) +
                          arguments);
        ASSERT_TRUE(process.waitForFinished());
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }

    void startModule()
    {
        m_broker.start(address());
        m_module = std::make_unique<TradeModuleProcess>(QStringLiteral(TRADEMODULE), ledger(), address(),
                                                        QStringLiteral("en"), nullptr);
        m_module->start();
    }

    /// Opens the window and its session on the bus.
    void openWindow(const QString &overlay, const OpenedChart &chart,
                    const QString &data = QStringLiteral(TRADECHART_EXAMPLES))
    {
        TerminalOptions options;
        options.overlays = QStringList(overlay);
        options.size = QSize(1280, 720);
        options.refresh = std::chrono::seconds(1);
        options.asksBeforeSending = m_asksBeforeSending;
        m_busAddress = address();
        WindowFixture::openWindow(chart, options, data);
        m_session->begin();
        m_window->answers()->start(address());
        m_session->join();
        m_window->results()->start(address());
    }

    /// Those of the real library.
    void startOverlays()
    {
        ASSERT_TRUE(waitUntil([this] { return m_session->stage() == TradingSession::Stage::Trading; }));
        WindowFixture::startOverlays(PLUGIN_FILE, m_session->gates());
    }

    static QString address() { return QApplication::applicationDirPath(); }
    QString ledger() const { return m_folder.filePath(m_ledgerName); }

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

    bool m_asksBeforeSending = false;
    QString m_ledgerName = QStringLiteral("account.db");
    QTemporaryDir m_folder;
    LocalCommunication::LocalBroker m_broker;
    std::unique_ptr<TradeModuleProcess> m_module;
};

} // namespace Terminal
