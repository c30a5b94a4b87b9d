// Bar files that something went wrong with: each is read right or refused by name, never read wrong.
#include "terminal/data/BarSheet.h"
#include "tests/support/ByName.h"
#include "tests/terminal/data/ManyForms.h"

#include <gmock/gmock.h>

#include <QList>

#include <algorithm>
#include <functional>
#include <random>

namespace Terminal {
namespace {

/// A file apart in cells, the header's first.
class CellTable
{
public:
    explicit CellTable(const QByteArray &text)
    {
        QList<QByteArray> lines = text.split('\n');
        lines.removeLast();
        for (const QByteArray &line : qAsConst(lines)) {
            rows.append(line.split(','));
        }
    }

    QByteArray text() const
    {
        QByteArray all;
        for (const QList<QByteArray> &row : rows) {
            all += row.join(',') + '\n';
        }
        return all;
    }

    int column(const QByteArray &name) const { return static_cast<int>(rows.first().indexOf(name)); }
    void eachRow(const std::function<void(QList<QByteArray> *)> &change)
    {
        std::for_each(rows.begin() + 1, rows.end(), [&change](QList<QByteArray> &row) { change(&row); });
    }
    void swapInHeader(const QByteArray &a, const QByteArray &b)
    {
        rows.first().swapItemsAt(column(a), column(b));
    }

    QList<QList<QByteArray>> rows;
};

/// Changes a table at one of its rows, or as a whole.
struct Mutation
{
    const char *name;
    std::function<void(CellTable *table, int row)> mutate;
};

Mutation shifted(const char *name, const char *column, double factor)
{
    return {name, [column = QByteArray(column), factor](CellTable *table, int row) {
                const int place = table->column(column);
                if (place >= 0) {
                    QByteArray &cell = table->rows[row][place];
                    cell = QByteArray::number(cell.toDouble() * factor, 'f', 4);
                }
            }};
}

Mutation exchangedNames(const char *name, const char *a, const char *b)
{
    return {name, [a = QByteArray(a), b = QByteArray(b)](CellTable *table, int) {
                if (table->column(a) >= 0 && table->column(b) >= 0) {
                    table->swapInHeader(a, b);
                }
            }};
}

Mutation exchangedInARow(const char *name, const char *a, const char *b)
{
    return {name, [a = QByteArray(a), b = QByteArray(b)](CellTable *table, int row) {
                if (table->column(a) >= 0 && table->column(b) >= 0) {
                    table->rows[row].swapItemsAt(table->column(a), table->column(b));
                }
            }};
}

Mutation cellBecomes(const char *name, const char *column, std::function<QByteArray(QByteArray)> change)
{
    return {name, [column = QByteArray(column), change = std::move(change)](CellTable *table, int row) {
                QByteArray &cell = table->rows[row][table->column(column)];
                cell = change(cell);
            }};
}

const Mutation mutations[] = {
    exchangedNames("headerOfHighAndLow", "high", "low"),
    exchangedNames("headerOfOpenAndClose", "open", "close"),
    exchangedNames("headerOfOpenAndHigh", "open", "high"),
    exchangedNames("headerOfLowAndClose", "low", "close"),
    exchangedNames("headerOfCloseAndVolume", "close", "volume"),
    exchangedNames("headerOfCloseAndPreviousClose", "close", "pre_close"),
    exchangedNames("headerOfOpenAndPreviousClose", "open", "pre_close"),
    exchangedNames("headerOfVolumeAndAmount", "volume", "amount"),
    exchangedNames("headerOfDateAndOpen", "date", "open"),
    exchangedInARow("highAndLowInARow", "high", "low"),
    exchangedInARow("openAndVolumeInARow", "open", "volume"),
    exchangedInARow("volumeAndAmountInARow", "volume", "amount"),
    {"wholeColumnMoved",
     [](CellTable *table, int) {
         for (QList<QByteArray> &row : table->rows) {
             row.append(row.takeFirst());
         }
     }},
    {"columnTwice",
     [](CellTable *table, int) {
         for (QList<QByteArray> &row : table->rows) {
             row.append(row.at(1));
         }
     }},
    {"cellDropped", [](CellTable *table, int row) { table->rows[row].removeAt(2); }},
    {"cellAdded", [](CellTable *table, int row) { table->rows[row].insert(2, "9.99"); }},
    {"columnDropped",
     [](CellTable *table, int) {
         for (QList<QByteArray> &row : table->rows) {
             row.removeAt(3);
         }
     }},
    {"columnDroppedFromTheHeader", [](CellTable *table, int) { table->rows.first().removeAt(1); }},
    cellBecomes("priceEmpty", "close", [](const QByteArray &) { return QByteArray(); }),
    cellBecomes("volumeEmpty", "volume", [](const QByteArray &) { return QByteArray(); }),
    cellBecomes("priceOfAWord", "high", [](const QByteArray &) { return QByteArray("--"); }),
    cellBecomes("priceNotANumber", "low", [](const QByteArray &) { return QByteArray("nan"); }),
    cellBecomes("volumeCut", "volume", [](const QByteArray &) { return QByteArray("1.23E+06"); }),
    cellBecomes("volumeAbbreviated", "volume", [](const QByteArray &) { return QByteArray("1.23万"); }),
    cellBecomes("decimalComma", "open", [](QByteArray cell) { return '"' + cell.replace('.', ',') + '"'; }),
    shifted("openTenTimes", "open", 10),
    shifted("openATenth", "open", 0.1),
    shifted("highTenTimes", "high", 10),
    shifted("highAHundredTimes", "high", 100),
    shifted("lowATenth", "low", 0.1),
    shifted("closeATenth", "close", 0.1),
    shifted("closeAHundredTimes", "close", 100),
    shifted("amountTenTimes", "amount", 10),
    shifted("amountATenth", "amount", 0.1),
    {"wholeRowTenTimes",
     [](CellTable *table, int row) {
         for (const char *const column : {"open", "high", "low", "close"}) {
             shifted("", column, 10).mutate(table, row);
         }
     }},
    {"volumeOfARowInLots",
     [](CellTable *table, int row) {
         if (table->column("amount") >= 0) { // nothing else tells
             shifted("", "volume", 0.01).mutate(table, row);
         }
     }},
    cellBecomes("pricesOfZero", "low", [](const QByteArray &) { return QByteArray("0.00"); }),
    cellBecomes("dateOfAnotherForm", "date",
                [](const QByteArray &cell) {
                    return cell.contains('-') ? QByteArray(cell).replace("-", "")
                                              : cell.left(4) + '-' + cell.mid(4, 2) + '-' + cell.mid(6);
                }),
    cellBecomes("dateWithDayFirst", "date", [](const QByteArray &) { return QByteArray("03/01/2024"); }),
    cellBecomes("dateWithTwoDigits", "date", [](QByteArray cell) { return cell.remove(0, 2); }),
    cellBecomes("dateOfTheYear24", "date", [](QByteArray cell) { return cell.replace(0, 2, "00"); }),
    cellBecomes("dateThatIsNot", "date",
                [](QByteArray cell) { return cell.replace(cell.size() - 2, 2, "32"); }),
    cellBecomes("dateOfASpreadsheet", "date", [](const QByteArray &) { return QByteArray("45293"); }),
    cellBecomes("dateOfAWeekend", "date",
                [](const QByteArray &cell) {
                    return cell.contains('-') ? QByteArray("2024-01-06") : QByteArray("20240106");
                }),
    {"reversed", [](CellTable *table, int) { std::reverse(table->rows.begin() + 1, table->rows.end()); }},
    {"twoRowsExchanged",
     [](CellTable *table, int row) { table->rows.swapItemsAt(row, row == 1 ? 2 : row - 1); }},
    {"rowTwice", [](CellTable *table, int row) { table->rows.insert(row, table->rows[row]); }},
    {"halfReversed",
     [](CellTable *table, int row) { std::reverse(table->rows.begin() + row, table->rows.end()); }},
    {"rowCut",
     [](CellTable *table, int row) {
         table->rows[row] = table->rows[row].mid(0, 3);
         table->rows[row].last().chop(2);
     }},
    {"blankLine",
     [](CellTable *table, int row) { table->rows.insert(row, QList<QByteArray>{QByteArray()}); }},
    {"headerAgain", [](CellTable *table, int row) { table->rows.insert(row, table->rows.first()); }},
    {"headerGone", [](CellTable *table, int) { table->rows.removeFirst(); }},
    {"anotherSecurity",
     [](CellTable *table, int row) {
         if (table->column("code") >= 0) {
             table->rows[row][table->column("code")] = "sh.600000";
         }
     }},
    {"windowsLineEnds",
     [](CellTable *table, int) { table->eachRow([](auto *row) { row->last() += '\r'; }); }},
    {"oneWindowsLineEnd", [](CellTable *table, int row) { table->rows[row].last() += '\r'; }},
    {"byteOrderMark", [](CellTable *table, int) { table->rows.first().first().prepend("\xEF\xBB\xBF"); }},
    {"unitOfLotsInTheHeader",
     [](CellTable *table, int) {
         if (table->column("amount") >= 0) { // nothing else tells
             table->rows.first()[table->column("volume")] += "(亿股)";
         }
     }},
    {"blanksAround",
     [](CellTable *table, int row) { table->rows[row][2] = "  " + table->rows[row][2] + ' '; }},
    {"separatorAtTheEnd", [](CellTable *table, int row) { table->rows[row].append(QByteArray()); }},
};

/// Forms that the mutations are made in.
const FormOfDays forms[] = {
    {"date,open,high,low,close,volume", "{d},{o},{h},{l},{c},{v}"},
    {"date,code,open,high,low,close,pre_close,volume,amount",
     "{iso},sz.000001,{o},{h},{l},{c},{p},{v},{yuan}"},
    {"date,open,close,high,low,volume,amount", "{iso},{o},{c},{h},{l},{lots0},{thousands}"},
};

class BarMutationsInForms : public ::testing::TestWithParam<Mutation>
{
};

TEST_P(BarMutationsInForms, IsReadRightOrRefusedByName)
{
    const Bars bars = someDays();
    const auto last = static_cast<int>(bars.size());
    for (const FormOfDays &form : forms) {
        for (const int row : {1, 2, last / 2, last - 1, last}) {
            SCOPED_TRACE(row);
            CellTable table(form.of(bars));
            GetParam().mutate(&table, row);
            const QByteArray text = table.text();
            SCOPED_TRACE(text.left(200).toStdString());
            const auto sheet = readBarSheet(text, QStringLiteral("a.csv"), {});
            if (sheet) {
                expectSame(sheet.value().bars, bars);
            } else {
                EXPECT_THAT(sheet.error().toStdString(), ::testing::StartsWith("a.csv:"));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, BarMutationsInForms, ::testing::ValuesIn(mutations), ByName());

TEST(BarMutations, WouldBeSeenIfTheyWereReadWrong)
{
    const Bars bars = someDays();
    CellTable table(forms[0].of(bars));
    shifted("", "volume", 0.1).mutate(&table, 5); // nothing in the own form tells
    const auto sheet = readBarSheet(table.text(), QStringLiteral("a.csv"), {});
    ASSERT_TRUE(sheet);
    EXPECT_NE(sheet.value().bars[4].volume, bars[4].volume);
}

TEST(BarMutations, OfAnyBytesEndInBarsOrInARefusalByName)
{
    std::mt19937 random(11);
    const auto any = [&random](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    const QByteArray pieces = QByteArray("\0\r\n\t\",;|-.:/T9年 ", 18) + "\xFF\xFE\xEF\xBB\xBF";
    for (int round = 0; round < 3000; ++round) {
        QByteArray text = forms[any(3)].of(someDays()).left(200 + any(2000));
        for (int change = any(6); change >= 0; --change) {
            const int at = any(text.size());
            any(2) == 0 ? text.insert(at, pieces[any(pieces.size())]) : text.remove(at, 1 + any(30));
        }
        const auto sheet = readBarSheet(text, QStringLiteral("a.csv"), {});
        ASSERT_TRUE(sheet ? !sheet.value().bars.empty() : sheet.error().startsWith(QStringLiteral("a.csv:")))
            << text.toStdString();
    }
}

} // namespace
} // namespace Terminal
