#pragma once

#include "trading/SecurityRules.h"

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

    /// In shares; nothing when it is not known, and then nothing can be chosen. Parts are such as the rules
    /// allow.
    void setLargest(std::optional<qint64> largest, const Trading::SecurityRules &rules);
    void showTexts();

Q_SIGNALS:
    /// A part in whole lots, or all.
    void chosen(qint64 shares);

private:
    qint64 partOf(int divisor) const;

    std::optional<qint64> m_largest;
    Trading::SecurityRules m_rules;
    std::vector<QPushButton *> m_buttons;
};

} // namespace Terminal
