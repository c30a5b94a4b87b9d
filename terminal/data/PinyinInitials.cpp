#include "terminal/data/PinyinInitials.h"

#include <QCollator>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

/// The first character of each letter in the order of a Chinese dictionary, which the collation of Unicode
/// keeps: so the letter of a character is that of the last of these that is not after it, and before all of
/// them it is a.
struct LetterStart
{
    char16_t character;
    char letter;
};

constexpr LetterStart letterStarts[] = {
    {u'八', 'b'}, {u'嚓', 'c'}, {u'咑', 'd'}, {u'妸', 'e'}, {u'发', 'f'}, {u'旮', 'g'},
    {u'哈', 'h'}, {u'丌', 'j'}, {u'咔', 'k'}, {u'垃', 'l'}, {u'妈', 'm'}, {u'拏', 'n'},
    {u'喔', 'o'}, {u'妑', 'p'}, {u'七', 'q'}, {u'呥', 'r'}, {u'仨', 's'}, {u'他', 't'},
    {u'屲', 'w'}, {u'夕', 'x'}, {u'丫', 'y'}, {u'帀', 'z'},
};

/// A character of names of companies that is read in another way than the dictionary's first.
struct OtherReading
{
    char16_t character;
    char letter;
};

constexpr OtherReading otherReadings[] = {
    {u'行', 'h'}, {u'行', 'x'}, {u'重', 'c'}, {u'重', 'z'}, {u'长', 'c'}, {u'长', 'z'}, {u'厦', 'x'},
    {u'厦', 's'}, {u'乐', 'l'}, {u'乐', 'y'}, {u'藏', 'z'}, {u'藏', 'c'}, {u'朝', 'c'}, {u'朝', 'z'},
    {u'传', 'c'}, {u'传', 'z'}, {u'车', 'c'}, {u'车', 'j'}, {u'盛', 's'}, {u'盛', 'c'}, {u'曾', 'z'},
    {u'曾', 'c'}, {u'沈', 's'}, {u'沈', 'c'}, {u'参', 'c'}, {u'参', 's'}, {u'会', 'h'}, {u'会', 'k'},
    {u'单', 'd'}, {u'单', 's'}, {u'调', 'd'}, {u'调', 't'}, {u'省', 's'}, {u'省', 'x'}, {u'系', 'x'},
    {u'系', 'j'}, {u'解', 'j'}, {u'解', 'x'}, {u'蔚', 'w'}, {u'蔚', 'y'}, {u'阿', 'a'}, {u'阿', 'e'},
    {u'泊', 'b'}, {u'泊', 'p'},
};

constexpr int mostReadings = 8; ///< of one name

const QCollator &dictionary()
{
    static const QCollator order(QLocale(QLocale::Chinese, QLocale::China));
    return order;
}

bool isChinese(QChar character)
{
    return character.script() == QChar::Script_Han;
}

QString dictionaryLetter(QChar character)
{
    const auto *const after =
        std::upper_bound(std::begin(letterStarts), std::end(letterStarts), QString(character),
                         [](const QString &searched, const LetterStart &start) {
                             return dictionary().compare(searched, QString(QChar(start.character))) < 0;
                         });
    return QString(QLatin1Char(after == std::begin(letterStarts) ? 'a' : std::prev(after)->letter));
}

QStringList lettersOf(QChar character)
{
    if (!isChinese(character)) {
        return character.isLetterOrNumber() ? QStringList(character.toLower()) : QStringList(QString());
    }
    QStringList letters(dictionaryLetter(character));
    for (const OtherReading &reading : otherReadings) {
        const QString letter(QLatin1Char(reading.letter));
        if (reading.character == character.unicode() && !letters.contains(letter)) {
            letters.append(letter);
        }
    }
    return letters;
}

} // namespace

QStringList pinyinInitials(const QString &name)
{
    QStringList readings(QString{});
    for (const QChar character : name) {
        QStringList longer;
        for (const QString &letter : lettersOf(character)) {
            for (const QString &reading : readings) {
                longer.append(reading + letter);
            }
        }
        readings = longer.mid(0, mostReadings);
    }
    readings.removeAll(QString());
    return readings;
}

} // namespace Terminal
