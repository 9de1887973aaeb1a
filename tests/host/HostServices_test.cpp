// The host's services to its controls that a script cannot see: the
// pixels of the system's text calls, the tooltip window and the system
// calls answered for the controls. The rest is shown by scripts/probe/.

#include <gtest/gtest.h>

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/host/Host.h"
#include "support/ProbeControl.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

// The caption the probe draws through the system's text call lands on its
// own raster, in its text colour. What is traced is in scripts/probe/.
TEST(HostServices, SystemTextIsDrawnOnTheControl) {
  Host host;
  ASSERT_EQ(RunScriptOn(host, "new KestuProbe p 0 0 1200 480\ncall p.DrawCaption\n").status, 0);
  const Raster& raster = host.FindControl("p")->GetRaster();
  int dark = 0;
  for (int y = 2; y < 20; ++y) {
    for (int x = 2; x < 60; ++x) dark += raster.GetPixel(x, y) == 0 ? 1 : 0;
  }
  EXPECT_GT(dark, 10);
}

class TipLog : public HostObserver {
 public:
  void OnToolWindowShown(const ToolWindow& w) override { log += "show " + w.Text() + ";"; }
  void OnToolWindowHidden(const ToolWindow&) override { log += "hide;"; }
  std::string log;
};

TEST(HostToolWindow, ShownWithoutActivationMovedAndHiddenOnce) {
  Host host;
  TipLog tips;
  host.AddObserver(&tips);
  Form& form = host.CreateForm("Main");
  ToolWindow& tip = host.CreateToolWindow();
  tip.SetText("Hint");
  int overs = 0;
  tip.on_mouse_over = [&] { ++overs; };

  KestuControlsAPI::MoveWindow(tip.hWnd(), 10, 20, 40, 16, 0);
  KestuControlsAPI::ShowWindow(tip.hWnd(), SW_SHOWNOACTIVATE);
  EXPECT_EQ(host.ActiveForm(), &form);
  RECT rect;
  ASSERT_NE(KestuControlsAPI::GetWindowRect(tip.hWnd(), rect), 0);
  EXPECT_EQ(rect, (RECT{10, 20, 50, 36}));

  host.SetCursorPos(5, 5);
  EXPECT_EQ(overs, 0);
  host.SetCursorPos(12, 22);
  EXPECT_EQ(overs, 1);

  KestuControlsAPI::ShowWindow(tip.hWnd(), SW_HIDE);
  KestuControlsAPI::ShowWindow(tip.hWnd(), SW_HIDE);
  host.DestroyToolWindow(tip);
  EXPECT_EQ(tips.log, "show Hint;hide;");
  host.RemoveObserver(&tips);
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
