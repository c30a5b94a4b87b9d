#pragma once

#include "terminal/options/AccountPlaces.h"
#include "terminal/options/TerminalOptions.h"

#include <QSettings>

class QMainWindow;

namespace Terminal {

/// What the terminal remembers of its window from one run to the next, in the settings of the user: the
/// chart that was shown, its overlays and look, and how the window was laid out. Values are the words of
/// the command line.
class WindowSettings
{
public:
    /// The settings of this application.
    WindowSettings();

    /// `options` with what is remembered in the place of what the command line does not name. What cannot
    /// be read is told in a warning and left as it is in `options`.
    TerminalOptions over(TerminalOptions options) const;

    /// The account that was shown last; empty texts when none was.
    AccountPlaces places() const;

    /// Lays the window out as it was remembered; its size only when the command line names none.
    void restoreLayout(QMainWindow *window, const TerminalOptions &options) const;

    /// Remembers. Settings that cannot be written are told in a warning.
    void remember(const TerminalOptions &options, const QMainWindow &window);

private:
    void rememberPlaces(const TerminalOptions &options);

    QSettings m_settings;
};

} // namespace Terminal
