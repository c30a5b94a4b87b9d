#pragma once

#include "terminal/chart/theme/ChartTheme.h"

namespace Terminal {

/// How the dialogs of the intake and the start page look, and whether they show the account's figures.
struct IntakeLook
{
    ChartTheme theme;
    bool hidesAmounts = false;
};

/// The style sheet of these windows, besides that of the terminal's window.
QString intakeStyleSheet(const ChartTheme &theme);

} // namespace Terminal
