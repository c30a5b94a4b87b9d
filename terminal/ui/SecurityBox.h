#pragma once

#include "terminal/data/SecurityList.h"

#include <QComboBox>

class QCompleter;

namespace Terminal {

/// The choice of a security: from the list, or by typing a part of its code or name or the first letters of
/// its name's syllables (gzmt for 贵州茅台). Enter takes the first that fits, Escape leaves it as it was.
class SecurityBox : public QComboBox
{
    Q_OBJECT

public:
    explicit SecurityBox(QWidget *parent = nullptr);

    void setSecurities(const Securities &securities);

    /// The security that is shown, whatever is being typed.
    void showSecurity(const QString &code);
    QString shownCode() const { return m_shown; }

    /// Takes the keyboard, with the first letters already typed.
    void beginSearch(const QString &typed);

Q_SIGNALS:
    void codeChosen(const QString &code);
    /// The user is done, with or without a choice.
    void left();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(const QString &code);
    void chooseFirst();
    void showShown();

    QCompleter *m_search;
    QString m_shown;
};

} // namespace Terminal
