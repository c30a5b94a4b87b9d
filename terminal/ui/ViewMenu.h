#pragma once

#include "terminal/options/TerminalOptions.h"

#include <QMenu>

class QAction;

namespace Terminal {

/// What is not chosen often: how the window looks and speaks, and the export of its chart.
class ViewMenu : public QMenu
{
    Q_OBJECT

public:
    /// Begins with the look and the language of `options`.
    ViewMenu(const TerminalOptions &options, QWidget *parent);

Q_SIGNALS:
    void riseColourChosen(RiseColour colour);
    void themeChosen(ThemeKind theme);
    void languageChosen(const QString &word); ///< zh or en
    void exportAsked();

protected:
    void changeEvent(QEvent *event) override;

private:
    QAction *addToggle(bool checked);
    void showTexts();
    QString otherLanguage() const;

    QString m_language;
    QAction *m_rise;
    QAction *m_dark;
    QAction *m_languages;
    QAction *m_export;
};

} // namespace Terminal
