// The built program as its user starts it: with a broker and a trading module of its own, without a
// display.
#include "terminal/chart/ChartView.h"
#include "terminal/chart/SeriesLabel.h"
#include "terminal/services/TradeModuleProcess.h"
#include "terminal/ui/MainWindow.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace Terminal {
namespace {

struct Outcome
{
    int exitCode;
    QString messages;
};

/// Runs `program` to its end.
Outcome run(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return {-1, QStringLiteral("did not end: ") + QString::fromUtf8(process.readAllStandardError())};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            QString::fromUtf8(process.readAllStandardError())};
}

/// A terminal in a folder of its own, which names a bus that nobody else uses.
class Program : public ::testing::Test
{
protected:
    Program()
    {
        m_program = m_folder.filePath(QStringLiteral("tradeterminal"));
        EXPECT_TRUE(QFile::copy(QStringLiteral(TRADETERMINAL), m_program));
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
        m_environment.remove(QStringLiteral("DISPLAY"));
        m_environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        m_environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }

    QString picture() const { return m_folder.filePath(QStringLiteral("picture.png")); }
    QString ledger() const { return m_folder.filePath(QStringLiteral("account.db")); }

    Outcome terminal(const QStringList &arguments)
    {
        return run(m_program,
                   QStringList({QStringLiteral("--data"), QStringLiteral(TRADECHART_EXAMPLES),
                                QStringLiteral("--size"), QStringLiteral("1280x720")}) +
                       arguments,
                   m_environment);
    }

    Outcome snapshot(const QStringList &arguments)
    {
        return terminal(QStringList({QStringLiteral("--snapshot"), picture(), QStringLiteral("--plugin"),
                                     QStringLiteral(PLUGIN_FILE)}) +
                        arguments);
    }

#ifdef TRADEMODULE
    QStringList withLedger() const
    {
        return {QStringLiteral("--module"),  QStringLiteral(TRADEMODULE),
                QStringLiteral("--ledger"),  ledger(),
                QStringLiteral("--timeout"), QStringLiteral("40")};
    }

    void importStatement()
    {
        const Outcome outcome = run(QStringLiteral(TRADEMODULE),
                                    {QStringLiteral("--ledger"), ledger(), QStringLiteral("import"),
                                     QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")},
                                    m_environment);
        ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    }
#endif

    QTemporaryDir m_folder;
    QTemporaryDir m_runtime;
    QString m_program;
    QProcessEnvironment m_environment;
};

TEST_F(Program, DrawsBarsWithoutADisplay)
{
    const Outcome outcome = snapshot({QStringLiteral("--code"), QStringLiteral("600519")});
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    EXPECT_EQ(QImage(picture()).size(), QSize(1280, 720));
}

TEST_F(Program, TellsThatAWindowNeedsADisplay)
{
    const Outcome outcome = terminal({});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("--snapshot"))) << qPrintable(outcome.messages);
}

TEST_F(Program, RefusesAWrongOptionValue)
{
    const Outcome outcome = snapshot({QStringLiteral("--period"), QStringLiteral("year")});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("--period"))) << qPrintable(outcome.messages);
}

TEST_F(Program, NamesDataThatIsNotThere)
{
    const Outcome outcome = snapshot({QStringLiteral("--code"), QStringLiteral("123456")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("123456"))) << qPrintable(outcome.messages);
}

TEST_F(Program, NamesAnOverlayLibraryThatCannotBeLoaded)
{
    const Outcome outcome =
        terminal({QStringLiteral("--snapshot"), picture(), QStringLiteral("--overlays"),
                  QStringLiteral("cost"), QStringLiteral("--plugin"), QStringLiteral("/nowhere/lib.so")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("/nowhere/lib.so"))) << qPrintable(outcome.messages);
}

TEST_F(Program, WritesNoPictureWithoutTheOverlaysData)
{
    const Outcome outcome = snapshot({QStringLiteral("--overlays"), QStringLiteral("cost"),
                                      QStringLiteral("--timeout"), QStringLiteral("1")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(QStringLiteral("HolderCostPrice"))) << qPrintable(outcome.messages);
    EXPECT_FALSE(QFile::exists(picture()));
}

#ifdef TRADEMODULE

/// Rows of the canvas's left part in which the line's colour runs from edge to edge.
std::vector<int> lineRows(const QImage &image, const QRect &canvas, const QColor &colour)
{
    std::vector<int> rows;
    for (int y = canvas.top(); y <= canvas.bottom(); ++y) {
        int count = 0;
        for (int x = canvas.left() + 10; x < canvas.left() + 310; ++x) {
            count += image.pixelColor(x, y) == colour ? 1 : 0;
        }
        if (count > 250) {
            rows.push_back(y);
        }
    }
    return rows;
}

class ProgramInTheme : public Program, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(ProgramInTheme, DrawsTheCostThatTheLedgerHas)
{
    importStatement();
    const Outcome outcome =
        snapshot(withLedger() + QStringList({QStringLiteral("--code"), QStringLiteral("600519"),
                                             QStringLiteral("--overlays"), QStringLiteral("cost"),
                                             QStringLiteral("--theme"), QLatin1String(GetParam())}));
    ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);

    TerminalOptions options;
    options.size = QSize(1280, 720);
    MainWindow window(DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(), options);
    ASSERT_TRUE(window.load(QStringLiteral("600519"), ChartPeriod::Day, 0));
    window.grab();
    const QRect canvas(window.chart()->canvas()->mapTo(&window, QPoint()), window.chart()->canvas()->size());
    const ThemeKind kind = qstrcmp(GetParam(), "light") == 0 ? ThemeKind::Light : ThemeKind::Dark;
    const std::vector<int> rows = lineRows(QImage(picture()), canvas, makeTheme(kind, RiseColour::Red).line);
    ASSERT_EQ(rows.size(), 1U);
    // 400 shares for 756,023.08: what `positions` of the ledger says.
    EXPECT_NEAR(rows.front(), canvas.top() + window.chart()->chartGeometry().priceToY(756023.08 / 400), 1.5);
}

INSTANTIATE_TEST_SUITE_P(Themes, ProgramInTheme, ::testing::Values("dark", "light"));

TEST_F(Program, DrawsNoLineForNoHolding)
{
    const Outcome outcome =
        snapshot(withLedger() + QStringList({QStringLiteral("--overlays"), QStringLiteral("cost")}));
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    const QImage image(picture());
    EXPECT_TRUE(
        lineRows(image, image.rect().adjusted(0, 90, 0, 0), makeTheme(ThemeKind::Dark, RiseColour::Red).line)
            .empty());
}

TEST_F(Program, WaitsForTheTradesToo)
{
    importStatement();
    const QStringList arguments =
        withLedger() + QStringList({QStringLiteral("--code"), QStringLiteral("600519")});
    ASSERT_EQ(snapshot(arguments).exitCode, 0);
    const QImage bare(picture());
    const Outcome outcome =
        snapshot(arguments + QStringList({QStringLiteral("--overlays"), QStringLiteral("trades")}));
    ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    const QColor both = makeTheme(ThemeKind::Dark, RiseColour::Red).both;
    const auto pixels = [both](const QImage &image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += image.pixelColor(x, y) == both ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_EQ(pixels(bare), 0);
    EXPECT_GT(pixels(QImage(picture())), 500);
}

#endif

TEST(TradeModuleChild, IsStartedAgainWhenItEnds)
{
    TradeModuleProcess module(QStringLiteral("false"), QStringLiteral("l"), QStringLiteral("b"), nullptr);
    int ends = 0;
    QObject::connect(&module, &TradeModuleProcess::failed, &module, [&ends] { ++ends; });
    module.start();
    EXPECT_TRUE(waitUntil([&ends] { return ends >= 2; }));
}

TEST(TradeModuleChild, IsNamedWhenItCannotBeStarted)
{
    TradeModuleProcess module(QStringLiteral("/nowhere/trademodule"), QStringLiteral("l"),
                              QStringLiteral("b"), nullptr);
    QString reason;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&reason](const QString &text) { reason = text; });
    module.start();
    EXPECT_TRUE(waitUntil([&reason] { return reason.contains(QStringLiteral("/nowhere/trademodule")); }));
}

} // namespace
} // namespace Terminal
