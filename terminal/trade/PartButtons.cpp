#include "terminal/trade/PartButtons.h"

#include <QHBoxLayout>
#include <QPushButton>

#include <array>

namespace Terminal {

namespace {

constexpr int gap = 6; ///< pixels between the buttons

/// One part in so many.
constexpr std::array<int, 3> divisors = {4, 2, 1};

} // namespace

PartButtons::PartButtons(QWidget *parent) : QWidget(parent)
{
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    for (const int divisor : divisors) {
        auto *const button = new QPushButton;
        button->setObjectName(QStringLiteral("quantityPart"));
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QPushButton::clicked, this, [this, divisor] { Q_EMIT chosen(partOf(divisor)); });
        m_buttons.push_back(button);
        row->addWidget(button);
    }
    setLargest(std::nullopt, {});
}

qint64 PartButtons::partOf(int divisor) const
{
    const qint64 largest = m_largest.value_or(0);
    return divisor == 1 ? largest : m_rules.wholeQuantity(largest / divisor);
}

void PartButtons::setLargest(std::optional<qint64> largest, const Trading::SecurityRules &rules)
{
    m_rules = rules;
    m_largest = largest;
    for (QPushButton *const button : m_buttons) {
        button->setEnabled(largest.value_or(0) > 0);
    }
}

void PartButtons::showTexts()
{
    for (size_t i = 0; i < m_buttons.size(); ++i) {
        const int divisor = divisors[i];
        m_buttons[i]->setText(divisor == 1 ? tr("All") : QStringLiteral("1/%1").arg(divisor));
        m_buttons[i]->setToolTip(tr("Of the largest quantity"));
    }
}

} // namespace Terminal
