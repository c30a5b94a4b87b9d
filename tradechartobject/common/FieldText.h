#pragma once

#include <QLatin1String>
#include <QString>

namespace TradeChart {

/// The text under a key of an answer, lent while its row is read. Plain ASCII is not copied out of the
/// message until somebody wants a string.
class FieldText
{
public:
    explicit FieldText(const QString &text) : m_text(text) {}
    explicit FieldText(QLatin1String ascii) : m_ascii(ascii), m_isAscii(true) {}

    QString toString() const { return m_isAscii ? QString(m_ascii) : m_text; }

    /// What `use` makes of the text as it is at hand, a QLatin1String or a QString.
    template <class Use>
    auto with(Use use) const
    {
        return m_isAscii ? use(m_ascii) : use(m_text);
    }

    friend bool operator==(const FieldText &text, QLatin1String other)
    {
        return text.with([other](const auto &held) { return held == other; });
    }

private:
    QString m_text;
    QLatin1String m_ascii;
    bool m_isAscii = false;
};

} // namespace TradeChart
