#include "terminal/data/FileNameWords.h"

#include "terminal/data/SecurityCode.h"
#include "trading/CodeRanges.h"
#include "trading/TradingDate.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace Terminal {

QString codeInName(const QString &path)
{
    static const QRegularExpression code(
        QStringLiteral(
            "(?<![0-9])(?:(sh|sz)[._]?)?([0-9]{6})(?![0-9])(?:[._](sh|sz|ss|xshg|xshe)(?![a-z]))?"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = code.match(QFileInfo(path).fileName());
    if (!match.hasMatch()) {
        return {};
    }
    const QString digits = match.captured(2);
    const QString market = (match.captured(1) + match.captured(3)).toLower();
    const auto usual = Trading::CodeRanges::of(digits);
    const auto named = SecurityCode::of(digits + QLatin1Char('.') + market);
    const auto found = !market.isEmpty() ? named
                       : usual           ? std::optional(SecurityCode{digits, usual->market})
                                         : std::nullopt;
    return found && Trading::isOnCharts(*found->market) ? found->text() : QString();
}

QString dayInName(const QString &path)
{
    static const QRegularExpression day(
        QStringLiteral("(?<![0-9])((?:19|20)[0-9]{2})(-?)([0-9]{2})\\2([0-9]{2})(?![0-9])"));
    QString found;
    for (auto matches = day.globalMatch(QFileInfo(path).fileName()); matches.hasNext();) {
        const auto match = matches.next();
        const QString digits = match.captured(1) + match.captured(3) + match.captured(4);
        const bool isAnother = !found.isEmpty() && digits != found;
        if (isAnother) {
            return {};
        }
        found = Trading::TradingDate::ofText(digits) ? digits : found;
    }
    return found;
}

} // namespace Terminal
