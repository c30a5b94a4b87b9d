#pragma once

#include <QtGlobal>

/// A name server that does not answer: as long as this lives, whoever asks where `host` is waits.
class HangingNames
{
public:
    static constexpr char host[] = "hanging.invalid";

    HangingNames();
    ~HangingNames();
    Q_DISABLE_COPY_MOVE(HangingNames)

    /// How many have asked.
    static int questions();
};
