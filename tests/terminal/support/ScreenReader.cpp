#include "tests/terminal/support/ScreenReader.h"

#include "tests/terminal/support/SessionBus.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace Terminal {

namespace {

constexpr const char *ofThings = "org.a11y.atspi.Accessible";

// Bits of a thing's state on the bus
enum State { Focusable = 11, Focused = 12, Showing = 25 };

bool has(quint64 states, State state)
{
    return (states >> state & 1U) != 0;
}

const QString ofSession = QStringLiteral("session of the accessibility bus");
const QString ofPrograms = QStringLiteral("session of the programs");
const QString ofReader = QStringLiteral("screen reader");

/// Of the accessibility bus of a session, which is started by being asked for.
QString accessibilityBusOf(const QString &session)
{
    const QString name = QStringLiteral("org.a11y.Bus");
    const QDBusMessage question = QDBusMessage::createMethodCall(name, QStringLiteral("/org/a11y/bus"), name,
                                                                 QStringLiteral("GetAddress"));
    const QDBusMessage answer = QDBusConnection::connectToBus(session, ofSession).call(question);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << qPrintable(answer.errorMessage());
    return answer.arguments().value(0).toString();
}

} // namespace

ScreenReader::ScreenReader()
    : m_address(accessibilityBusOf(startSessionBus(&m_session))),
      m_bus(QDBusConnection::connectToBus(m_address, ofReader))
{
    EXPECT_TRUE(m_bus.isConnected());
    const Reference registry{desktop().program, QStringLiteral("/org/a11y/atspi/registry")};
    const QDBusMessage answer =
        ask(registry, "org.a11y.atspi.Registry", "RegisterEvent", {QStringLiteral("object:state-changed")});
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << qPrintable(answer.errorMessage());
    EXPECT_TRUE(m_bus.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                              QStringLiteral("StateChanged"), this, SLOT(hear(QDBusMessage))));
}

void ScreenReader::begin(const QString &sessionBus)
{
    QDBusConnection programs = QDBusConnection::connectToBus(sessionBus, ofPrograms);
    EXPECT_TRUE(programs.registerObject(QStringLiteral("/org/a11y/bus"), this,
                                        QDBusConnection::ExportScriptableSlots |
                                            QDBusConnection::ExportScriptableInvokables));
    EXPECT_TRUE(programs.registerService(QStringLiteral("org.a11y.Bus")));
}

ScreenReader::~ScreenReader()
{
    for (const QString &bus : {ofReader, ofPrograms, ofSession}) {
        QDBusConnection::disconnectFromBus(bus);
    }
    endProcess(&m_session);
}

ScreenReader::Reference ScreenReader::desktop()
{
    return {QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root")};
}

QDBusMessage ScreenReader::ask(const Reference &thing, const char *interface, const char *question,
                               const QVariantList &words) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(thing.program, thing.path, QLatin1String(interface),
                                                       QLatin1String(question));
    call.setArguments(words);
    return m_bus.call(call);
}

QString ScreenReader::property(const Reference &thing, const char *name) const
{
    const QDBusMessage answer =
        ask(thing, "org.freedesktop.DBus.Properties", "Get", {QLatin1String(ofThings), QLatin1String(name)});
    return answer.arguments().value(0).value<QDBusVariant>().variant().toString();
}

quint64 ScreenReader::states(const Reference &thing) const
{
    QList<uint> words;
    const QDBusMessage answer = ask(thing, ofThings, "GetState");
    if (answer.type() == QDBusMessage::ReplyMessage) {
        answer.arguments().value(0).value<QDBusArgument>() >> words;
    }
    return words.size() == 2 ? words[0] | static_cast<quint64>(words[1]) << 32U : 0;
}

std::vector<ScreenReader::Reference> ScreenReader::children(const Reference &thing) const
{
    std::vector<Reference> found;
    const QDBusMessage answer = ask(thing, ofThings, "GetChildren");
    if (answer.type() != QDBusMessage::ReplyMessage) {
        return found;
    }
    const auto list = answer.arguments().value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Reference child;
        QDBusObjectPath path;
        list.beginStructure();
        list >> child.program >> path;
        list.endStructure();
        child.path = path.path();
        found.push_back(child);
    }
    list.endArray();
    return found;
}

SpokenThing ScreenReader::look(const Reference &thing, int depth) const
{
    constexpr uint onScreen = 0;
    const quint64 states = this->states(thing);
    SpokenThing seen;
    seen.role = ask(thing, ofThings, "GetRoleName").arguments().value(0).toString();
    seen.name = property(thing, "Name");
    seen.description = property(thing, "Description");
    seen.isShown = has(states, Showing);
    seen.takesKeyboard = has(states, Focusable);
    seen.hasKeyboard = has(states, Focused);
    seen.depth = depth;
    const QDBusMessage answer = ask(thing, "org.a11y.atspi.Component", "GetExtents", {onScreen});
    if (answer.type() == QDBusMessage::ReplyMessage) {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        const auto place = answer.arguments().value(0).value<QDBusArgument>();
        place.beginStructure();
        place >> x >> y >> width >> height;
        place.endStructure();
        seen.place = QRect(x, y, width, height);
    }
    return seen;
}

void ScreenReader::collect(const Reference &thing, int depth, std::vector<SpokenThing> *found) const
{
    found->push_back(look(thing, depth));
    if (found->back().role == QLatin1String("table")) {
        return;
    }
    for (const Reference &child : children(thing)) {
        collect(child, depth + 1, found);
    }
}

std::vector<SpokenThing> ScreenReader::things()
{
    std::vector<SpokenThing> found;
    for (const Reference &program : children(desktop())) {
        collect(program, 0, &found);
    }
    return found;
}

void ScreenReader::hear(const QDBusMessage &event)
{
    const QString state = event.arguments().value(0).toString();
    const bool begins = event.arguments().value(1).toInt() == 1;
    const bool isFocus = state == QLatin1String("focused");
    if (!begins || (!isFocus && state != QLatin1String("showing"))) {
        return;
    }
    const SpokenThing thing = look({event.service(), event.path()}, 0);
    if (isFocus || thing.role == QLatin1String("notification")) {
        m_said.append(thing.name);
    }
}

} // namespace Terminal
