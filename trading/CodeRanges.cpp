#include "trading/CodeRanges.h"

#include <cstring>

namespace Trading::CodeRanges {

namespace {

using Class = SecurityClass;

constexpr Market sh = Market::Shanghai;
constexpr Market sz = Market::Shenzhen;

using Source = RangeSource;

/// The usual market of a code that both have comes first, longer starts before what they start with.
constexpr CodeRange ranges[] = {
    {"6", sh, Class::Share, nullptr, Source::ShanghaiRules},
    {"688", sh, Class::Share, nullptr, Source::ShanghaiFirstDigit, Segment::Star},
    {"689", sh, Class::Share, nullptr, Source::ShanghaiFirstDigit, Segment::Star}, // depositary receipts
    {"900", sh, Class::Share, nullptr, Source::ShanghaiRules,
     Segment::ForeignCurrency}, // B shares, in dollars
    {"588", sh, Class::Fund, nullptr, Source::ShanghaiFirstDigit, Segment::YoungFunds},
    {"5", sh, Class::Fund, nullptr, Source::ShanghaiRules},
    {"00", sz, Class::Share, nullptr, Source::ShenzhenOverview},
    {"30", sz, Class::Share, nullptr, Source::ShenzhenOverview, Segment::ChiNext},
    {"20", sz, Class::Share, nullptr, Source::ShenzhenOverview,
     Segment::ForeignCurrency}, // B shares, in Hong Kong dollars; 204 is Shanghai's repo
    {"204", sh, Class::Repo, nullptr, Source::ShanghaiRules},
    {"201", sh, Class::Repo, nullptr, Source::ShanghaiRules},
    {"202", sh, Class::Repo, nullptr, Source::ShanghaiRules},
    {"203", sh, Class::Repo, nullptr, Source::ShanghaiRules},
    {"205", sh, Class::Repo, nullptr, Source::ShanghaiFirstDigit},
    {"206", sh, Class::Repo, nullptr, Source::ShanghaiFirstDigit},
    {"207", sh, Class::Repo, nullptr, Source::ShanghaiFirstDigit},
    {"131", sz, Class::Repo, nullptr, Source::ShenzhenOverview},
    {"15", sz, Class::Fund, nullptr, Source::ShenzhenOverview},
    {"16", sz, Class::Fund, nullptr, Source::ShenzhenOverview},
    {"18", sz, Class::Fund, nullptr, Source::ShenzhenOverview},
    {"188", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"185", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"155", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"110", sh, Class::Bond, nullptr, Source::ShanghaiRules, Segment::Convertible}, // convertibles
    {"111", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit, Segment::Convertible},
    {"113", sh, Class::Bond, nullptr, Source::ShanghaiRules, Segment::Convertible},
    {"118", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit, Segment::Convertible},
    {"132", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"122", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"124", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"136", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"143", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"175", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"009", sh, Class::Bond, nullptr, Source::ShanghaiRules}, // the state's
    {"010", sh, Class::Bond, nullptr, Source::ShanghaiRules},
    {"018", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"019", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"020", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"123", sz, Class::Bond, nullptr, Source::Usage, Segment::Convertible}, // convertibles
    {"125", sz, Class::Bond, nullptr, Source::Usage, Segment::Convertible},
    {"126", sz, Class::Bond, nullptr, Source::Usage, Segment::Convertible},
    {"127", sz, Class::Bond, nullptr, Source::Usage, Segment::Convertible},
    {"128", sz, Class::Bond, nullptr, Source::Usage, Segment::Convertible},
    {"10", sz, Class::Bond, nullptr, Source::ShenzhenOverview}, // the state's
    {"11", sz, Class::Bond, nullptr, Source::ShenzhenOverview},
    {"12", sz, Class::Bond, nullptr, Source::ShenzhenOverview},
    {"13", sz, Class::Bond, nullptr, Source::ShenzhenOverview},
    {"14", sz, Class::Bond, nullptr, Source::Usage},
    {"17", sz, Class::Bond, nullptr, Source::Usage},
    {"1", sh, Class::Bond, nullptr, Source::ShanghaiFirstDigit},
    {"700", sh, Class::Rights, "600", Source::ShanghaiRules},
    {"760", sh, Class::Rights, "601", Source::ShanghaiRules},
    {"730", sh, Class::Application, "600", Source::ShanghaiRules},
    {"780", sh, Class::Application, "601", Source::ShanghaiRules},
    {"732", sh, Class::Application, "603", Source::Usage},
    {"707", sh, Class::Application, "605", Source::Usage},
    {"787", sh, Class::Application, "688", Source::Usage},
    {"799", sh, Class::Other, nullptr,
     Source::ShanghaiRules}, // the word by which an account binds itself to a firm
    {"7", sh, Class::Application, nullptr, Source::ShanghaiFirstDigit},
    {"080", sz, Class::Rights, "000", Source::ShenzhenOverview},
    {"08", sz, Class::Rights, nullptr, Source::Usage},
    {"38", sz, Class::Rights, nullptr, Source::Usage},
    {"07", sz, Class::Application, nullptr, Source::Usage},
    {"36", sz, Class::Application, nullptr, Source::Usage},
    {"37", sz, Class::Application, nullptr, Source::Usage},
    {"03", sz, Class::Other, nullptr, Source::ShenzhenOverview}, // warrants
    {"920", Market::Beijing, Class::Share, nullptr, Source::BeijingNotice},
    {"43", Market::Beijing, Class::Share, nullptr, Source::BeijingNotice},
    {"82", Market::Beijing, Class::Share, nullptr, Source::Usage},
    {"83", Market::Beijing, Class::Share, nullptr, Source::BeijingNotice},
    {"87", Market::Beijing, Class::Share, nullptr, Source::BeijingNotice},
    {"88", Market::Beijing, Class::Share, nullptr, Source::Usage},
    {"400", Market::OverTheCounter, Class::Share, nullptr, Source::ShenzhenOverview},
    {"420", Market::OverTheCounter, Class::Share, nullptr, Source::ShenzhenOverview},
};

bool isLonger(const CodeRange &range, const std::optional<CodeRange> &than)
{
    return !than || std::strlen(range.start) > std::strlen(than->start);
}

/// The row with the longest start that a code has, of one market or of any.
std::optional<CodeRange> longest(const QString &code, std::optional<Market> market)
{
    std::optional<CodeRange> found;
    for (const CodeRange &range : ranges) {
        if ((!market || range.market == *market) && isLonger(range, found) &&
            code.startsWith(QLatin1String(range.start))) {
            found = range;
        }
    }
    return found;
}

} // namespace

std::optional<CodeRange> on(Market market, const QString &code)
{
    return longest(code, market);
}

std::optional<CodeRange> of(const QString &code)
{
    constexpr int codeDigits = 6;
    return code.size() == codeDigits ? longest(code, std::nullopt) : std::nullopt;
}

} // namespace Trading::CodeRanges
