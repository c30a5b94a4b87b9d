#include "terminal/data/BookedAction.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace Terminal {

namespace {

constexpr int longestWay = 60; ///< days from an ex-date until everything is booked

/// Ten-thousandths of a yuan or share for one: 100,000 of them are more than anybody pays.
constexpr qint64 mostPerShare = 1'000'000'000;

constexpr qint64 stepsOfMoney = YuanPerShare::stepsPerUnit / Trading::Money::stepsPerYuan;

QString text(const char *source)
{
    return QCoreApplication::translate("BookedAction", source);
}

/// For one share; nothing where that would have more than four decimals, or be more than anybody pays.
std::optional<qint64> tenThousandthsPerShare(qint64 tenThousandths, qint64 held)
{
    const bool isExact = held > 0 && tenThousandths % held == 0;
    const bool isPossible = isExact && std::abs(tenThousandths / held) <= mostPerShare;
    return isPossible ? std::optional(tenThousandths / held) : std::nullopt;
}

std::optional<CorporateAction> actionOf(const BookedAction &booked)
{
    const auto dividend = tenThousandthsPerShare(booked.cash.steps(), booked.held);
    const auto bonus = tenThousandthsPerShare(booked.bonus * Trading::Money::stepsPerYuan, booked.held);
    if (!dividend || !bonus || *bonus <= -Trading::Money::stepsPerYuan) {
        return std::nullopt;
    }
    CorporateAction action{booked.day};
    action.dividend = YuanPerShare::ofSteps(*dividend * stepsOfMoney);
    action.bonus = SharesPerShare::ofSteps(*bonus * stepsOfMoney);
    return action;
}

/// A broker books whole cents and whole shares.
bool agree(const CorporateAction &action, const BookedAction &booked)
{
    constexpr auto cent = YuanPerShare::stepsPerUnit / 100;
    constexpr long double share = SharesPerShare::stepsPerUnit;
    const auto held = static_cast<long double>(booked.held);
    const long double cash =
        action.dividend.steps() * held - static_cast<long double>(booked.cash.steps()) * stepsOfMoney;
    const long double bonus = action.bonus.steps() * held - booked.bonus * share;
    const bool isCashRight = booked.cash.isZero() || std::abs(cash) <= cent;
    return isCashRight && (booked.bonus == 0 || std::abs(bonus) <= share);
}

bool hasPartsOf(const CorporateAction &action, const BookedAction &booked)
{
    return (booked.cash.isZero() || !action.dividend.isZero()) &&
           (booked.bonus == 0 || !action.bonus.isZero());
}

QString receivedText(const BookedAction &booked)
{
    return text("%1: %2 yuan and %3 shares for %4")
        .arg(booked.day.dashedText(), booked.cash.text())
        .arg(booked.bonus)
        .arg(booked.held);
}

/// The last action of the file up to that day; null when there is none.
const CorporateAction *lastUpTo(Trading::TradingDate day, const CorporateActions &ofFile)
{
    const auto next = std::upper_bound(
        ofFile.begin(), ofFile.end(), day,
        [](Trading::TradingDate date, const CorporateAction &action) { return date < action.exDate; });
    return next == ofFile.begin() ? nullptr : &*std::prev(next);
}

void add(const BookedAction &booked, KnownActions *known)
{
    if (const auto action = actionOf(booked)) {
        known->actions.push_back(*action);
    } else {
        known->remarks.append(
            text("%1, as the statement has it, is no exact figure for one share; it is left out")
                .arg(receivedText(booked)));
    }
}

void take(const BookedAction &booked, const CorporateActions &ofFile, KnownActions *known)
{
    const CorporateAction *const told = lastUpTo(booked.day, ofFile);
    const bool isOnItsDay = told != nullptr && told->exDate == booked.day;
    const bool isLate = told != nullptr && booked.day <= told->exDate.plusDays(longestWay);
    if (isOnItsDay && !agree(*told, booked)) {
        known->remarks.append(
            text("%1, as the statement has it, is not what the file of actions says; the file holds")
                .arg(receivedText(booked)));
    } else if (!isOnItsDay && !(isLate && hasPartsOf(*told, booked))) {
        add(booked, known);
    }
}

} // namespace

KnownActions knownActions(CorporateActions ofFile, const BookedActions &booked)
{
    KnownActions known{ofFile, {}};
    for (const BookedAction &each : booked) {
        take(each, ofFile, &known);
    }
    std::sort(known.actions.begin(), known.actions.end(),
              [](const CorporateAction &a, const CorporateAction &b) { return a.exDate < b.exDate; });
    return known;
}

} // namespace Terminal
