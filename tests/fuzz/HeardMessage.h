// What overlays may hear on the bus, made of a fuzzer's bytes: mostly in the words of trading modules, so
// that it reaches where rows are read.
#pragma once

#include "tests/fuzz/FuzzInput.h"

#include <QByteArray>

struct HeardMessage
{
    QByteArray topic;
    QByteArray payload;
};

/// Names one of two securities, seldom something else. `objectId` is what answers to cancellations return.
HeardMessage heardMessage(FuzzInput *input, const QByteArray &objectId);
