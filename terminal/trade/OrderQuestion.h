#pragma once

#include <QMessageBox>

namespace Terminal {

/// A question before something is done to an order. No is the default and the answer of Escape. All of it is
/// shown as it is written: a name that looks like markup must not change or hide what is asked.
///
/// Neither a key that is held since before the question nor the second press of a double click answers it.
class OrderQuestion : public QMessageBox
{
public:
    struct Words
    {
        QString title;
        QString text; ///< its first line asks, the others tell what about
        QString yes;
        QString no;
    };

    OrderQuestion(const Words &words, QWidget *parent);

    /// Blocks until it is answered.
    bool isConfirmed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPushButton *m_yes;
};

} // namespace Terminal
