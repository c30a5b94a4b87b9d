// Rows of a list in aligned columns.
#include "terminal/ui/PopupRow.h"

#include <gmock/gmock.h>

#include <QFont>

namespace Terminal {
namespace {

TEST(PopupRowColumns, AreAsWideAsTheirWidestText)
{
    const QFontMetrics metrics{QFont()};
    const QVector<int> widths =
        columnWidths({QStringLiteral("a\tlonger text"), QStringLiteral("wide\tb\tc")}, metrics);
    EXPECT_EQ(widths, QVector<int>({metrics.horizontalAdvance(QStringLiteral("wide")),
                                    metrics.horizontalAdvance(QStringLiteral("longer text")),
                                    metrics.horizontalAdvance(QStringLiteral("c"))}));
}

} // namespace
} // namespace Terminal
