// Holder: the editor's window in the host's, and the negotiation of its size with the host.

#include "EditorHost.h"

#include "editor/AudioPluginEditor.h"
#include "host/Holder.h"
#include "native/window/WindowFlags.h"

using namespace q1framework;
using Pattern = EditorHost::Pattern;

namespace
{
// The size-window calls the host heard, as (width, height).
std::vector<Point> sizeRequests(EditorHost& host)
{
    std::vector<Point> sizes;
    for (const EditorHost::Call& call : host.takeCalls())
        if (call.opcode == audioMasterSizeWindow)
            sizes.push_back(Point(call.index, static_cast<int>(call.value)));
    return sizes;
}
}  // namespace

TEST(Holder, IsAHostedEditorWindowWithTheDescriptionsStyle)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    // 264 (GL, high resolution) and the hosted-editor bit.
    EXPECT_EQ(host.getHolder()->getFlags() & (264 | WindowFlags::hostedEditor), 264 | WindowFlags::hostedEditor);
    EXPECT_EQ(host.getHolder()->getKind(), 2);
    EXPECT_TRUE(host.getHolder()->isOverlayDrawing());
}

TEST(Holder, ANewSizeIsAskedOfTheHostWhichResizesItsWindow)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.takeCalls();
    host.getHolder()->getEditor()->resize(900, 210, true);
    EXPECT_EQ(sizeRequests(host), (std::vector<Point>{Point(900, 210)}));
    EXPECT_EQ(host.getRect(), Point(900, 210));
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()), Rectangle(0, 0, 900, 210));
    EXPECT_EQ(host.getGeometry(host.getParentWindow()).getSize(), Point(900, 210));
}

TEST(Holder, AHostThatDoesNotResizeHasItsWindowGrownByTheEditor)
{
    EditorHost host;
    host.acceptsSizeWindow = false;
    ASSERT_TRUE(host.open(Pattern::ardourLike, Rectangle(0, 0, 800, 200)));
    host.getHolder()->getEditor()->resize(900, 210, true);
    // The parent grows by the editor's growth, 150 by 35.
    EXPECT_EQ(host.getGeometry(host.getParentWindow()).getSize(), Point(950, 235));
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(900, 210));
}

TEST(Holder, TheSizeItHasAlreadyMakesNoHostCall)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.takeCalls();
    host.getHolder()->getEditor()->resize(750, 175, true);
    EXPECT_TRUE(sizeRequests(host).empty());
}

TEST(Holder, ADragInTheResizeZoneResizesBetween300And1499)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle(2);
    host.takeCalls();
    TestDisplay& display = host.getDisplay();
    // Picture x 1420 at half size, in the resize zone.
    display.movePointer(710, 100);
    host.idle();
    display.button(1, true);
    host.idle();
    display.movePointerBy(-600, 0);
    host.idle();
    EXPECT_EQ(host.getRect(), Point(300, 70));
    display.movePointerBy(2000, 0);
    host.idle();
    display.button(1, false);
    host.idle();
    EXPECT_EQ(host.getRect(), Point(1499, 349));
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(1499, 349));
    const std::vector<Point> sizes = sizeRequests(host);
    ASSERT_EQ(sizes.size(), 2u);
    EXPECT_EQ(sizes.front(), Point(300, 70));
    EXPECT_EQ(sizes.back(), Point(1499, 349));
}
