// The built program for a user who neither sees the screen nor has a mouse: known from the accessibility bus
// alone, operated by keys alone.
#include "tests/terminal/support/DesktopProgramFixture.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#ifdef TRADEMODULE

namespace Terminal {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

class AccessibilityProgram : public DesktopProgram
{
protected:
    void open(const QStringList &more = {})
    {
        makeDesktop({1600, 1000});
        openWindow(withLedger() + QStringList{QStringLiteral("--size"), QStringLiteral("1500x950")} + more);
    }

    /// True when what it says from now on, or has said since it was asked last, has this in it.
    bool hears(const QString &text)
    {
        return waitUntil([&] {
            for (; m_heard < m_reader->said().size(); ++m_heard) {
                if (m_reader->said().at(m_heard).contains(text)) {
                    return true;
                }
            }
            return false;
        });
    }

    /// An order of a former run.
    void placeBefore()
    {
        makeLedger(ledger());
        const QStringList order{QStringLiteral("--ledger"), ledger(),
                                QStringLiteral("place"),    QStringLiteral("600519"),
                                QStringLiteral("buy"),      QStringLiteral("1400"),
                                QStringLiteral("100")};
        const Outcome outcome = run(QStringLiteral(TRADEMODULE), order, m_environment);
        ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    }

    bool isShown(const QString &name)
    {
        const auto things = m_reader->things();
        return std::any_of(things.begin(), things.end(), [&name](const SpokenThing &thing) {
            return thing.isShown && thing.name.contains(name);
        });
    }
    bool shows(const QString &name)
    {
        return waitUntil([&] { return isShown(name); });
    }

    void press(const QStringList &keys) { m_desktop->press(keys); }

    std::string said() const { return m_reader->said().join(QStringLiteral(" | ")).toStdString(); }

    /// Of the orders in the ledger, by its own word.
    QStringList orderStatuses() const
    {
        QProcess process;
        process.start(QStringLiteral(TRADEMODULE), {QStringLiteral("--ledger"), ledger(),
                                                    QStringLiteral("orders"), QStringLiteral("--json")});
        EXPECT_TRUE(process.waitForFinished());
        QStringList statuses;
        for (const QJsonValue order : QJsonDocument::fromJson(process.readAllStandardOutput()).array()) {
            statuses.append(order.toObject()[QStringLiteral("status")].toString());
        }
        return statuses;
    }

    /// What a user can have the keyboard on and would hear no name of.
    std::vector<std::string> nameless()
    {
        std::vector<std::string> found;
        for (const SpokenThing &thing : m_reader->things()) {
            // A list of choices is called what is chosen: what for is its description.
            const bool isChoice = thing.role == QLatin1String("combo box");
            const QString &words = isChoice ? thing.description : thing.name;
            if (thing.isShown && thing.takesKeyboard && words.isEmpty()) {
                found.push_back((thing.role + QLatin1Char(' ') + thing.name).toStdString());
            }
        }
        return found;
    }

    std::vector<std::string> namesOf(const char *role)
    {
        std::vector<std::string> names;
        for (const SpokenThing &thing : m_reader->things()) {
            if (thing.role == QLatin1String(role)) {
                names.push_back(thing.name.toStdString());
            }
        }
        return names;
    }

    int m_heard = 0;
};

TEST_F(AccessibilityProgram, AnOrderIsPlacedHeardAndCancelledByKeyboardAlone)
{
    open();
    press({QStringLiteral("F1")});
    ASSERT_TRUE(hears(QStringLiteral("Price"))) << said();
    m_desktop->type(QStringLiteral("1400"));
    press({QStringLiteral("Tab")});
    ASSERT_TRUE(hears(QStringLiteral("Quantity in shares"))) << said();
    press({QStringLiteral("Return")});
    m_desktop->focusWindow(QStringLiteral("Send an order"));
    ASSERT_TRUE(hears(QStringLiteral("Do not send"))) << said();
    press({QStringLiteral("shift+Tab")});
    ASSERT_TRUE(hears(QStringLiteral("Buy 100"))) << said();
    press({QStringLiteral("space")});
    ASSERT_TRUE(hears(QStringLiteral("accepted, number 1"))) << said();

    m_desktop->focusWindow(QStringLiteral("600519"));
    press({QStringLiteral("F3")});
    ASSERT_TRUE(hears(QStringLiteral("Today's orders"))) << said();
    press({QStringLiteral("Delete")});
    m_desktop->focusWindow(QStringLiteral("Cancel an order"));
    ASSERT_TRUE(hears(QStringLiteral("Keep the order"))) << said();
    press({QStringLiteral("shift+Tab")});
    ASSERT_TRUE(hears(QStringLiteral("Cancel the order"))) << said();
    press({QStringLiteral("space")});
    ASSERT_TRUE(hears(QStringLiteral("Order 1 of 600519"))) << said();
    EXPECT_TRUE(waitUntil([this] { return orderStatuses() == QStringList(QStringLiteral(u"已撤")); }))
        << said();
}

/// Neither ticket nor lists were opened, and no trades are drawn.
TEST_F(AccessibilityProgram, OrdersThatWorkAreToldAtTheStartAndOutliveATermination)
{
    placeBefore();
    open({QStringLiteral("--trades"), QStringLiteral("off")});
    ASSERT_TRUE(shows(QStringLiteral("Orders of before that may still be dealt: 1")));

    m_window.terminate();
    ASSERT_TRUE(m_window.waitForFinished(20000));
    EXPECT_EQ(m_window.exitCode(), 0);
    EXPECT_THAT(m_window.readAllStandardError().toStdString(),
                HasSubstr("Orders that may still be dealt, which leaving does not cancel: 1"));
    ASSERT_EQ(orderStatuses().size(), 1);
    EXPECT_THAT(orderStatuses().front().toStdString(), AnyOf("未报", "已报")) << "on its way, or there";
}

TEST_F(AccessibilityProgram, EveryControlIsNamed)
{
    open({QStringLiteral("--period"), QStringLiteral("minute"), QStringLiteral("--results"),
          QStringLiteral("sale")});
    press({QStringLiteral("F1"), QStringLiteral("F3")});
    ASSERT_TRUE(hears(QStringLiteral("Orders of"))) << said();
    EXPECT_THAT(nameless(), IsEmpty());
    EXPECT_THAT(namesOf("push button"), IsSupersetOf({"Close: Order ticket", "Close: Orders and positions"}));
}

} // namespace
} // namespace Terminal

#endif
