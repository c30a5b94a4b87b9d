#include "terminal/trade/OrderResults.h"

#include "terminal/trade/StyleProperty.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int margin = 12;

QString toneWord(OrderResults::Tone tone)
{
    switch (tone) {
    case OrderResults::Tone::Plain:
        return QStringLiteral("plain");
    case OrderResults::Tone::Good:
        return QStringLiteral("good");
    case OrderResults::Tone::Bad:
        return QStringLiteral("bad");
    }
    return {};
}

} // namespace

OrderResults::OrderResults(QWidget *parent) : QWidget(parent)
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, 0, margin, margin);
    for (int line = 0; line < mostLines; ++line) {
        auto *const label = new QLabel;
        label->setObjectName(QStringLiteral("ticketResult"));
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        column->addWidget(label);
        m_labels.push_back(label);
    }
    showLines();
}

void OrderResults::tell(const QString &name, const QString &text, Tone tone)
{
    const auto isSame = [&name](const Line &line) { return line.name == name; };
    m_lines.erase(std::remove_if(m_lines.begin(), m_lines.end(), isSame), m_lines.end());
    m_lines.insert(m_lines.begin(), {name, text, tone});
    if (m_lines.size() > m_labels.size()) {
        m_lines.pop_back();
    }
    showLines();
}

void OrderResults::clear()
{
    m_lines.clear();
    showLines();
}

void OrderResults::showLines()
{
    for (size_t place = 0; place < m_labels.size(); ++place) {
        const Line line = place < m_lines.size() ? m_lines[place] : Line{{}, {}, Tone::Plain};
        m_labels[place]->setText(line.text);
        m_labels[place]->setVisible(!line.text.isEmpty());
        setStyleProperty(m_labels[place], "tone", toneWord(line.tone));
    }
}

} // namespace Terminal
