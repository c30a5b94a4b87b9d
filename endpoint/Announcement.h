#pragma once

#include "endpoint/EndPointExport.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>

namespace LocalCommunication {

/// A word that the broker keeps: whoever subscribes later hears it at once, as a message like any other. It
/// says that its speaker is there, and, when that one is gone, that it is not: a program that has many
/// listeners announces itself with one of these.
///
///  1. start() joins the bus over a connection of its own and returns at once. The word is said after
///     every join.
///  2. When the connection is lost, the broker says the farewell in the place of this object: at once
///     when the program ends or crashes, after a minute and a half when its machine or network is gone.
///  3. stop() or the destructor says the farewell.
///
/// A broker may keep no messages, or none here. That is told once, in the log and by notKept(); the word and
/// the farewell are then heard by those only who listen at that instant. All else goes on.
class ENDPOINT_EXPORT Announcement : public QObject
{
    Q_OBJECT

public:
    /// Where it is said, and what. One place has one speaker at a time; an older word there is replaced.
    struct Notice
    {
        QByteArray channel;  ///< of those who are to hear it
        QByteArray topic;    ///< by which they know it
        QByteArray word;     ///< not empty: an empty one would take the old word away
        QByteArray farewell; ///< not empty
    };

    /// Says nothing yet.
    explicit Announcement(QObject *parent = nullptr);
    ~Announcement() override;

    /// Begins on the bus instance of the terminal in directory `address`. One started before is stopped.
    void start(const QString &address, const Notice &notice);

    /// Says the word again, this one from now on. Nothing happens before start() and after stop().
    void say(const QByteArray &word);

    /// Says the farewell and leaves. May be called at any time.
    void stop();

Q_SIGNALS:
    /// The broker keeps the word that was said last.
    void kept();

    /// Once after start(): the broker keeps no messages here; `why` in its own words.
    void notKept(const QString &why);

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace LocalCommunication
