// The built program on screens of other density: the same layout, with more detail.
#include "tests/terminal/support/DesktopProgramFixture.h"

#include <gmock/gmock.h>

#include <cmath>
#include <map>

namespace Terminal {
namespace {

/// How much of a picture is lost when it is made half as large and as large again, on average per pixel: much
/// of one whose texts and lines are drawn in its own pixels, little of one that was enlarged.
double detailOf(const QImage &picture)
{
    const QImage coarse = picture.scaled(picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .scaled(picture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double lost = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            lost += std::abs(qGray(picture.pixel(x, y)) - qGray(coarse.pixel(x, y)));
        }
    }
    return lost / picture.width() / picture.height();
}

/// Where things are, by what they are called; the state in the status bar comes when it comes.
using Layout = std::map<std::string, QRect>;

class ScalesProgram : public DesktopProgram
{
protected:
    /// Of a window of this size on a screen of this density.
    Layout layoutAt(double scale, const QSize &window)
    {
        m_environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(scale));
        makeDesktop(window * scale);
        openWindow(
            {QStringLiteral("--size"), QStringLiteral("%1x%2").arg(window.width()).arg(window.height())});
        m_desktop->press({QStringLiteral("F1"), QStringLiteral("F3")});
        Layout layout;
        EXPECT_TRUE(waitUntil([&] { return takeLayout({QPoint(), window}, &layout); }));
        m_picture = m_desktop->picture();
        closeWindow();
        return layout;
    }

    /// Of what is in the window; false while the list of orders does not have the keyboard.
    bool takeLayout(const QRect &window, Layout *layout)
    {
        layout->clear();
        bool isReady = false;
        for (const SpokenThing &thing : m_reader->things()) {
            isReady = isReady || (thing.hasKeyboard && thing.name == QLatin1String("Today's orders"));
            if (thing.isShown && window.contains(thing.place) && !thing.name.isEmpty() &&
                thing.role != QLatin1String("status bar")) {
                const QString name = QStringLiteral("%1 %2").arg(thing.role, thing.name);
                layout->emplace(name.toStdString(), thing.place);
            }
        }
        return isReady;
    }

    QImage m_picture;
};

/// How far the edges lie apart at most.
int distance(const QRect &one, const QRect &other)
{
    return std::max({std::abs(one.left() - other.left()), std::abs(one.top() - other.top()),
                     std::abs(one.right() - other.right()), std::abs(one.bottom() - other.bottom())});
}

std::string said(const QRect &place)
{
    return QStringLiteral("%1,%2 %3x%4")
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height())
        .toStdString();
}

TEST_F(ScalesProgram, LaysTheWindowOutAlikeWithinAPixel)
{
    constexpr size_t controls = 40; // that are there at the least
    const Layout plain = layoutAt(1, {1280, 720});
    for (const double scale : {1.25, 1.5, 2.0}) {
        size_t compared = 0;
        for (const auto &[name, place] : layoutAt(scale, {1280, 720})) {
            const auto known = plain.find(name);
            if (known != plain.end()) {
                EXPECT_LE(distance(known->second, place), 1)
                    << name << " at scale " << scale << " is at " << said(place) << ", else at "
                    << said(known->second);
                ++compared;
            }
        }
        EXPECT_GT(compared, controls);
    }
}

TEST_F(ScalesProgram, DrawsTextsAndLinesInThePixelsOfTheScreen)
{
    layoutAt(1, {1280, 720});
    const QImage enlarged =
        m_picture.scaled(m_picture.size() * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    layoutAt(2, {1280, 720});
    EXPECT_EQ(m_picture.size(), enlarged.size());
    EXPECT_GT(detailOf(m_picture), 2 * detailOf(enlarged));
}

/// More room is the chart's: what stands beside it stays as it is.
TEST_F(ScalesProgram, GivesTheRoomOfALargeScreenToTheChart)
{
    const Layout small = layoutAt(1, {1280, 720});
    const Layout large = layoutAt(1, {2560, 1440});
    const auto sizeIn = [](const Layout &layout, const char *name) { return layout.at(name).size(); };
    const char *const chart = "chart 贵州茅台 600519, Day";
    EXPECT_EQ(sizeIn(large, "spin box Price"), sizeIn(small, "spin box Price"));
    EXPECT_EQ(sizeIn(large, "check box Day"), sizeIn(small, "check box Day"));
    EXPECT_EQ(sizeIn(large, chart).width() - sizeIn(small, chart).width(), 1280);
    EXPECT_GT(sizeIn(large, chart).height(), 2 * sizeIn(small, chart).height());
}

} // namespace
} // namespace Terminal
