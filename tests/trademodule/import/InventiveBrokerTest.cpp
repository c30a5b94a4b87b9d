// One account's month with every kind of business, told by brokers that nobody knows: each has its own words,
// columns, signs, numbers and kind of file. What is read is what happened, or the row is refused by name.
#include "tests/trademodule/import/StatementTest.h"
#include "tests/trademodule/import/WorkbookFile.h"
#include "trademodule/Error.h"
#include "trademodule/import/ColumnNames.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace TradeModule {

namespace {

/// What a broker may tell of an entry.
enum class Told {
    Date,
    Settled,
    Time,
    Code,
    Name,
    Kind,
    Quantity,
    Price,
    Amount,
    Commission,
    Duty,
    Transfer,
    TotalFee,
    Net,
    Income,
    Expense,
    SharesAfter,
    CashAfter,
    Order,
    Deal,
    Holder,
    Currency,
    Remark,
};

/// How net amounts are written.
enum class Signs { Signed, Unsigned, TwoColumns, None };

enum class Fees { Split, Total, None };

enum class Container { Commas, Tabs, Semicolons, Pipes, Formulas, Page, Book };

/// Something that happened to the account, in the words that brokers have for it.
struct Event
{
    const char *words; ///< apart by blanks
    const char *market;
    const char *code; ///< as the statement has it
    qint64 quantity = 0;
    int cents = 0; ///< of the price, in tenths of a cent
    int net = 0;   ///< cents that the account got; negative: paid
    int commission = 0;
    int duty = 0;
    int transfer = 0;
    const char *books = "";       ///< side and code of the shares that it moves: "buy SH600519"
    bool movesMoney = false;      ///< beside trades
    const char *currency = "CNY"; ///< of the money
    qint64 pieces = 0;            ///< where the statement counts in lots
};

// clang-format off
const Event events[] = {
    {"银行转证券 银行转存 转账存入|银证转入 资金存入", "", "", 0, 0, 50000000, 0, 0, 0, "", true},
    {"证券买入 买入 普通买入 担保品买入 信用担保品买入 集合竞价买入 证券买入清算 股票买入", "SH", "600519", 100, 1700000, -17004420, 4250, 0, 170, "buy SH600519"},
    {"证券买入 买入 融资买入 信用融资买入 专项融资买入 融资开仓 竞价融资买入", "SZ", "000001", 2000, 9300, -1860519, 500, 0, 19, "buy SZ000001"},
    {"证券卖出 卖出 普通卖出 担保品卖出 卖券还款 信用卖券还款 融资平仓 融资强制平仓 证券卖出清算", "SZ", "000001", -500, 9400, 469260, 500, 235, 5, "sell SZ000001"},
    {"证券买入 买入 基金买入 ETF买入", "SH", "510300", 10000, 3412, -3412853, 853, 0, 0, "buy SH510300"},
    {"证券卖出 卖出", "SH", "510300", -4000, 3498, 1398700, 500, 0, 0, "sell SH510300"},
    {"证券买入 买入 北交所买入", "BJ", "920002", 300, 25110, -753800, 500, 0, 0, "buy BJ920002"},
    {"证券买入 买入", "SH", "113050", 30, 118500, -355600, 100, 0, 0, "buy SH113050"},
    {"证券卖出 卖出 盘后定价卖出", "SH", "688981", -200, 52310, 1045167, 500, 523, 10, "sell SH688981"},
    {"证券买入冲销 红冲证券买入 买入冲正 撤销证券买入 证券买入撤销", "SH", "600036", -100, 35000, 350535, 500, 0, 35, ""}, // of the next
    {"证券买入 买入 股票买入", "SH", "600036", 100, 35000, -350535, 500, 0, 35, ""},
    {"申购配号 新股配号 新股申购配号 配号", "SH", "787001", 10, 0, 0, 0, 0, 0, ""},
    {"撤买 买入撤单 证券买入撤单 撤单", "SH", "600519", 100, 1690000, 0, 0, 0, 0, ""},
    {"红利入账 股息入账 派发现金红利 股票红利 现金分红 派息", "SZ", "000001", 0, 0, 36000, 0, 0, 0, "", true},
    {"股息红利税补缴 红利税补扣 补扣红利税 股息个人所得税", "SZ", "000001", 0, 0, -1200, 0, 0, 0, "", true},
    {"红股入账 送股 转增股上市 红股派发 送转股", "SZ", "000001", 300, 0, 0, 0, 0, 0, "bonus SZ000001"},
    {"中签缴款 新股中签缴款 新股申购扣款 新股中签扣款", "SH", "787002", 500, 20000, -1000000, 0, 0, 0, "", true},
    {"新股入账 新股入帐 新股上市 中签入账", "SH", "688002", 500, 20000, 0, 0, 0, 0, "allotment SH688002"},
    {"融券卖出 信用融券卖出 融券专项卖出", "SH", "601318", 100, 45000, 449300, 500, 200, 0, ""},
    {"买券还券 信用买券还券 融券购券还券", "SH", "601318", 100, 44000, -440500, 500, 0, 0, ""},
    {"质押回购拆出 融券回购 逆回购 国债逆回购", "SH", "204001", 10, 2000, -100001, 1, 0, 0, "", true},
    {"拆出质押购回 融券购回 逆回购到期 质押购回", "SH", "204001", 10, 2000, 100006, 0, 0, 0, "", true},
    {"货币基金自动申购 基金申购 理财产品申购 货币基金申购", "OC", "000509", 1000, 1000, -100000, 0, 0, 0, "in OC000509"},
    {"货币基金快速赎回 基金赎回 理财产品赎回", "OC", "000509", -1000, 1000, 100000, 0, 0, 0, "out OC000509", true},
    {"转债转股 债转股 可转债转股", "SZ", "123045", -20, 100000, 0, 0, 0, 0, "out SZ123045"},
    {"转债转股 债转股 可转债转股", "SZ", "300428", 100, 20000, 0, 0, 0, 0, "in SZ300428"},
    {"证券转入 担保品划入 转托管转入 托管转入", "SH", "601398", 1000, 5000, 0, 0, 0, 0, "in SH601398"},
    {"利息归本 批量结息 利息入账 结息", "", "", 0, 0, 345, 0, 0, 0, "", true},
    {"港股通组合费 证券组合费", "", "", 0, 0, -123, 0, 0, 0, "", true},
    {"证券转银行 银行转取 资金取出", "", "", 0, 0, -2000000, 0, 0, 0, "", true},
};
// clang-format on

QString cents(qint64 amount)
{
    return QString::number(static_cast<double>(amount) / 100, 'f', 2);
}

/// How one broker tells everything.
class Broker
{
public:
    explicit Broker(unsigned seed) : m_chance(seed) { chooseForms(); }

    QStringList header() const { return m_names; }

    /// The events as rows of cells.
    QVector<QStringList> rows();

    /// What the books should have of them.
    std::multiset<std::string> books() const;

    void write(const QString &path);

    bool tellsFees() const { return m_fees != Fees::None || m_signs != Signs::None; }
    std::string described() const;

private:
    void chooseForms()
    {
        m_signs = choice({Signs::Signed, Signs::Signed, Signs::Unsigned, Signs::TwoColumns, Signs::None});
        m_fees = choice({Fees::Split, Fees::Total, Fees::None});
        m_container = choice({Container::Commas, Container::Tabs, Container::Semicolons, Container::Pipes,
                              Container::Formulas, Container::Page, Container::Book});
        m_encoding = choice({"UTF-8", "UTF-8", "GBK", "GB18030", "UTF-16LE", "UTF-16BE"});
        m_hasMark = QByteArray(m_encoding).startsWith("UTF-16") || coin();
        m_dateForm = choice({"yyyyMMdd", "yyyy-MM-dd", "yyyy/M/d", "yyyy.MM.dd", "yyyy年M月d日", "serial"});
        m_isTimeInDate = coin(4) && qstrcmp(m_dateForm, "serial") != 0;
        m_areSalesNegative = coin();
        m_areAmountsOfSalesNegative = coin(3);
        m_countsBondsInLots = coin(2);
        m_isNewestFirst = coin(3);
        m_codes = choice({0, 0, 1, 2, 3});
        m_numbers = choice({0, 0, 1, 2});
        m_hasSums = coin();
        m_hasPages = coin();
        m_hasTexts = coin();
        chooseColumns();
    }

    bool coin(int of = 2) { return m_chance() % static_cast<unsigned>(of) == 0; }
    template <typename T>
    T choice(std::initializer_list<T> from)
    {
        return *(from.begin() + m_chance() % from.size());
    }
    QString wordOf(const char *words)
    {
        const QStringList all = QString::fromUtf8(words).split(QRegularExpression(QStringLiteral("[ |]")));
        return all[static_cast<int>(m_chance() % static_cast<unsigned>(all.size()))];
    }
    void chooseColumns();
    void add(Told told, Column column, const char *unit = "");
    QString cell(Told told, const Event &event, int place, const QString &word);
    QString number(const QString &plain) const;
    QString codeOf(const Event &event) const;
    QString dateOf(int day) const;
    QStringList furniture(const QString &text) const;
    QByteArray text(const QVector<QStringList> &lines) const;
    QByteArray page(const QVector<QStringList> &lines) const;
    void writeBook(const QString &path, const QVector<QStringList> &lines) const;

    std::mt19937 m_chance;
    Signs m_signs;
    Fees m_fees;
    Container m_container;
    const char *m_encoding;
    bool m_hasMark;
    const char *m_dateForm;
    bool m_isTimeInDate;
    bool m_areSalesNegative;
    bool m_areAmountsOfSalesNegative;
    bool m_countsBondsInLots;
    bool m_isNewestFirst;
    int m_codes;
    int m_numbers;
    bool m_hasSums;
    bool m_hasPages;
    bool m_hasTexts;
    std::vector<Told> m_columns;
    QStringList m_names;
    std::map<std::string, qint64> m_held;
    qint64 m_cash = 0;
};

void Broker::add(Told told, Column column, const char *unit)
{
    for (const ColumnNames::Spellings &row : ColumnNames::spellings()) {
        if (row.column == column) {
            const QString name =
                row.names[static_cast<int>(m_chance() % static_cast<unsigned>(row.names.size()))];
            const auto at = static_cast<int>(m_chance() % (m_columns.size() + 1));
            m_columns.insert(m_columns.begin() + at, told);
            m_names.insert(at, name + QString::fromUtf8(unit));
        }
    }
}

void Broker::chooseColumns()
{
    add(Told::Date, Column::Date);
    add(Told::Code, Column::Code);
    add(Told::Kind, Column::Business);
    add(Told::Quantity, Column::Quantity, coin(3) ? "(股)" : "");
    add(Told::Price, Column::Price, coin(3) ? "（元）" : "");
    if (!m_isTimeInDate && coin()) {
        add(Told::Time, Column::Time);
    }
    if (m_signs == Signs::None || coin()) {
        add(Told::Amount, Column::Amount);
    }
    switch (m_fees) {
    case Fees::Split:
        add(Told::Commission, coin() ? Column::Commission : Column::CommissionTwin);
        add(Told::Duty, Column::StampDuty);
        add(Told::Transfer, Column::OtherFee);
        break;
    case Fees::Total:
        add(Told::TotalFee, Column::TotalFee);
        break;
    case Fees::None:
        break;
    }
    switch (m_signs) {
    case Signs::Signed:
    case Signs::Unsigned:
        add(Told::Net, Column::Net);
        break;
    case Signs::TwoColumns:
        add(Told::Income, Column::Income);
        add(Told::Expense, Column::Expense);
        break;
    case Signs::None:
        break;
    }
    for (const auto &[told, column] :
         {std::pair(Told::Name, Column::Name), std::pair(Told::SharesAfter, Column::SharesAfter),
          std::pair(Told::CashAfter, Column::CashAfter), std::pair(Told::Order, Column::OrderNo),
          std::pair(Told::Deal, Column::DealNo), std::pair(Told::Currency, Column::Currency),
          std::pair(Told::Remark, Column::Remark)}) {
        if (coin()) {
            add(told, column);
        }
    }
    if (coin(3)) { // a day later, beside the day of the trade
        const auto at = std::find(m_columns.begin(), m_columns.end(), Told::Date) - m_columns.begin();
        m_names[static_cast<int>(at)] = QStringLiteral("成交日期");
        m_columns.push_back(Told::Settled);
        m_names.append(QStringLiteral("交收日期"));
    }
}

QString Broker::number(const QString &plain) const
{
    if (m_numbers == 1 && plain.contains(QLatin1Char('.'))) {
        return plain + QStringLiteral("00");
    }
    if (m_numbers == 2 && plain.toDouble() == 0) {
        return m_container == Container::Book ? QString() : QStringLiteral("--");
    }
    return plain;
}

QString Broker::codeOf(const Event &event) const
{
    const QString code = QLatin1String(event.code);
    const QString market = QLatin1String(event.market);
    const bool isPlain = code.isEmpty() || market == QLatin1String("OC");
    if (m_codes == 1 && !isPlain) {
        return market + code;
    }
    if (m_codes == 2 && !isPlain) {
        return code + QLatin1Char('.') + market;
    }
    return m_codes == 3 && !isPlain ? QLatin1Char('\'') + code : code;
}

QString Broker::dateOf(int day) const
{
    const QDate date = QDate(2024, 1, 2).addDays(day);
    return qstrcmp(m_dateForm, "serial") == 0 ? QString::number(QDate(1899, 12, 30).daysTo(date))
                                              : date.toString(QString::fromUtf8(m_dateForm));
}

bool isBondInLots(const Event &event)
{
    return qstrcmp(event.code, "113050") == 0;
}

QString Broker::cell(Told told, const Event &event, int place, const QString &word)
{
    const bool isSale = QLatin1String(event.books).startsWith(QLatin1String("sell"));
    const qint64 pieces = std::abs(event.quantity);
    const bool isInLots = isBondInLots(event) && m_countsBondsInLots &&
                          std::count(m_columns.begin(), m_columns.end(), Told::Amount) > 0;
    const qint64 amount = pieces * event.cents / 10;
    const QTime time = QTime(9, 30).addSecs(60 * place);
    switch (told) {
    case Told::Date:
        return dateOf(place) + (m_isTimeInDate ? time.toString(QStringLiteral(" HH:mm:ss")) : QString());
    case Told::Settled:
        return dateOf(place + 1);
    case Told::Time:
        return time.toString(QStringLiteral("HH:mm:ss"));
    case Told::Code:
        return codeOf(event);
    case Told::Name:
        return pieces > 0 ? QStringLiteral("甲 乙%1").arg(place) : QString();
    case Told::Kind:
        return word;
    case Told::Quantity: {
        const bool isNegative = event.quantity < 0 && (!isSale || m_areSalesNegative);
        return number(QString::number((isNegative ? -pieces : pieces) / (isInLots ? 10 : 1)));
    }
    case Told::Price:
        return number(QString::number(static_cast<double>(event.cents) / 1000, 'f', 3));
    case Told::Amount:
        if (pieces == 0 || qstrcmp(event.code, "204001") == 0) { // where no other column tells what moved
            return number(cents(m_signs == Signs::None ? std::abs(event.net) : 0));
        }
        return number(cents(isSale && m_areAmountsOfSalesNegative ? -amount : amount));
    case Told::Commission:
        return number(cents(event.commission));
    case Told::Duty:
        return number(cents(event.duty));
    case Told::Transfer:
        return number(cents(event.transfer));
    case Told::TotalFee:
        return number(cents(event.commission + event.duty + event.transfer));
    case Told::Net:
        return number(cents(m_signs == Signs::Unsigned ? std::abs(event.net) : event.net));
    case Told::Income:
        return number(cents(std::max(0, event.net)));
    case Told::Expense:
        return number(cents(std::max(0, -event.net)));
    case Told::SharesAfter:
        return number(QString::number(m_held[event.code]));
    case Told::CashAfter:
        return number(cents(m_cash));
    case Told::Order:
        return QString::number(9001 + place);
    case Told::Deal:
        return QString::number(70001 + place);
    case Told::Holder:
        return QStringLiteral("A123456789");
    case Told::Currency:
        return QStringLiteral("人民币");
    case Told::Remark:
        return QString();
    }
    return {};
}

QVector<QStringList> Broker::rows()
{
    QVector<QStringList> rows;
    int place = 0;
    // What is taken back comes before the row that takes it back.
    std::vector<const Event *> inOrder;
    for (const Event &event : events) {
        inOrder.push_back(&event);
    }
    std::swap(inOrder[9], inOrder[10]);
    for (const Event *const event : inOrder) {
        m_held[event->code] += event->quantity;
        m_cash += event->net;
        const QString word = wordOf(event->words);
        QStringList cells;
        for (const Told told : m_columns) {
            cells.append(cell(told, *event, place, word));
        }
        rows.append(cells);
        ++place;
    }
    if (m_isNewestFirst) {
        std::reverse(rows.begin(), rows.end());
    }
    return rows;
}

std::multiset<std::string> Broker::books() const
{
    std::multiset<std::string> books;
    for (const Event &event : events) {
        if (event.books[0] != '\0') {
            const bool isTrade = QLatin1String(event.books).startsWith(QLatin1String("buy")) ||
                                 QLatin1String(event.books).startsWith(QLatin1String("sell"));
            QString line =
                QStringLiteral("%1 %2").arg(QLatin1String(event.books)).arg(std::abs(event.quantity));
            if (isTrade) {
                line += QStringLiteral(" at %1").arg(static_cast<double>(event.cents) / 1000);
                line += QStringLiteral(" fee %1").arg(
                    tellsFees() ? cents(event.commission + event.duty + event.transfer) : cents(0));
            }
            books.insert(line.toStdString());
        }
        if (event.movesMoney) {
            books.insert("money " + cents(event.net).toStdString());
        }
    }
    return books;
}

/// What was read, in the words of Broker::books().
std::multiset<std::string> booksOf(const StatementContents &contents)
{
    static const char *const sides[] = {"buy", "sell", "bonus", "merger", "allotment", "in", "out"};
    std::multiset<std::string> books;
    for (const Execution &entry : contents.executions) {
        QString line = QStringLiteral("%1 %2%3 %4")
                           .arg(QLatin1String(sides[static_cast<int>(entry.side)]),
                                marketLetters(entry.security.market), entry.security.code)
                           .arg(entry.quantity);
        if (isTrade(entry.side)) {
            line += QStringLiteral(" at %1 fee %2").arg(entry.price.yuan()).arg(entry.fee.text());
        }
        books.insert(line.toStdString());
    }
    for (const MoneyEntry &money : contents.money) {
        books.insert("money " + money.amount.text().toStdString());
    }
    return books;
}

QStringList Broker::furniture(const QString &text) const
{
    QStringList cells{text};
    while (cells.size() < m_names.size()) {
        cells.append(QString());
    }
    return cells;
}

void Broker::write(const QString &path)
{
    QVector<QStringList> lines;
    if (m_hasTexts) {
        lines.append(furniture(QStringLiteral("对账单")));
        lines.append(furniture(QStringLiteral("客户:某某 起始日期:20240101")));
    }
    lines.append(m_names);
    const QVector<QStringList> entries = rows();
    for (int i = 0; i < entries.size(); ++i) {
        if (m_hasPages && i > 0 && i % 12 == 0) {
            lines.append(furniture(QStringLiteral("本页小计")));
            lines.append(furniture(QStringLiteral("第%1页").arg(i / 12)));
            lines.append(m_names);
        }
        lines.append(entries[i]);
    }
    if (m_hasSums) {
        QStringList sums = furniture(QString());
        for (int i = 0; i < sums.size(); ++i) {
            const Told told = m_columns[static_cast<std::size_t>(i)];
            const bool isSum = told == Told::Amount || told == Told::Commission || told == Told::Net;
            sums[i] = told == Told::Kind ? QStringLiteral("合计")
                      : isSum            ? QStringLiteral("123456.78")
                                         : QString();
        }
        lines.append(sums);
    }
    if (m_hasTexts) {
        lines.append(furniture(QStringLiteral("以上数据仅供参考，以本公司柜台为准")));
    }
    if (m_container == Container::Book) {
        writeBook(path, lines);
        return;
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(m_container == Container::Page ? page(lines) : text(lines));
}

QByteArray Broker::text(const QVector<QStringList> &lines) const
{
    const QString separator = m_container == Container::Tabs         ? QStringLiteral("\t")
                              : m_container == Container::Semicolons ? QStringLiteral(";")
                              : m_container == Container::Pipes      ? QStringLiteral("|")
                                                                     : QStringLiteral(",");
    QString text =
        m_hasMark && QByteArray(m_encoding).startsWith("UTF") ? QString(QChar::ByteOrderMark) : QString();
    for (const QStringList &cells : lines) {
        QStringList written = cells;
        if (m_container == Container::Formulas) {
            for (QString &cell : written) {
                cell = QStringLiteral("=\"%1\"").arg(cell);
            }
        }
        text += written.join(separator) + QStringLiteral("\r\n");
    }
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForName(m_encoding)->fromUnicode(text.constData(), text.size(), &state);
}

QByteArray Broker::page(const QVector<QStringList> &lines) const
{
    QByteArray page = "<html><head><meta charset=\"utf-8\"></head><body><table border=1>";
    for (const QStringList &cells : lines) {
        page += "<tr>";
        for (const QString &cell : cells) {
            page += "<td nowrap>" + cell.toHtmlEscaped().toUtf8() + "&nbsp;</td>";
        }
        page += "</tr>\n";
    }
    return page + "</table></body></html>";
}

/// Numbers are numbers there, days too, and texts are shared.
void Broker::writeBook(const QString &path, const QVector<QStringList> &lines) const
{
    QByteArray texts = "<sst>";
    QByteArray sheet = "<worksheet><sheetData>";
    int shared = 0;
    int row = 0;
    for (const QStringList &cells : lines) {
        sheet += "<row r=\"" + QByteArray::number(++row) + "\">";
        for (int i = 0; i < cells.size(); ++i) {
            bool isNumber = false;
            cells[i].toDouble(&isNumber);
            const QByteArray place = QByteArray(1, static_cast<char>('A' + i)) + QByteArray::number(row);
            if (isNumber && m_columns[static_cast<std::size_t>(i)] != Told::Code) {
                sheet += "<c r=\"" + place + "\"><v>" + cells[i].toUtf8() + "</v></c>";
            } else if (!cells[i].isEmpty()) {
                sheet += "<c r=\"" + place + "\" t=\"s\"><v>" + QByteArray::number(shared++) + "</v></c>";
                texts += "<si><t>" + cells[i].toHtmlEscaped().toUtf8() + "</t></si>";
            }
        }
        sheet += "</row>";
    }
    writeWorkbook(
        path, {{"xl/workbook.xml",
                "<workbook xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
                "<sheets><sheet name=\"a\" sheetId=\"1\" r:id=\"r1\"/></sheets></workbook>"},
               {"xl/_rels/workbook.xml.rels",
                "<Relationships><Relationship Id=\"r1\" Target=\"worksheets/sheet1.xml\"/></Relationships>"},
               {"xl/sharedStrings.xml", texts + "</sst>"},
               {"xl/worksheets/sheet1.xml", sheet + "</sheetData></worksheet>"}});
}

std::string Broker::described() const
{
    return m_names.join(QLatin1Char(',')).toStdString() + " signs " +
           std::to_string(static_cast<int>(m_signs)) + " fees " + std::to_string(static_cast<int>(m_fees)) +
           " container " + std::to_string(static_cast<int>(m_container)) + " " + m_encoding + " " +
           m_dateForm + (m_isNewestFirst ? " newest first" : "");
}

struct Reading
{
    std::optional<std::multiset<std::string>> books;
    std::vector<std::string> refusals;
};

Reading read(const QString &path)
{
    try {
        const StatementContents contents = readStatementFile(path, {});
        Reading reading{booksOf(contents), reasons(contents)};
        if (contents.badRowCount > 0) {
            reading.books.reset();
        }
        return reading;
    } catch (const Error &error) {
        return {std::nullopt, {error.what()}};
    }
}

} // namespace

TEST(InventiveBroker, IsReadAsWhatHappenedOrRefusedByName)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("statement"));
    const int count = qEnvironmentVariableIsSet("BROKERS") ? qEnvironmentVariableIntValue("BROKERS") : 60;
    const auto first = static_cast<unsigned>(qEnvironmentVariableIntValue("FIRST_BROKER"));
    int refused = 0;
    for (unsigned seed = first; seed < first + static_cast<unsigned>(count); ++seed) {
        Broker broker(seed);
        broker.write(path);
        const Reading reading = read(path);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + broker.described());
        if (reading.books) {
            EXPECT_EQ(*reading.books, broker.books());
        } else {
            ++refused;
            ASSERT_FALSE(reading.refusals.empty());
            if (qEnvironmentVariableIsSet("SHOW_REFUSALS")) {
                for (const std::string &reason : reading.refusals) {
                    ADD_FAILURE() << reason;
                }
            }
        }
    }
    RecordProperty("refused", refused);
    EXPECT_LE(refused, count / 10) << "of " << count;
}

} // namespace TradeModule
