#pragma once

#include <QWidget>

#include <optional>
#include <vector>

class QPushButton;

namespace Terminal {

/// Buttons that choose a part of the largest quantity that may be ordered: a quarter, half, all.
class PartButtons : public QWidget
{
    Q_OBJECT

public:
    explicit PartButtons(QWidget *parent = nullptr);

    /// In shares; nothing when it is not known, and then nothing can be chosen.
    void setLargest(std::optional<qint64> largest);
    void showTexts();

Q_SIGNALS:
    /// A part in whole lots, or all.
    void chosen(qint64 shares);

private:
    std::optional<qint64> m_largest;
    std::vector<QPushButton *> m_buttons;
};

} // namespace Terminal
