// The host's services to its controls that a script cannot see: the
// tooltip window's size, place and picture, and the system calls answered
// for the controls. The rest is shown by scripts/probe/, the tip's window
// by e2e/tip-window.sh.

#include <gtest/gtest.h>

#include <utility>

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/host/Host.h"
#include "support/ProbeControl.h"

namespace kestu {
namespace {

// The tip's size comes from the text as the host's default font measures
// it at the screen's pixels per inch (8.25 points at 96 DPI), with two
// pixels on each side: a frame of black and a pale yellow margin.
TEST(HostTip, SizedToItsTextWithAFramedMarginAndPlacedBelowTheCursor) {
  Host host;
  Form& form = host.CreateForm("Main");
  host.SetCursorPos(100, 200);
  host.Tip().Show("Save the file");
  EXPECT_EQ(host.ActiveForm(), &form) << "a tip takes no activation";
  const ToolWindow* tip = host.Tip().Window();
  ASSERT_NE(tip, nullptr);
  Raster measure(0, 0);
  const TextExtent text =
      measure.MeasureText(FontSpec{.name = "MS Sans Serif", .pixel_size = 11}, "Save the file");
  const PixelRect at = tip->ScreenRect();
  EXPECT_EQ(at.right - at.left, text.width + 4);
  EXPECT_EQ(at.bottom - at.top, text.height + 4);
  EXPECT_EQ(at.left, 100 + TipWindow::kCursorOffsetX);
  EXPECT_EQ(at.top, 200 + TipWindow::kCursorOffsetY);

  const Raster& picture = tip->Picture();
  ASSERT_EQ(picture.Width(), at.right - at.left);
  const int right = picture.Width() - 1, bottom = picture.Height() - 1;
  for (const auto& [x, y] : {std::pair{0, 0}, {right, 0}, {0, bottom}, {right, bottom}, {5, 0}}) {
    EXPECT_EQ(picture.GetPixel(x, y), 0x000000u) << x << "," << y;
  }
  EXPECT_EQ(picture.GetPixel(1, 1), 0xFFFFE1u);
  int ink = 0;
  for (int y = 2; y < bottom - 1; ++y) {
    for (int x = 2; x < right - 1; ++x) ink += picture.GetPixel(x, y) == 0 ? 1 : 0;
  }
  EXPECT_GT(ink, 20);
}

// Near the screen's edges the tip stays on the screen and never lands
// under the pointer, which would unload it at once.
TEST(HostTip, KeptOnTheScreenAndOffThePointerNearItsEdges) {
  const PixelRect screen{0, 0, 1024, 768};
  const auto place = [&](int x, int y) { return TipWindow::PlaceByCursor(x, y, 80, 17, screen); };
  EXPECT_EQ(place(1000, 100), (PixelRect{944, 120, 1024, 137}));
  EXPECT_EQ(place(100, 760), (PixelRect{104, 741, 184, 758}));
  EXPECT_EQ(place(1023, 767), (PixelRect{944, 748, 1024, 765}));
  // A screen smaller than the tip shows its top-left corner.
  EXPECT_EQ(TipWindow::PlaceByCursor(5, 5, 80, 17, PixelRect{0, 0, 50, 10}),
            (PixelRect{0, 0, 80, 17}));
  // A second display left of the first: its own edges count.
  EXPECT_EQ(TipWindow::PlaceByCursor(-10, 100, 80, 17, PixelRect{-1280, 0, 0, 1024}),
            (PixelRect{-80, 120, 0, 137}));

  Host host;
  host.SetScreenBounds({0, 0, 640, 480});
  host.SetCursorPos(630, 470);
  host.Tip().Show("Tip");
  const PixelRect at = host.Tip().Window()->ScreenRect();
  EXPECT_EQ(at.right, 640);
  EXPECT_EQ(at.bottom, 470 - TipWindow::kGapAboveCursor);
}

TEST(HostWindowSystem, TheHostAnswersTheSystemCallsAndGivesThemBackAtTheEnd) {
  EXPECT_EQ(InstalledWindowSystem(), nullptr);
  {
    Host host;
    EXPECT_NE(InstalledWindowSystem(), nullptr);
    Form& form = host.CreateForm("Main");
    HostedControl& p = host.NewControl(form, ProbeControl::Info(), "p");
    EXPECT_EQ(KestuControlsAPI::GetActiveWindow(), form.hWnd());
    EXPECT_NE(p.hWnd(), p.hDC());
    EXPECT_EQ(KestuControlsAPI::SetCapture(p.hWnd()), 0);
    EXPECT_EQ(host.CaptureHolder(), &p);
    EXPECT_EQ(KestuControlsAPI::EnableWindow(p.hWnd(), 0), 0);
    EXPECT_EQ(KestuControlsAPI::EnableWindow(p.hWnd(), 1), 1);
    // A window that does not exist answers nothing.
    RECT rect;
    EXPECT_EQ(KestuControlsAPI::GetWindowRect(9999, rect), 0);
    EXPECT_EQ(KestuControlsAPI::SetFocus(9999), 0);
  }
  EXPECT_EQ(InstalledWindowSystem(), nullptr);
}

}  // namespace
}  // namespace kestu
