#pragma once

#include "terminal/plugin/UserPrompts.h"

class QWidget;

namespace Terminal {

class MessageBar;

/// Menus, questions and messages of overlays in a window.
class WindowPrompts : public UserPrompts
{
public:
    /// Shows messages on `messageArea`, which must outlive the prompts.
    explicit WindowPrompts(QWidget *messageArea);

    int choose(const QStringList &rows, const QPoint &place) override;
    void show(const QString &text) override;
    bool confirm(const QString &question) override;

    /// Shows lines below those that were added just before.
    void add(const QStringList &lines);

    /// Takes the message away.
    void clear();

private:
    QWidget *m_area;
    MessageBar *m_messages;
};

} // namespace Terminal
