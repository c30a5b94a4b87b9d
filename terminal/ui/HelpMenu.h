#pragma once

#include <QMenu>

class QAction;

namespace Terminal {

/// The keys of the window in one table, and what the program is.
class HelpMenu : public QMenu
{
    Q_OBJECT

public:
    explicit HelpMenu(QWidget *parent);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showAbout();
    void showTexts();

    QAction *m_keys;
    QAction *m_about;
};

} // namespace Terminal
