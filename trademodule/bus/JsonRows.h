#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <string_view>

namespace TradeModule {

/// A JSON array of objects, written as text at once: for answers of thousands of rows, where making a
/// QJsonObject of every row takes several times as long as reading the rows.
///
///     JsonRows rows;
///     rows.begin();
///     rows.addText("matchqty", "300");
///     rows.addFlag("buy", true);
///     rows.toJson();                      // [{"matchqty":"300","buy":true}]
///
/// Keys are words of the vocabulary: they hold nothing that must be escaped, and a row has each once. A row
/// has one value at least.
class JsonRows
{
public:
    explicit JsonRows(int expectedRows = 0);

    /// Begins the next row; what is added goes into it.
    void begin();

    void addText(const char *key, const QString &text);
    /// A text that holds nothing to escape, such as digits.
    void addPlainText(const char *key, std::string_view text);
    /// `number` as it is written in JSON.
    void addNumber(const char *key, std::string_view number);
    void addFlag(const char *key, bool flag);

    /// The array; nothing is added afterwards.
    QByteArray toJson();

private:
    char *room(std::size_t bytes);
    char *addKey(const char *key, std::size_t bytesAfter);
    void append(std::string_view text);
    void endRow();

    QByteArray m_json; ///< the array so far, with a comma after the last value, and room for more
    int m_size = 0;    ///< of the array so far
};

} // namespace TradeModule
