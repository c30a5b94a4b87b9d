#include "tradechartobject/common/FlatMessage.h"

#include "tradechartobject/common/JsonScan.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonDocument>

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace TradeChart {

/// Where everything is in the text of a message.
struct FlatIndex
{
    using Keys = std::vector<std::string_view>;

    struct Field
    {
        std::string_view key;
        FlatValue value; ///< undefined for rows
    };

    struct Row
    {
        quint32 begin;      ///< in the text
        quint32 firstValue; ///< in `values`
        int form;           ///< in `forms`
    };

    QByteArray text;
    std::vector<Field> fields;
    std::vector<Row> rows;           ///< and one after the last, for the number of its values
    std::vector<Keys> forms{Keys()}; ///< keys of rows that are alike; the last ones may be missing in a row
    std::vector<quint16> values; ///< where the values of the rows begin, from the beginning of their row on

    const char *begin() const { return text.constData(); }
    const char *end() const { return text.constData() + text.size(); }
};

namespace {

constexpr int mostBytes = 1 << 29; // Qt, too, can read so much
constexpr std::size_t usualFieldBytes = 16;
constexpr std::size_t mostFields = 64;
constexpr std::size_t mostForms = 1000; // a message of more is none of many rows that are alike

std::string_view viewOf(const char *begin, const char *end)
{
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// Which of two equal keys counts is Qt's to say.
bool areAllDifferent(const FlatIndex::Keys &keys)
{
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        if (std::find(keys.begin(), key, *key) != key) {
            return false;
        }
    }
    return keys.size() <= mostFields;
}

/// Fills the index of a text. Its functions return the place after what they have read, or null in doubt.
class FlatReader
{
public:
    explicit FlatReader(FlatIndex &index) : m_index(index), m_end(index.end()) {}

    bool read()
    {
        m_index.values.reserve(static_cast<std::size_t>(m_index.text.size()) / usualFieldBytes);
        const char *const begin = JsonScan::passSpace(m_index.begin(), m_end);
        const char *const after = readFields(begin, [this](const char *from) { return readField(from); });
        closeRows();
        return after != nullptr && JsonScan::passSpace(after, m_end) == m_end && !m_index.fields.empty() &&
               areAllDifferent(keysOfMessage());
    }

private:
    /// A field of the row before, which the next row mostly has at the same place, too.
    struct KnownField
    {
        std::string_view key;
        std::string_view
            head; ///< the key in its quotes, its colon and what white space there is up to the value
        FlatValue value;
    };

    /// Fields between braces, each read by `readOne`.
    template <class ReadOne>
    const char *readFields(const char *from, ReadOne readOne)
    {
        from = JsonScan::passMark(from, m_end, '{');
        if (from != nullptr && from < m_end && *from == '}') {
            return from + 1;
        }
        while (from != nullptr) {
            const char *const after = readOne(from);
            const char *const mark = after == nullptr ? m_end : JsonScan::passSpace(after, m_end);
            if (mark == m_end) {
                return nullptr;
            }
            if (*mark == '}') {
                return mark + 1;
            }
            from = JsonScan::passMark(mark, m_end, ',');
        }
        return nullptr;
    }

    const char *readField(const char *from)
    {
        const char *const keyEnd = JsonScan::passKey(from, m_end);
        const char *const value = keyEnd == nullptr ? nullptr : JsonScan::passMark(keyEnd, m_end, ':');
        if (value == nullptr || value == m_end) {
            return nullptr;
        }
        const std::string_view key = viewOf(from + 1, keyEnd - 1);
        if (*value == '[') {
            m_index.fields.push_back({key, FlatValue()});
            return key == TradeKeyFields::DATA ? readRows(value) : nullptr;
        }
        const char *const after = JsonScan::passValue(value, m_end);
        m_index.fields.push_back({key, after == nullptr ? FlatValue() : FlatValue(viewOf(value, after))});
        return after;
    }

    const char *readRows(const char *from)
    {
        from = JsonScan::passMark(from, m_end, '[');
        if (from != nullptr && from < m_end && *from == ']') {
            return from + 1;
        }
        while (from != nullptr && from < m_end) {
            const char *const after = readRow(from);
            const char *const mark = after == nullptr ? m_end : JsonScan::passSpace(after, m_end);
            if (mark == m_end) {
                return nullptr;
            }
            if (*mark == ']') {
                return mark + 1;
            }
            from = JsonScan::passMark(mark, m_end, ',');
        }
        return nullptr;
    }

    const char *readRow(const char *from)
    {
        m_index.rows.push_back({static_cast<quint32>(from - m_index.begin()), valueCount(), 0});
        m_field = 0;
        m_isAlike = true;
        const char *const after =
            readFields(from, [this, from](const char *field) { return readRowField(from, field); });
        if (after == nullptr || !(m_isAlike || learnForm())) {
            return nullptr;
        }
        m_index.rows.back().form = static_cast<int>(m_index.forms.size()) - 1;
        return after;
    }

    const char *readRowField(const char *row, const char *from)
    {
        if (m_field == m_known.size()) {
            m_known.emplace_back();
        }
        KnownField &known = m_known[m_field++];
        const bool isHeadKnown = !known.head.empty() && JsonScan::beginsWith(from, m_end, known.head);
        const char *const value =
            isHeadKnown ? JsonScan::passSpace(from + known.head.size(), m_end) : learnHead(from, known);
        if (value == nullptr || value - row > std::numeric_limits<quint16>::max()) {
            return nullptr;
        }
        m_index.values.push_back(static_cast<quint16>(value - row));
        if (known.value.isTextAt(value, m_end)) {
            return value + known.value.size();
        }
        const char *const after = JsonScan::passValue(value, m_end);
        known.value = after == nullptr ? FlatValue() : FlatValue(viewOf(value, after));
        return after;
    }

    /// The value of a field that is not where it was in the row before.
    const char *learnHead(const char *from, KnownField &known)
    {
        m_isAlike = false;
        const char *const keyEnd = JsonScan::passKey(from, m_end);
        const char *const value = keyEnd == nullptr ? nullptr : JsonScan::passMark(keyEnd, m_end, ':');
        if (value != nullptr) {
            known.key = viewOf(from + 1, keyEnd - 1);
            known.head = viewOf(from, value);
        }
        return value;
    }

    /// Keeps the keys of a row that is not like the one before; false when it has one twice.
    bool learnForm()
    {
        m_known.resize(m_field);
        FlatIndex::Keys keys;
        std::transform(m_known.begin(), m_known.end(), std::back_inserter(keys),
                       [](const KnownField &field) { return field.key; });
        m_index.forms.push_back(std::move(keys));
        return areAllDifferent(m_index.forms.back()) && m_index.forms.size() <= mostForms;
    }

    FlatIndex::Keys keysOfMessage() const
    {
        FlatIndex::Keys keys;
        std::transform(m_index.fields.begin(), m_index.fields.end(), std::back_inserter(keys),
                       [](const FlatIndex::Field &field) { return field.key; });
        return keys;
    }

    void closeRows() { m_index.rows.push_back({0, valueCount(), 0}); }
    quint32 valueCount() const { return static_cast<quint32>(m_index.values.size()); }

    FlatIndex &m_index;
    const char *const m_end;
    std::vector<KnownField> m_known; ///< their keys are those of the last form
    std::size_t m_field = 0;         ///< of the row that is being read
    bool m_isAlike = true;           ///< its keys are those of the last form
};

} // namespace

// FlatMessage

std::optional<FlatMessage> FlatMessage::read(const QByteArray &text)
{
    if (text.size() > mostBytes) {
        return std::nullopt;
    }
    const auto index = std::make_shared<FlatIndex>();
    index->text = text;
    return FlatReader(*index).read() ? std::make_optional(FlatMessage(index)) : std::nullopt;
}

FlatValue FlatMessage::value(QLatin1String key) const
{
    for (const FlatIndex::Field &field : m_index->fields) {
        if (QLatin1String(field.key.data(), static_cast<int>(field.key.size())) == key) {
            return field.value;
        }
    }
    return {};
}

bool FlatMessage::contains(QLatin1String key) const
{
    return std::any_of(m_index->fields.begin(), m_index->fields.end(), [key](const FlatIndex::Field &field) {
        return QLatin1String(field.key.data(), static_cast<int>(field.key.size())) == key;
    });
}

// Rows

int FlatRows::size() const
{
    return static_cast<int>(m_index->rows.size()) - 1;
}

std::size_t FlatRow::fieldCount() const
{
    const auto row = m_index.rows.begin() + m_row;
    return row[1].firstValue - row->firstValue;
}

const char *FlatRow::valueOf(FlatPlace &place) const
{
    const FlatIndex::Row &row = m_index.rows[static_cast<std::size_t>(m_row)];
    if (place.form != row.form) {
        place.form = row.form;
        const FlatIndex::Keys &keys = m_index.forms[static_cast<std::size_t>(row.form)];
        place.field = static_cast<std::size_t>(std::find(keys.begin(), keys.end(), place.key) - keys.begin());
    }
    const bool hasField = place.field < fieldCount();
    return hasField ? m_index.begin() + row.begin + m_index.values[row.firstValue + place.field] : nullptr;
}

bool FlatRow::read(FlatPlace &place) const
{
    const char *const value = valueOf(place);
    if (value != nullptr && place.value.isTextAt(value, m_index.end())) {
        return false;
    }
    const FlatValue found =
        value == nullptr ? FlatValue() : FlatValue(viewOf(value, JsonScan::passValue(value, m_index.end())));
    return !(std::exchange(place.value, found) == found);
}

QJsonObject FlatRow::toObject() const
{
    const auto row = m_index.rows.begin() + m_row;
    const char *const begin = m_index.begin() + row->begin;
    const char *end = begin + 1;
    if (fieldCount() > 0) {
        end = JsonScan::passValue(begin + m_index.values[row[1].firstValue - 1], m_index.end());
    }
    end = JsonScan::passSpace(end, m_index.end()) + 1; // the brace
    return QJsonDocument::fromJson(QByteArray::fromRawData(begin, static_cast<int>(end - begin))).object();
}

} // namespace TradeChart
