#include "tests/fuzz/Properties.h"

#include "terminal/data/ActionFile.h"
#include "terminal/data/BarSheet.h"
#include "terminal/data/OwnForm.h"
#include "terminal/data/SecurityList.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

using namespace Terminal;

namespace {

const QString path = QStringLiteral("bars.csv");

BarHints everyHint()
{
    BarHints hints;
    hints.security = SecurityCode{QStringLiteral("600519"), Trading::Market::Shanghai};
    hints.day = Trading::TradingDate::of(2024, 1, 2);
    hints.volume = VolumeUnit::Shares;
    return hints;
}

/// Also with numbers that are none, which compare with nothing.
bool isSound(const Bar &bar)
{
    const bool hasPrices = bar.low <= std::min(bar.open, bar.close) &&
                           std::max(bar.open, bar.close) <= bar.high && std::isfinite(bar.low) &&
                           std::isfinite(bar.high);
    const bool isDated = Trading::TradingDate::ofNumber(bar.date) && bar.minute >= 0 && bar.minute < 24 * 60;
    return hasPrices && isDated && std::isfinite(bar.volume) && bar.volume >= 0;
}

bool isBefore(const Bar &bar, const Bar &next)
{
    return bar.date != next.date ? bar.date < next.date : bar.minute < next.minute;
}

void checkOrder(const Bars &bars)
{
    const auto isNotBefore = [](const Bar &bar, const Bar &next) { return !isBefore(bar, next); };
    demand(std::adjacent_find(bars.begin(), bars.end(), isNotBefore) == bars.end(),
           "bars are not oldest first, each once");
}

bool isSamePrice(double one, double other)
{
    constexpr double step = 0.00005; // prices are kept with four decimals
    return std::abs(one - other) <= step;
}

bool isSame(const Bar &one, const Bar &other)
{
    return one.date == other.date && one.minute == other.minute && isSamePrice(one.open, other.open) &&
           isSamePrice(one.high, other.high) && isSamePrice(one.low, other.low) &&
           isSamePrice(one.close, other.close) && std::round(one.volume) == std::round(other.volume);
}

/// Days as the data folder would have them.
void checkOwnForm(const BarSheet &sheet)
{
    const auto again = readBarSheet(dailyText(sheet.bars), path, {});
    demand(bool(again), "the own form of the bars is refused: " + again.error().toStdString());
    demand(std::equal(sheet.bars.begin(), sheet.bars.end(), again.value().bars.begin(),
                      again.value().bars.end(), isSame),
           "the own form of the bars is read otherwise");
}

void checkSheet(const QByteArray &bytes, const BarHints &hints)
{
    const auto sheet = readBarSheet(bytes, path, hints);
    if (!sheet) {
        demand(sheet.error().contains(path),
               "a refusal does not name the file: " + sheet.error().toStdString());
        return;
    }
    const Bars &bars = sheet.value().bars;
    demand(std::all_of(bars.begin(), bars.end(), isSound), "a bar makes no sense");
    const bool isAboveZero =
        std::all_of(bars.begin(), bars.end(), [](const Bar &bar) { return bar.low > 0; });
    demand(isAboveZero || sheet.value().prices == PriceKind::Adjusted, "a raw price is not above zero");
    checkOrder(bars);
    if (!sheet.value().isOfMinutes && isAboveZero) {
        checkOwnForm(sheet.value());
    }
}

void checkActions(const QByteArray &bytes)
{
    const auto actions = readActions(bytes, path, {});
    demand(bool(actions) || actions.error().contains(path),
           "a refusal does not name the file: " + actions.error().toStdString());
}

QString written(const QTemporaryDir &folder, const QByteArray &bytes)
{
    QFile file(folder.filePath(QStringLiteral("securities.csv")));
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return file.fileName();
}

void checkSecurities(const QByteArray &bytes)
{
    static const QTemporaryDir folder;
    const QString file = written(folder, bytes);
    const auto listed = readSecurities(file);
    if (!listed) {
        demand(listed.error().contains(file), "a refusal does not name the file");
        return;
    }
    for (const Security &security : listed.value()) {
        demand(findSecurity(listed.value(), security.code) != nullptr, "a listed security is not found");
    }
}

} // namespace

void checkBars(const QByteArray &bytes)
{
    checkSheet(bytes, {});
    checkSheet(bytes, everyHint());
    checkActions(bytes);
    if (bytes.startsWith("code")) {
        checkSecurities(bytes);
    }
}
