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
};

} // namespace LocalCommunication
