// The example of a terminal beside the checker, as it is and with one fault at a time.
#include "hostcheck/HostCheck.h"
#include "examples/host/Chart.h"
#include "hostcheck/Rule.h"
#include "tests/hostcheck/FaultyBorder.h"
#include "tests/support/RecordedBus.h"
#include "tradechartobject/CombinedOverlay.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QLibrary>

#include <array>
#include <cctype>
#include <cstdio>
#include <set>

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The example, and a user who chooses the first row and says yes.
struct UsersChart : Chart
{
    int popupMenu(const char **, void *) override { return waitForUser(), 0; }
    bool confirmBox(const char *) override { return ++questions, waitForUser(), true; }
    void drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                          int variant) override
    {
        Chart::drawMarkerSeries(reserved, flags, prices, style, variant);
        for (int bar = 0; bar < bars.size(); ++bar) {
            mark = flags[bar] == 1.0 ? at(bar, prices[bar]) - QPointF(0.0, 5.0) : mark;
        }
    }
    void drawMarker(int reserved, int bar, int kind, int atLow, double price) override
    {
        Chart::drawMarker(reserved, bar, kind, atLow, price);
        mark = at(bar, price) + QPointF(0.0, atLow == 1 ? -5.0 : 5.0);
    }
    void clickMark()
    {
        press(mark.x(), mark.y());
        press(mark.x() + 50.0, mark.y() + 50.0);
    }
    void press(double x, double y)
    {
        for (Korvane::IChartObject *const overlay : overlays) {
            overlay->handleMouseMove(x, y);
            if (overlay->type() == Korvane::pluginObjectType && overlay->hitTest(x, y) == 0) {
                overlay->handleMousePress(x, y);
                overlay->handleMouseRelease(x, y);
                overlay->handleMousePressR(x, y);
                overlay->handleMouseReleaseR(x, y);
                return;
            }
        }
    }

    QPointF mark; ///< inside the one that was drawn last
    int questions = 0;

    static void waitForUser()
    {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
    }
};

Korvane::AnalyData bar(unsigned time, int number)
{
    const double low = 10.0 + number % 5;
    return {time, {}, low + 2.0, low, low + 1.0, {}};
}

/// Days of one month, minutes of one hour.
QVector<Korvane::AnalyData> twentyBars(unsigned first)
{
    QVector<Korvane::AnalyData> bars;
    for (unsigned number = 0; number < 20; ++number) {
        bars.append(bar(first + number, static_cast<int>(number)));
    }
    return bars;
}

constexpr unsigned firstDay = 20240103;

/// 09:30 of today, where orders of earlier days are shown.
unsigned firstMinute()
{
    const QDate today = QDate::currentDate();
    const auto monthDay = static_cast<unsigned>(today.month() * 100 + today.day());
    return static_cast<unsigned>(today.year() - 2004) << 27U | monthDay << 16U | 570U;
}

void answer(const char *command, const QByteArray &rows)
{
    RecordedBus::instance().deliver("TradeQuery", QByteArray("{\"cmd\":\"") + command +
                                                      "\",\"stkcode\":\"600519\",\"data\":" + rows + "}");
}

void answerAll()
{
    answer("HolderCostPrice", R"({"stkcode":"600519","market":"1","costprice":"12.5"})");
    answer(
        "HistoryTrade",
        R"([{"bsflag2":"S","bizdate":"20240105","matchtime":"9301500","matchprice":"12","matchqty":"300"}])");
    answer("EntrustTodayTrade",
           R"([{"market":"1","bsflag2":"0B","orderstatus":"2","ordersno":"5",)"
           R"("operdate":"20240103","opertime":"9350000","orderprice":"13","orderqty":"300"}])");
    while (QCoreApplication::eventDispatcher()->hasPendingEvents()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
}

class HostCheckExample : public ::testing::Test
{
protected:
    static QFunctionPointer resolve(const char *name)
    {
        QLibrary library(QStringLiteral(CHECKER_FILE));
        library.setLoadHints(QLibrary::PreventUnloadHint);
        const QFunctionPointer found = library.resolve(name);
        EXPECT_NE(found, nullptr) << qPrintable(library.errorString());
        return found;
    }
    static std::string endRun() { return reinterpret_cast<const char *(*)()>(resolve("EndHostCheck"))(); }
    static Korvane::IChartObject *create(Korvane::IChartAxis &axis, const char *json)
    {
        using Raw = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);
        return reinterpret_cast<Raw>(resolve("CreateChartObject"))(axis, json);
    }

    /// From the start of the example to its end, with a click on each of the marks; what the checker has
    /// said.
    static std::string runExample(const Fault &fault)
    {
        RecordedBus::instance().reset();
        FaultyBorder border(&HostCheckExample::create, fault);
        {
            UsersChart days;
            UsersChart minutes;
            fill(&days, &minutes, fault, &border);
            show(&days, &minutes);
            answerAll();
            days.clickMark();
            QCoreApplication::processEvents();
            minutes.clickMark();
            s_questions = minutes.questions;
            s_drawn = days.drawn + minutes.drawn;
            border.destroyAxes();
            if (fault.what == "the axis") {
                answer("HolderCostPrice", R"({"stkcode":"600519","market":"1","costprice":"13.5"})");
            }
        }
        const std::string told = endRun();
        border.endLeftOvers();
        endRun();
        return told;
    }

    static QStringList s_drawn;
    static int s_questions; ///< whether an order is to be cancelled

private:
    static void fill(Chart *days, Chart *minutes, const Fault &fault, FaultyBorder *border)
    {
        qstrncpy(days->security.code, "600519", sizeof days->security.code);
        minutes->security = days->security;
        if (fault.is("screenId", "the same for two")) {
            minutes->security.identity = 2;
            minutes->security.code[5] = '8';
        }
        days->bars = twentyBars(firstDay);
        minutes->bars = twentyBars(firstMinute());
        minutes->period = Korvane::IntradayPeriod;
        minutes->pane.translate(0, 300);
        days->update = minutes->update = [=] { show(days, minutes); };
        add(days, border, R"({"type":0})");
        add(days, border, R"({"type":1})");
        add(minutes, border, R"({"type":2})");
        if (fault.is("the factory", "doubled")) {
            add(days, border, R"({"type":0})");
        }
    }
    static void add(Chart *chart, FaultyBorder *border, const char *json)
    {
        if (Korvane::IChartObject *const overlay = border->create(*chart, json)) {
            chart->overlays.append(overlay);
        }
    }
    static void show(Chart *days, Chart *minutes)
    {
        static QImage picture(900, 600, QImage::Format_RGB32);
        days->show(picture);
        minutes->show(picture);
    }
};

QStringList HostCheckExample::s_drawn;
int HostCheckExample::s_questions = 0;

/// The terminal does nothing wrong then, or nothing that anybody could see.
const char *whyHarmless(const Fault &fault)
{
    struct Harmless
    {
        const char *what;
        const char *how;
        const char *why;
    };
    static const Harmless all[] = {
        {"markerSize", "plus one", "one pixel more or less to be hit"},
        {"markerSize", "minus one", "one pixel more or less to be hit"},
        {"priceToY", "plus one", "a pane that begins one pixel lower"},
        {"priceToY", "minus one", "a pane that begins one pixel higher"},
        {"barToX", "plus one", "a bar is hit one pixel beside its middle"},
        {"barToX", "minus one", "a bar is hit one pixel beside its middle"},
        {"handleMousePress", "left out", "a terminal without lists"},
        {"low", "plus one", "a mark near the edge stands a little inside"},
        {"low", "minus one", "a mark near the edge stands a little outside"},
        {"high", "plus one", "a mark near the edge stands a little outside"},
        {"high", "minus one", "a mark near the edge stands a little inside"},
        {"high", "huge", "every price is in view: a mark beyond the edge is cut off"},
    };
    const auto found = std::find_if(std::begin(all), std::end(all),
                                    [&fault](const Harmless &one) { return fault.is(one.what, one.how); });
    return found == std::end(all) ? nullptr : found->why;
}

TEST_F(HostCheckExample, HasNothingToSayOfTheExample)
{
    EXPECT_THAT(runExample({"nothing", "wrong"}), HasSubstr("no rule broken; 3 overlays"));
    EXPECT_EQ(s_drawn.size(), 3) << "the label, a trade, an order: "
                                 << qPrintable(s_drawn.join(QLatin1Char(' ')));
    EXPECT_EQ(s_questions, 1) << "the click on the order";
}

TEST_F(HostCheckExample, NamesNineteenOfTwentyFaultsAndAllThatHarm)
{
    const std::vector<Fault> faults = allFaults();
    int named = 0;
    std::vector<Fault> unnamed;
    for (const Fault &fault : faults) {
        const bool isNamed = runExample(fault).find("no rule broken") == std::string::npos;
        named += isNamed ? 1 : 0;
        if (!isNamed) {
            EXPECT_NE(whyHarmless(fault), nullptr) << fault;
            unnamed.push_back(fault);
        }
    }
    std::printf("%d of %zu faults named; not: %s\n", named, faults.size(),
                ::testing::PrintToString(unnamed).c_str());
    EXPECT_GE(named * 100, static_cast<int>(faults.size()) * 95);
}

/// A combined overlay in memory of the test's own, as a terminal has it that only loads the file.
class HostCheckCombined : public HostCheckExample
{
protected:
    ~HostCheckCombined() override { endRun(); }

    Korvane::IChartObject *construct(void *memory, Korvane::IChartAxis &axis, const char *json)
    {
        using namespace Korvane::CombinedOverlay;
        reinterpret_cast<Constructor>(resolve(constructor))(memory, axis, json);
        return reinterpret_cast<Korvane::IChartObject *>(static_cast<char *>(memory) + interfaceOffset);
    }
    static void end(Korvane::IChartObject *overlay)
    {
        overlay->deleteObject();
        overlay->~IChartObject();
    }

    UsersChart m_chart;
    alignas(std::max_align_t) std::array<unsigned char, Korvane::CombinedOverlay::memorySize> m_memory;
};

TEST_F(HostCheckCombined, IsDrivenAsTheRealOne)
{
    RecordedBus::instance().reset();
    const int endPointsBefore = RecordedBus::instance().endPointCount();
    RecordedBus::instance().answerRequest = [](const RecordedBus::Message &) {
        return QByteArray(R"({"data":[{"costprice":"12.5"}],"costprice":"12.5"})");
    };
    m_chart.bars = twentyBars(firstDay);
    qstrncpy(m_chart.security.code, "600519", sizeof m_chart.security.code);
    Korvane::IChartObject *const overlay = construct(m_memory.data(), m_chart, R"({"type":0})");
    m_chart.overlays = {overlay};
    QImage picture(900, 600, QImage::Format_RGB32);
    m_chart.show(picture);
    m_chart.overlays.clear();
    QCoreApplication::processEvents();
    end(overlay);
    EXPECT_THAT(endRun(), HasSubstr("no rule broken; 1 overlays"));
    EXPECT_EQ(RecordedBus::instance().endPointCount(), endPointsBefore) << "the real one has ended, too";
}

TEST_F(HostCheckCombined, TellsTheTerminalHowLongItsListIs)
{
    RecordedBus::instance().reset();
    struct : UsersChart
    {
        const QObject *caller = nullptr;
        int length = 0;
        int popupMenu(const char **, void *) override
        {
            length = caller->property(Korvane::CombinedOverlay::listLength).toInt();
            return -1;
        }
    } chart;
    chart.bars = twentyBars(firstDay);
    chart.caller = reinterpret_cast<const QObject *>(m_memory.data());
    qstrncpy(chart.security.code, "600519", sizeof chart.security.code);
    Korvane::IChartObject *const overlay = construct(m_memory.data(), chart, R"({"type":1})");
    chart.overlays = {overlay};
    QImage picture(900, 600, QImage::Format_RGB32);
    chart.show(picture);
    answer("HistoryTrade", R"([{"buy":true,"price":12.5,"vol":300},{"buy":true,"price":12.6,"vol":100}])");
    chart.show(picture);
    overlay->handleMousePress(chart.barToX(0), chart.priceToY(11.5, -1, -1));
    EXPECT_EQ(chart.length, 2);
    chart.overlays.clear();
    end(overlay);
}

TEST_F(HostCheckCombined, IsNotToShareItsAxis)
{
    Korvane::IChartObject *const line = create(m_chart, R"({"type":0})");
    Korvane::IChartObject *const overlay = construct(m_memory.data(), m_chart, R"({"type":1})");
    end(overlay);
    line->deleteObject();
    delete line;
    EXPECT_THAT(endRun(), HasSubstr("combined-axis-shared"));
}

TEST_F(HostCheckCombined, IsNotToTurnToAnotherSecurity)
{
    RecordedBus::instance().reset();
    m_chart.bars = twentyBars(firstDay);
    qstrncpy(m_chart.security.code, "600519", sizeof m_chart.security.code);
    Korvane::IChartObject *const overlay = construct(m_memory.data(), m_chart, R"({"type":1})");
    for (const int identity : {1, 2}) {
        m_chart.security.identity = identity;
        m_chart.security.code[5] = static_cast<char>('0' + identity);
        overlay->calcIt(m_chart.security, m_chart.bars.constData(), 20, Korvane::DayPeriod, 0, 0);
    }
    end(overlay);
    EXPECT_THAT(endRun(), HasSubstr("combined-security-changed"));
}

TEST_F(HostCheckCombined, IsNotToBeMadeWhereAnotherOneIs)
{
    Korvane::IChartObject *const overlay = construct(m_memory.data(), m_chart, R"({"type":1})");
    alignas(std::max_align_t) std::array<unsigned char, Korvane::CombinedOverlay::memorySize + 8> other;
    Korvane::IChartObject *const misplaced = construct(other.data() + 8, m_chart, R"({"type":2})");
    end(misplaced);
    end(overlay);
    EXPECT_THAT(endRun(), AllOf(HasSubstr("combined-memory"), HasSubstr("type-unknown")));
}

TEST(HostCheckRule, HasOneTextForEach)
{
    const auto &texts = ::HostCheck::ruleTexts();
    std::set<std::string> ids;
    for (std::size_t number = 0; number < texts.size(); ++number) {
        EXPECT_EQ(static_cast<std::size_t>(texts[number].rule), number) << texts[number].id;
        ids.insert(texts[number].id);
    }
    EXPECT_EQ(ids.size(), texts.size());
    EXPECT_GE(texts.size(), 25U);
}

/// The rows of the guide are those of the checker, and lead to headings that are there.
TEST(HostCheckRule, StandsInTheGuide)
{
    QFile guide(QStringLiteral(GUIDE));
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    const std::string page = guide.readAll().toStdString();
    std::string table;
    for (const ::HostCheck::RuleText &text : ::HostCheck::ruleTexts()) {
        std::string anchor = text.section;
        std::transform(anchor.begin(), anchor.end(), anchor.begin(), [](char letter) {
            return letter == ' ' ? '-' : static_cast<char>(std::tolower(letter));
        });
        EXPECT_TRUE(page.find(std::string("# ") + text.section + "\n") != std::string::npos) << text.section;
        table += std::string("| `") + text.id + "` | " + text.wrong + " | " + text.remedy + " | [" +
                 text.section + "](#" + anchor + ") |\n";
    }
    EXPECT_TRUE(page.find(table) != std::string::npos) << "the table is to be:\n" << table;
}

} // namespace
