#pragma once

#include "endpoint/EndPointExport.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <chrono>
#include <cstddef>
#include <memory>

namespace LocalCommunication {

/// A client of the terminal's message bus. Every participant has one of its own.
///
/// There are no threads: everything happens on the event loop of the thread that owns the object,
/// and no call waits for the bus except request(). A sender does not receive its own messages.
/// The object may be destroyed at any time, also inside a slot of messageReceived().
/// docs/bus-protocol.md tells what an address is, what travels on the wire, and every limit.
///
/// The first six operations and messageReceived() are what a terminal's own bus client offers too;
/// their parameter types decide the symbol names and must not change.
class ENDPOINT_EXPORT EndPoint : public QObject
{
    Q_OBJECT

public:
    /// Bytes that the members of a client may take, its QObject not counted. Do not change.
    static constexpr std::size_t memberRoom = 256;

    /// Joins nothing yet. Belongs to `parent`, which may be null.
    explicit EndPoint(QObject *parent);
    ~EndPoint() override;

    /// Joins the bus instance of the terminal in directory `address` and returns at once. Joins again
    /// by itself, with back-off, whenever the bus is gone, until disconnect().
    void connect(QString address);

    /// Leaves the bus and forgets the address; subscriptions stay. May be called twice and when never
    /// connected.
    void disconnect();

    /// Asks for messages of `topics` on `channel`. Remembered, and made again after every reconnect.
    void subscribe(QByteArray channel, QList<QByteArray> topics);
    /// The same for one topic.
    void subscribe(QByteArray channel, QByteArray topic);

    /// Publishes; true when handed to the bus, false while there is no bus or the names are refused.
    bool sendMessage(QByteArray channel, QByteArray topic, QByteArray payload);

    /// Asks on channel "Global" and blocks until the answer comes. Empty on time-out (3 s) or without
    /// a bus. After a time-out on this topic it asks, but blocks for 5 ms only, until the module speaks
    /// again; in a flood of undelivered messages also after slow answers: docs/bus-protocol.md, Patience.
    /// Messages that arrive meanwhile are delivered afterwards, in order. An endpoint of the same thread
    /// cannot answer while this call blocks it.
    QByteArray request(QByteArray topic, QByteArray payload);

    // What follows is our own client's; overlays must do without it.

    /// Time-out of request(); 3 s at first.
    void setRequestTimeout(std::chrono::milliseconds timeout);

    /// True while the bus has accepted this client.
    bool isConnected() const;

Q_SIGNALS:
    /// A message arrived. An answer that is sent to `replyChannel` reaches its sender.
    void messageReceived(QByteArray topic, QByteArray payload, QByteArray replyChannel);

    /// The bus has accepted this client and every subscription made so far is in place.
    void ready();

private:
    class Private;
    const std::unique_ptr<Private> d;
    /// Who holds a client by value lays this much memory aside, for a terminal's own client may have members
    /// that ours has not. Ours uses none of it.
    unsigned char m_reserved[memberRoom - sizeof(std::unique_ptr<Private>)];
};

static_assert(sizeof(EndPoint) == sizeof(QObject) + EndPoint::memberRoom,
              "programs in the field hold clients of this size");

} // namespace LocalCommunication
