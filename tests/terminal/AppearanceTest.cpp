// The fonts of the terminal.
#include "terminal/Appearance.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

namespace Terminal {
namespace {

TEST(Appearance, HasFontsWithTheCharactersOfTheTexts)
{
    const QFontMetrics metrics(QApplication::font());
    const auto picture = [](QChar character) {
        QImage image(24, 24, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QFont font = QApplication::font();
        font.setPixelSize(18);
        painter.setFont(font);
        painter.drawText(image.rect(), Qt::AlignCenter, character);
        return image;
    };
    const QString text = QStringLiteral(u"持仓成本买入卖出撤单贵州茅台");
    for (int i = 0; i < text.size(); ++i) {
        EXPECT_TRUE(metrics.inFont(text.at(i))) << text.at(i).unicode();
        EXPECT_NE(picture(text.at(i)), picture(QChar(0xFFFE))); // no box in its place
        for (int j = 0; j < i; ++j) {
            EXPECT_TRUE(text.at(i) == text.at(j) || picture(text.at(i)) != picture(text.at(j)));
        }
    }
}

} // namespace
} // namespace Terminal
