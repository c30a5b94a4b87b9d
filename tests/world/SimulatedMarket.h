#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/data/SecurityList.h"
#include "tests/world/Dice.h"
#include "tests/world/SimulatedTime.h"
#include "trading/Quote.h"

#include <map>
#include <tuple>
#include <vector>

namespace World {

/// The publisher of a market's quotes, as a program of a world. A minute is told once or bit by bit, at times
/// twice, and at times late.
class SimulatedMarket
{
public:
    SimulatedMarket(SimulatedTime *time, Dice *dice);

    /// What is traded there.
    static const std::vector<Terminal::Security> &securities();

    /// Tells one more quote of a security.
    void quote(std::size_t place);
    /// The same quote once more, as a feed that is not sure that it was heard.
    void repeat(std::size_t place);
    /// Begins another day.
    void beginDay();

    /// The last price, yuan.
    double price(std::size_t place) const { return m_books.at(place).price.yuan(); }
    /// The shares that were told of a minute, as far as was told.
    qint64 volume(const Trading::SecurityId &security, Trading::TradingDate date,
                  Trading::ClockTime time) const;

private:
    struct Book
    {
        Trading::Money price;
        Trading::Money close; ///< of the day before
        int minute = 0;       ///< of the day, the first is 0
        std::optional<Trading::Quote> told{};
    };

    Trading::Quote next(std::size_t place);
    void publish(const Trading::Quote &quote);

    SimulatedTime *const m_time;
    Dice *const m_dice;
    const Process m_process;
    LocalCommunication::EndPoint m_endPoint{nullptr};
    std::vector<Book> m_books;
    std::map<std::tuple<QString, int, QString>, qint64> m_volumes; // by code, day and time
};

} // namespace World
