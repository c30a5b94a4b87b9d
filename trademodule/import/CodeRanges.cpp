#include "trademodule/import/CodeRanges.h"

#include <cstring>

namespace TradeModule::CodeRanges {

namespace {

using Class = SecurityClass;

constexpr Market sh = Market::Shanghai;
constexpr Market sz = Market::Shenzhen;

/// From the exchanges' own plans: 上海证券交易所证券代码分配规则, 深圳证券交易所证券代码编码方案,
/// 北京证券交易所's codes (920, and those of its companies' time on the third board). The usual market of a
/// code that both have comes first, longer starts before what they start with.
constexpr CodeRange ranges[] = {
    {"6", sh, Class::Share, nullptr},
    {"900", sh, Class::Share, nullptr}, // B shares, in dollars
    {"5", sh, Class::Fund, nullptr},
    {"00", sz, Class::Share, nullptr},
    {"30", sz, Class::Share, nullptr},
    {"20", sz, Class::Share, nullptr}, // B shares, in Hong Kong dollars; 204 is Shanghai's repo
    {"204", sh, Class::Repo, nullptr},
    {"201", sh, Class::Repo, nullptr},
    {"202", sh, Class::Repo, nullptr},
    {"203", sh, Class::Repo, nullptr},
    {"205", sh, Class::Repo, nullptr},
    {"206", sh, Class::Repo, nullptr},
    {"207", sh, Class::Repo, nullptr},
    {"131", sz, Class::Repo, nullptr},
    {"15", sz, Class::Fund, nullptr},
    {"16", sz, Class::Fund, nullptr},
    {"18", sz, Class::Fund, nullptr},
    {"188", sh, Class::Bond, nullptr},
    {"185", sh, Class::Bond, nullptr},
    {"155", sh, Class::Bond, nullptr},
    {"110", sh, Class::Bond, nullptr}, // convertibles
    {"111", sh, Class::Bond, nullptr},
    {"113", sh, Class::Bond, nullptr},
    {"118", sh, Class::Bond, nullptr},
    {"132", sh, Class::Bond, nullptr},
    {"122", sh, Class::Bond, nullptr},
    {"124", sh, Class::Bond, nullptr},
    {"136", sh, Class::Bond, nullptr},
    {"143", sh, Class::Bond, nullptr},
    {"175", sh, Class::Bond, nullptr},
    {"009", sh, Class::Bond, nullptr}, // the state's
    {"010", sh, Class::Bond, nullptr},
    {"018", sh, Class::Bond, nullptr},
    {"019", sh, Class::Bond, nullptr},
    {"020", sh, Class::Bond, nullptr},
    {"123", sz, Class::Bond, nullptr}, // convertibles
    {"125", sz, Class::Bond, nullptr},
    {"126", sz, Class::Bond, nullptr},
    {"127", sz, Class::Bond, nullptr},
    {"128", sz, Class::Bond, nullptr},
    {"10", sz, Class::Bond, nullptr}, // the state's
    {"11", sz, Class::Bond, nullptr},
    {"12", sz, Class::Bond, nullptr},
    {"13", sz, Class::Bond, nullptr},
    {"14", sz, Class::Bond, nullptr},
    {"17", sz, Class::Bond, nullptr},
    {"1", sh, Class::Bond, nullptr},
    {"700", sh, Class::Rights, "600"},
    {"760", sh, Class::Rights, "601"},
    {"730", sh, Class::Application, "600"},
    {"780", sh, Class::Application, "601"},
    {"732", sh, Class::Application, "603"},
    {"707", sh, Class::Application, "605"},
    {"787", sh, Class::Application, "688"},
    {"799", sh, Class::Other, nullptr}, // the word by which an account binds itself to a firm
    {"7", sh, Class::Application, nullptr},
    {"080", sz, Class::Rights, "000"},
    {"08", sz, Class::Rights, nullptr},
    {"38", sz, Class::Rights, nullptr},
    {"07", sz, Class::Application, nullptr},
    {"36", sz, Class::Application, nullptr},
    {"37", sz, Class::Application, nullptr},
    {"03", sz, Class::Other, nullptr}, // warrants
    {"920", Market::Beijing, Class::Share, nullptr},
    {"43", Market::Beijing, Class::Share, nullptr},
    {"82", Market::Beijing, Class::Share, nullptr},
    {"83", Market::Beijing, Class::Share, nullptr},
    {"87", Market::Beijing, Class::Share, nullptr},
    {"88", Market::Beijing, Class::Share, nullptr},
    {"400", Market::OverTheCounter, Class::Share, nullptr},
    {"420", Market::OverTheCounter, Class::Share, nullptr},
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

} // namespace TradeModule::CodeRanges
