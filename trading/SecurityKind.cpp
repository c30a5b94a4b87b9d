#include "trading/SecurityKind.h"

#include "trading/CodeRanges.h"
#include "trading/TradingUnits.h"

#include <QRegularExpression>

namespace Trading {

namespace {

bool isUnderSpecialTreatment(const QString &name)
{
    static const QRegularExpression start(QStringLiteral("^S?\\*?ST"));
    return start.match(name).hasMatch();
}

bool isOfYoungBoards(const QString &fundName)
{
    return fundName.contains(QStringLiteral("创业板")) || fundName.contains(QStringLiteral("科创")) ||
           fundName.contains(QStringLiteral("双创"));
}

SecurityKind kindOfShare(const CodeRange &range, const QString &name)
{
    if (range.market == Market::Beijing) {
        return SecurityKind::BeijingShare;
    }
    switch (range.segment) {
    case Segment::Star:
        return SecurityKind::StarShare;
    case Segment::ChiNext:
        return SecurityKind::ChiNextShare;
    case Segment::ForeignCurrency:
        return SecurityKind::ForeignShare;
    case Segment::Usual:
    case Segment::YoungFunds:
    case Segment::Convertible:
        break;
    }
    return isUnderSpecialTreatment(name) ? SecurityKind::SpecialTreatment : SecurityKind::MainShare;
}

} // namespace

SecurityKind kindOf(const SecurityId &security, const QString &name)
{
    const std::optional<CodeRange> there = CodeRanges::on(security.market, security.code);
    const std::optional<CodeRange> range = there ? there : CodeRanges::of(security.code);
    if (!range) {
        return SecurityKind::MainShare;
    }
    switch (range->kind) {
    case SecurityClass::Share:
        return kindOfShare(*range, name);
    case SecurityClass::Fund:
        return range->segment == Segment::YoungFunds || isOfYoungBoards(name) ? SecurityKind::YoungBoardFund
                                                                              : SecurityKind::Fund;
    case SecurityClass::Bond:
        return range->segment == Segment::Convertible ? SecurityKind::ConvertibleBond : SecurityKind::Bond;
    case SecurityClass::Repo:
        return SecurityKind::Repo;
    case SecurityClass::Rights:
    case SecurityClass::Application:
    case SecurityClass::Other:
        return SecurityKind::Other;
    }
    return SecurityKind::Other;
}

ListingStage listingStageOf(const QString &name)
{
    static const QRegularExpression letterBeforeName(QStringLiteral("^([NC])\\p{Han}"));
    const QString letter = letterBeforeName.match(name).captured(1);
    if (letter.isEmpty()) {
        return ListingStage::Later;
    }
    return letter == QLatin1String("N") ? ListingStage::FirstDay : ListingStage::FirstDays;
}

qint64 lotOf(SecurityKind kind)
{
    switch (kind) {
    case SecurityKind::Bond:
    case SecurityKind::ConvertibleBond:
    case SecurityKind::Repo:
        return bondsOfLot;
    case SecurityKind::MainShare:
    case SecurityKind::SpecialTreatment:
    case SecurityKind::StarShare:
    case SecurityKind::ChiNextShare:
    case SecurityKind::BeijingShare:
    case SecurityKind::ForeignShare:
    case SecurityKind::Fund:
    case SecurityKind::YoungBoardFund:
    case SecurityKind::Other:
        break;
    }
    return sharesOfLot;
}

} // namespace Trading
