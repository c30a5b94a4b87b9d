#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QProcess>
#include <QRect>
#include <QStringList>

#include <vector>

namespace Terminal {

/// Something on the screen, as programs tell screen readers of it.
struct SpokenThing
{
    QString role; ///< "push button", "spin button"
    QString name;
    QString description;
    bool isShown = false;
    bool takesKeyboard = false;
    bool hasKeyboard = false;
    QRect place; ///< on the screen
    int depth = 0;
};

/// Knows of a desktop only what the accessibility bus tells, as a user does who does not see it.
class ScreenReader : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.a11y.Bus")

public:
    ScreenReader();
    ~ScreenReader() override;

    /// Tells the programs of the desktop with this session bus that there is a screen reader. They must have
    /// started: one that learns it while it starts may believe that it has joined the accessibility bus
    /// before it has, and what is listened to it asks but once.
    void begin(const QString &sessionBus);

    /// Asked by programs.
    Q_SCRIPTABLE QString GetAddress() const { return m_address; } // NOLINT(readability-identifier-naming)

    /// True when a program has made itself known.
    bool knowsAProgram() const { return !children(desktop()).empty(); }

    /// All that programs show now, from outside to inside; of tables without their cells.
    std::vector<SpokenThing> things();

    /// What it has said, oldest first: what got the keyboard, and notifications that came up.
    const QStringList &said() const { return m_said; }

private Q_SLOTS:
    void hear(const QDBusMessage &event);

private:
    /// Where a program keeps something.
    struct Reference
    {
        QString program;
        QString path;
    };

    static Reference desktop();
    QDBusMessage ask(const Reference &thing, const char *interface, const char *question,
                     const QVariantList &words = {}) const;
    QString property(const Reference &thing, const char *name) const;
    quint64 states(const Reference &thing) const;
    std::vector<Reference> children(const Reference &thing) const;
    SpokenThing look(const Reference &thing, int depth) const;
    void collect(const Reference &thing, int depth, std::vector<SpokenThing> *found) const;

    QProcess m_session; ///< of the accessibility bus alone
    QString m_address;
    QDBusConnection m_bus;
    QStringList m_said;
};

} // namespace Terminal
