#pragma once

#include <QAbstractSpinBox>
#include <QLocale>
#include <QWheelEvent>

namespace Terminal {

/// What the fields of a ticket have in common: figures as on the axes, and a wheel that turns only the field
/// that has the keyboard. `Box` is one of Qt's spin boxes.
template <typename Box>
class TicketBox : public Box
{
public:
    TicketBox()
    {
        this->setLocale(QLocale::c());
        this->setAlignment(Qt::AlignRight);
        this->setButtonSymbols(QAbstractSpinBox::PlusMinus);
        this->setAccelerated(true);
        this->setFocusPolicy(Qt::StrongFocus); // the wheel would give it the keyboard first
    }

protected:
    void wheelEvent(QWheelEvent *event) override
    {
        if (this->hasFocus()) {
            Box::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
};

} // namespace Terminal
