#pragma once

#include <vector>

namespace HostCheck {

/// What a terminal must not do, in the order of the guide.
enum class Rule {
    LibraryMissing,
    NoApplication,
    NoEventLoop,
    FactoryOffThread,
    ConfigurationUnreadable,
    TypeUnknown,
    RefreshUnusable,
    KeyUnknown,
    ScreenIdMissing,
    ScreenIdUnreadable,
    ScreenIdReserved,
    ScreenIdChanged,
    ScreenIdShared,
    OverlayDoubled,
    OffThread,
    NotCalculated,
    NeverPainted,
    PaintedThoughRefused,
    CallDoubled,
    ScaleNotAsked,
    ScaleOutOfOrder,
    ScaleHalfAsked,
    UpdateIgnored,
    UpdateNotPainted,
    BarsMissing,
    CountNegative,
    BarsOutOfOrder,
    BarTime,
    BarsOfTwoDays,
    PeriodWrong,
    BarPrices,
    BarsDiffer,
    RangeChanged,
    IdentityZero,
    IdentitySame,
    IdentityChanged,
    CodeUnreadable,
    MarketUnknown,
    NameUnreadable,
    PainterMissing,
    ArrayReadBeyond,
    PixelNotFinite,
    PressWithoutHit,
    CallInsideAnswer,
    EndInsideAnswer,
    EventsInsideAnswer,
    ModeUnknown,
    ModeWrong,
    PriceRangeNotFilled,
    PriceRangeUpsideDown,
    PriceRangeOffBars,
    PriceRangeNeverGiven,
    MarkerSize,
    RowNotInList,
    AnsweredForUser,
    BarPixelNotFinite,
    BarPixelsNotRising,
    BarNotUnderPixel,
    PricePixelNotFinite,
    PricePixelsUpsideDown,
    MappingUnsteady,
    BarNotCopied,
    BarCopyWrong,
    CombinedAxisShared,
    CombinedSecurityChanged,
    CombinedMemory,
    NotStopped,
    StoppedTwice,
    UsedAfterStop,
    UsedAfterEnd,
    EndedTwice,
    NotEnded,
    AxisGone,
};

struct RuleText
{
    Rule rule;
    const char *id;      ///< in reports and in the guide
    const char *wrong;   ///< what the terminal does
    const char *remedy;  ///< what to do instead
    const char *section; ///< the heading in docs/host-interface.md that tells it
};

/// One for each rule, in their order.
const std::vector<RuleText> &ruleTexts();

const RuleText &textOf(Rule rule);

} // namespace HostCheck
