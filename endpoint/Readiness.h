#pragma once

#include "endpoint/EndPointExport.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>
#include <memory>
#include <optional>

namespace LocalCommunication {

/// Tells a terminal when to create its overlays. They ask some of their questions once: asked before the bus
/// is there, or before a trading module is, they are never answered.
///
///  1. start() joins the bus and asks, again and again, a question that changes nothing.
///  2. ready() follows when a trading module has answered it or has announced itself; timeIsUp() when
///     that takes longer than the limit, so that no chart waits for ever. ready() may still follow then.
///  3. The terminal creates its overlays at the first of both, and makes them anew at a ready() that
///     follows timeIsUp().
///
/// Nothing is held back meanwhile: overlays that are created earlier work, but lack what they asked in vain.
class ENDPOINT_EXPORT Readiness : public QObject
{
    Q_OBJECT

public:
    /// Starts nothing yet.
    explicit Readiness(QObject *parent = nullptr);
    ~Readiness() override;

    /// Begins on the bus instance of the terminal in directory `address`, where a broker may come later.
    /// Without a limit there is no timeIsUp(). Starting again begins anew.
    void start(const QString &address, std::optional<std::chrono::milliseconds> limit = std::nullopt);

    /// Leaves the bus; no signal follows.
    void stop();

    /// True while the bus has accepted this object.
    bool isJoined() const;

    /// Asks the question once more; answered() follows when there is somebody to answer.
    void ask();

Q_SIGNALS:
    /// The bus has accepted this object: overlays created before it have had time to join, too. At every
    /// join.
    void joined();

    /// The bus is there and a trading module, too. Once after start().
    void ready();

    /// Not so within the limit. Once after start(), and never after ready().
    void timeIsUp();

    /// A trading module has answered just now.
    void answered(const QByteArray &answer);

    /// A trading module has announced itself, or its end (docs/bus-protocol.md tells the words).
    void announced(const QByteArray &word);

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace LocalCommunication
