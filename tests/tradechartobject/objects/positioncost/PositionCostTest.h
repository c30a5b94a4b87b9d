#pragma once

#include "tests/support/OverlayTest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/PositionCost.h"

#include <optional>
#include <vector>

/// The cost line on daily bars.
class PositionCostTest : public OverlayTest<PositionCost>
{
protected:
    const std::vector<Korvane::AnalyData> threeDays = {makeDayBar(20240102), makeDayBar(20240103),
                                                       makeDayBar(20240104)};

    static QJsonObject answer(const QJsonObject &data, const QString &cmd = QStringLiteral("HolderCostPrice"))
    {
        return {{QStringLiteral("cmd"), cmd}, {QStringLiteral("data"), data}};
    }

    static QJsonObject holding(const char *code, const char *market, const QJsonValue &costPrice)
    {
        return {{QStringLiteral("stkcode"), QLatin1String(code)},
                {QStringLiteral("market"), QLatin1String(market)},
                {QStringLiteral("costprice"), costPrice}};
    }

    static void hearCost(const QString &text)
    {
        hear(TradeChart::Topic::TRADEQUERY, answer(holding("600536", "1", text)));
    }

    static void hearThatNothingIsHeld()
    {
        hear(TradeChart::Topic::TRADEQUERY, answer({{QStringLiteral("stkcode"), QStringLiteral("600536")},
                                                    {QStringLiteral("market"), QStringLiteral("1")}}));
    }

    /// The cost that is drawn now; none when no line is.
    std::optional<double> drawnCost()
    {
        paint();
        for (const FakePainter::Call &call : painter.calls) {
            if (call.kind == FakePainter::Call::LineSeries && !call.values.empty()) {
                return call.values.front();
            }
        }
        return std::nullopt;
    }

    /// An object that shows 600536 on three daily bars and has asked for its cost.
    void createOnShanghai()
    {
        create();
        calc(shanghai, threeDays, Korvane::DayPeriod);
    }
};
