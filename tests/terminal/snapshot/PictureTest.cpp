// Pictures of a window in a file.
#include "terminal/snapshot/Picture.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

namespace Terminal {
namespace {

class PictureOfAWindow : public OverlayWindow
{
};

TEST_F(PictureOfAWindow, WritesItsPictureInTheSizeItHas)
{
    show({QStringLiteral("cost")});
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("a.png"));
    EXPECT_EQ(writePicture(m_window.get(), path), QString());
    EXPECT_EQ(QImage(path).size(), QSize(1280, 720));
}

TEST_F(PictureOfAWindow, SaysWhyAPictureCannotBeWritten)
{
    show({});
    const QString path = QStringLiteral("/nowhere/at/all/a.png");
    EXPECT_TRUE(writePicture(m_window.get(), path).startsWith(path));
}

} // namespace
} // namespace Terminal
