#include "terminal/plugin/OverlayKind.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QCoreApplication>

#include <algorithm>

namespace Terminal {

const std::vector<OverlayKind> &overlayKinds()
{
    using namespace TradeChart::CmdType;
    using Questions = std::vector<OverlayQuestion>;
    const Questions cost = {{HOLDERCOSTPRICE, AskedOn::EveryChart}};
    const Questions trades = {{HISTORYTRADE, AskedOn::DayChart}, {TODAYTRADE, AskedOn::DayChart}};
    const Questions orders = {{ENTRUSTTODAYTRADE, AskedOn::TodaysChart},
                              {ENTRUSTHISTORYTRADE, AskedOn::PastDaysChart}};
    const Questions combinedTrades = {{HISTORYTRADE, AskedOn::EveryChart}};
    constexpr auto factory = OverlayClass::Factory;
    constexpr auto combined = OverlayClass::Combined;
    static const std::vector<OverlayKind> kinds = {
        {"cost", factory, 0, QT_TRANSLATE_NOOP("OverlayKind", "Cost"), false, true, cost},
        {"trades", factory, 1, QT_TRANSLATE_NOOP("OverlayKind", "Trades"), true, false, trades},
        {"orders", factory, 2, QT_TRANSLATE_NOOP("OverlayKind", "Orders"), true, false, orders},
        {"combined-cost", combined, 0, QT_TRANSLATE_NOOP("OverlayKind", "Combined cost"), true, true, {}},
        {"combined-trades", combined, 1, QT_TRANSLATE_NOOP("OverlayKind", "Combined trades"), true, false,
         combinedTrades},
    };
    return kinds;
}

bool OverlayQuestion::isAsked(ChartPeriod period, bool isToday) const
{
    switch (charts) {
    case AskedOn::EveryChart:
        return true;
    case AskedOn::DayChart:
        return period == ChartPeriod::Day;
    case AskedOn::TodaysChart:
        return period == ChartPeriod::Minute && isToday;
    case AskedOn::PastDaysChart:
        return period == ChartPeriod::Minute && !isToday;
    }
    return false;
}

QStringList OverlayKind::commandsOn(ChartPeriod period, bool isToday) const
{
    QStringList commands;
    for (const OverlayQuestion &question : questions) {
        if (question.isAsked(period, isToday)) {
            commands.append(QLatin1String(question.command));
        }
    }
    return commands;
}

bool OverlayKind::asks(const char *command) const
{
    return std::any_of(questions.begin(), questions.end(), [command](const OverlayQuestion &question) {
        return qstrcmp(question.command, command) == 0;
    });
}

const OverlayKind *findOverlayKind(const QString &word)
{
    const auto &kinds = overlayKinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&word](const OverlayKind &candidate) {
        return word == QLatin1String(candidate.word);
    });
    return kind == kinds.end() ? nullptr : &*kind;
}

QStringList overlayWords()
{
    QStringList words;
    for (const OverlayKind &kind : overlayKinds()) {
        words.append(QLatin1String(kind.word));
    }
    return words;
}

QString overlayTitle(const OverlayKind &kind)
{
    return QCoreApplication::translate("OverlayKind", kind.title);
}

} // namespace Terminal
