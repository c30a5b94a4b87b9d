#include "tests/world/SimulatedMarket.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace World {

using namespace Trading;

namespace {

constexpr Money tick = Money::ofCents(1);
constexpr int minutesOfMorning = 60; // as many as charts of a world show

ClockTime endOfMinute(int minute)
{
    const int end = 9 * 60 + 30 + minute + 1;
    return ClockTime::of(end / 60, end % 60).value();
}

QByteArray jsonOf(const Quote &quote)
{
    const auto key = [](const char *name) { return QLatin1String(name); };
    const QJsonObject object{
        {key(TradeChart::TradeKeyFields::STKCODE), quote.security.code},
        {key(TradeChart::TradeKeyFields::MARKET), marketLetters(quote.security.market)},
        {key(QuoteFields::DATE), quote.date.text()},
        {key(QuoteFields::TIME), quote.time.text()},
        {key(QuoteFields::OPEN), quote.open.text()},
        {key(QuoteFields::HIGH), quote.high.text()},
        {key(QuoteFields::LOW), quote.low.text()},
        {key(QuoteFields::CLOSE), quote.close.text()},
        {key(QuoteFields::VOLUME), QString::number(quote.volume)},
        {key(QuoteFields::PRECLOSE), quote.previousClose.text()},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

const std::vector<Terminal::Security> &SimulatedMarket::securities()
{
    static const std::vector<Terminal::Security> both = {
        {QStringLiteral("600536"), Trading::Market::Shanghai, QString()},
        {QStringLiteral("000001"), Trading::Market::Shenzhen, QString()}};
    return both;
}

SimulatedMarket::SimulatedMarket(SimulatedTime *time, Dice *dice)
    : m_time(time),
      m_dice(dice),
      m_process(time->newProcess(false))
{
    m_books = {{Money::ofCents(1000), Money::ofCents(1000)}, {Money::ofCents(2000), Money::ofCents(2000)}};
    m_time->as(m_process, [this] { m_endPoint.connect(QStringLiteral("/world")); });
}

void SimulatedMarket::beginDay()
{
    for (Book &book : m_books) {
        book = {book.price, book.price};
    }
}

void SimulatedMarket::quote(std::size_t place)
{
    const Quote quote = next(place);
    m_books[place].told = quote;
    publish(quote);
}

void SimulatedMarket::repeat(std::size_t place)
{
    if (m_books[place].told) {
        publish(*m_books[place].told);
    }
}

/// More of the minute that was told last, or the next one.
Quote SimulatedMarket::next(std::size_t place)
{
    Book &book = m_books[place];
    const bool goesOn = book.told && m_dice->happens(30);
    if (book.told && !goesOn) {
        book.minute = std::min(book.minute + 1, minutesOfMorning - 1);
    }
    const auto steps = [this](std::int64_t most) {
        return Money::ofSteps(m_dice->between(-most, most) * tick.steps());
    };
    const Money open = book.price;
    book.price =
        std::clamp(book.price + steps(8), book.close - Money::ofCents(80), book.close + Money::ofCents(80));
    Quote quote{securities()[place].id(), TradingDate::today(), endOfMinute(book.minute)};
    quote.open = goesOn ? book.told->open : open;
    quote.close = book.price;
    quote.high = std::max({quote.open, quote.close, goesOn ? book.told->high : open});
    quote.low = std::min({quote.open, quote.close, goesOn ? book.told->low : open});
    quote.volume = m_dice->between(1, 200) * 100 + (goesOn ? book.told->volume : 0);
    quote.previousClose = book.close;
    return quote;
}

void SimulatedMarket::publish(const Quote &quote)
{
    qint64 &told = m_volumes[{quote.security.code, quote.date.number(), quote.time.text()}];
    told = std::max(told, quote.volume);
    m_time->as(m_process, [&] {
        if (m_endPoint.isConnected()) {
            m_endPoint.sendMessage(Channel::MARKET, Topic::QUOTE, jsonOf(quote));
        }
    });
}

qint64 SimulatedMarket::volume(const SecurityId &security, TradingDate date, ClockTime time) const
{
    const auto told = m_volumes.find({security.code, date.number(), time.text()});
    return told == m_volumes.end() ? 0 : told->second;
}

} // namespace World
