#include "terminal/Appearance.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStyleFactory>

namespace Terminal {

namespace {

constexpr int fontPixels = 13;

QFont terminalFont()
{
    QFont font;
    font.setFamilies({QStringLiteral("Noto Sans CJK SC"), QStringLiteral("PingFang SC"),
                      QStringLiteral("Source Han Sans SC"), QStringLiteral("Microsoft YaHei"),
                      QStringLiteral("sans-serif")});
    font.setPixelSize(fontPixels);
    return font;
}

/// Two candles on the chart's ground, as in tradeterminal.svg, for desktops that do not know that file.
QPixmap iconPicture(int side)
{
    constexpr double drawnSide = 64;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / drawnSide, side / drawnSide);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x131722));
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);
    const auto candle = [&painter](double x, const QRectF &wick, const QRectF &body, QRgb colour) {
        painter.setBrush(QColor(colour));
        painter.drawRect(wick.translated(x, 0));
        painter.drawRoundedRect(body.translated(x, 0), 2, 2);
    };
    candle(20, {-1.5, 12, 3, 38}, {-7, 20, 14, 22}, 0xe2433b);
    candle(44, {-1.5, 16, 3, 38}, {-7, 26, 14, 20}, 0x1aa178);
    return picture;
}

QIcon terminalIcon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(iconPicture(side));
    }
    return icon;
}

} // namespace

void useDensityOfScreen()
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    if (qEnvironmentVariable("QT_QPA_PLATFORM").startsWith(QLatin1String("offscreen"))) {
        return; // it tells the density of no screen: a picture has as many pixels as it is asked for
    }
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void setAppearance(QApplication *application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application->setFont(terminalFont()); // NOLINT(readability-static-accessed-through-instance)
    QApplication::setWindowIcon(terminalIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral("tradeterminal"));
}

} // namespace Terminal
