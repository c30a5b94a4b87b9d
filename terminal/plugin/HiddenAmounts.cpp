#include "terminal/plugin/HiddenAmounts.h"

#include <QRegularExpression>
#include <QStringList>

namespace Terminal {

namespace {

/// The captions of amounts in texts of overlays; the figure follows after a colon.
QStringList amountCaptions()
{
    return {QStringLiteral(u"持仓成本"), QStringLiteral(u"成交量"),   QStringLiteral(u"成交数量"),
            QStringLiteral(u"委托数量"), QStringLiteral(u"可撤数量"), QStringLiteral(u"已撤数量"),
            QStringLiteral(u"成交金额")};
}

} // namespace

QString withoutAmounts(const QString &text)
{
    static const QRegularExpression amount(
        QStringLiteral("(%1):[^\\t\\n]*").arg(amountCaptions().join(QLatin1Char('|'))));
    return QString(text).replace(amount, QStringLiteral("\\1:***"));
}

} // namespace Terminal
