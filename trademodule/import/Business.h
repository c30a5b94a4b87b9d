#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace TradeModule {

/// What an entry of a statement does to shares and cash.
enum class Effect {
    Buy,
    Sell,
    Nothing,     ///< changes neither
    MoneyIn,     ///< cash only; the direction counts where the statement has no net amount with a sign
    MoneyOut,    ///< the same
    Money,       ///< the same, but only a sign can tell the direction
    Split,       ///< shares that come or vanish for nothing
    SharesIn,    ///< shares that come in at what they cost
    SharesOut,   ///< shares that leave with their part of the cost
    Shares,      ///< one of both; the entry's signs tell
    Conversion,  ///< the same; without a sign a bond leaves and what it becomes comes in
    Payment,     ///< money for an allotment, whose shares may have an entry of their own
    Entry,       ///< the shares of an allotment
    Application, ///< money for a lot that may not be drawn, or back; of a fund: shares at their price
    Redemption,  ///< shares back for money; money alone where no quantity stands
    Repo,        ///< money lent or borrowed against bonds
    ShortSale,   ///< sold without being held, or bought back: kept out of the books on both sides
};

/// A kind of business.
struct BusinessKind
{
    const char *name; ///< English, such as "dividends"; to be translated for people
    Effect effect;
};

/// What the words of a statement's entry say.
namespace Business {

/// The word alone: a security's name after a colon or in brackets is not part of it, but that something was
/// taken back is: 买入(撤单).
QString plainWord(const QString &cell);

/// The word of what is taken back, where a word says that an earlier entry is (证券买入冲销, 红冲, 撤销): it
/// may be empty. Else the word itself.
QString withoutReversal(const QString &word);

/// What a word says; nothing for an unknown one.
std::optional<BusinessKind> of(const QString &word);

/// The same for a column that holds nothing but the side, where numbers may stand for words.
std::optional<BusinessKind> ofSide(const QString &word);

/// Money that came or went without a word that is known.
BusinessKind otherMoney();
/// A purchase or sale of the securities that only repo has.
BusinessKind repo();

/// True for the state of an order that was not dealt, or was taken back as a whole: 已撤, 废单, 未成交.
bool isUndealt(const QString &state);
/// True for a flag that says yes: 是, Y, 1.
bool isYes(const QString &flag);

/// True for a footer's word: a sum, a page's end.
bool isTotal(const QString &word);
/// True when a word speaks of funds that are bought from their manager, not on an exchange.
bool isOfFunds(const QString &word);
/// True when a word speaks of the shares that are given for a fund's units, or come for them.
bool isOfFundShares(const QString &word);
/// True when a word speaks of Hong Kong through the connect.
bool isOfHongKong(const QString &word);

/// The words that a profile may use for others, one for each effect.
QStringList profileWords();

} // namespace Business

} // namespace TradeModule
