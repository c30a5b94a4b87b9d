#pragma once

#include <QDialog>

namespace Terminal {

/// All keys of the window, in a table that scrolls.
class KeysDialog : public QDialog
{
    Q_OBJECT

public:
    explicit KeysDialog(QWidget *parent);

    QSize sizeHint() const override;
};

} // namespace Terminal
