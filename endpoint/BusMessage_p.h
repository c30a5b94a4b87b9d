#pragma once

#include <QByteArray>

namespace LocalCommunication {

/// A message as it is on the wire.
struct BusMessage
{
    QByteArray path; ///< encoded topic path
    QByteArray payload;
    QByteArray responsePath; ///< where its sender wants the answer; empty when it wants none
    QByteArray correlation;  ///< of a question: what its answer has to carry along; of an answer: that
    bool isRetained = false; ///< to be kept by the broker, which says whether it does

    /// About how many bytes of memory it takes while it waits.
    qint64 cost() const
    {
        constexpr qint64 besidesItsBytes = 128;
        return besidesItsBytes + path.size() + payload.size() + responsePath.size() + correlation.size();
    }
};

} // namespace LocalCommunication
