#include "terminal/Appearance.h"

#include <QApplication>
#include <QFont>
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

} // namespace

void setAppearance(QApplication *application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application->setFont(terminalFont()); // NOLINT(readability-static-accessed-through-instance)
}

} // namespace Terminal
