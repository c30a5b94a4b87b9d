#pragma once

#include <QtGlobal>

/// A name server that does not answer: as long as this lives, whoever asks where `host` is waits, but for the
/// first few, who hear that it is this machine.
class HangingNames
{
public:
    static constexpr char host[] = "hanging.invalid";

    explicit HangingNames(int answered = 0);
    ~HangingNames();
    Q_DISABLE_COPY_MOVE(HangingNames)

    /// How many have asked.
    static int questions();
};
