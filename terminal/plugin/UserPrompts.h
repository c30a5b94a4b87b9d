#pragma once

#include <QPoint>
#include <QStringList>

namespace Terminal {

/// What overlays may ask of or tell the user.
class UserPrompts
{
public:
    virtual ~UserPrompts() = default;

    /// Lets the user choose one of `rows` at `place` of the screen; columns are parted by tabs, a row may
    /// have several lines. Blocks until chosen or dismissed; returns the row's number, or -1 for none.
    virtual int choose(const QStringList &rows, const QPoint &place) = 0;

    /// Shows `text` and returns at once.
    virtual void show(const QString &text) = 0;

    /// Asks a question whose careful answer, no, is the default. Blocks until it is answered.
    virtual bool confirm(const QString &question) = 0;
};

} // namespace Terminal
