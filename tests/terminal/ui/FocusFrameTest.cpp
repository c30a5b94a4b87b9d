#include "terminal/ui/FocusFrame.h"
#include "tests/terminal/support/OverlayWindow.h"

namespace Terminal {
namespace {

class FocusFrameTest : public OverlayWindow
{
};

TEST_F(FocusFrameTest, LiesAroundTheChartWhileItHasTheKeyboard)
{
    show({});
    activateWindow();
    chart()->setFocus();
    const auto *const frame = m_window->findChild<FocusFrame *>();
    ASSERT_NE(frame, nullptr);
    EXPECT_TRUE(frame->isVisible());
    EXPECT_EQ(frame->geometry(), chart()->geometry());
    chart()->clearFocus();
    EXPECT_FALSE(frame->isVisible());
}

} // namespace
} // namespace Terminal
