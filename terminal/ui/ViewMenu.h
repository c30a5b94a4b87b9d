#pragma once

#include "terminal/options/TerminalOptions.h"

#include <QMenu>

class QAction;

namespace Terminal {

/// What is not chosen often: which prices the chart shows, how the window looks and speaks, and the export of
/// its chart.
class ViewMenu : public QMenu
{
    Q_OBJECT

public:
    /// Begins with the prices, the look and the language of `options`.
    ViewMenu(const TerminalOptions &options, QWidget *parent);

    /// Shows which prices the chart has, without telling anybody.
    void showPrices(PriceView view);

Q_SIGNALS:
    void pricesChosen(PriceView view);
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
    QAction *m_adjusted;
    QAction *m_rise;
    QAction *m_dark;
    QAction *m_languages;
    QAction *m_export;
};

} // namespace Terminal
