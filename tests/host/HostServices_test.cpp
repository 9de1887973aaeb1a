// The host's services to its controls: the virtual clock, popup menus,
// the clipboard, the beep, the system's text calls and the tooltip window.

#include <gtest/gtest.h>

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/host/Host.h"
#include "kestu/script/TraceWriter.h"
#include "support/ProbeControl.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

TEST(HostClock, TicksRunEveryControlsPeriodicCheckOnVirtualTime) {
  Host host;
  std::ostringstream out;
  TraceWriter trace(out);
  Form& form = host.CreateForm("Main");
  host.NewControl(form, ProbeControl::Info(), "a");
  host.NewControl(form, ProbeControl::Info(), "b");
  host.AddObserver(&trace);
  host.Tick(2);
  EXPECT_EQ(out.str(),
            "event a.Called(Procedure=\"PeriodicCheck\")\n"
            "event b.Called(Procedure=\"PeriodicCheck\")\n"
            "event a.Called(Procedure=\"PeriodicCheck\")\n"
            "event b.Called(Procedure=\"PeriodicCheck\")\n");
  EXPECT_EQ(host.ClockMilliseconds(), 500);
  host.RemoveObserver(&trace);
}

TEST(HostPopup, MenusAreShownThenAnsweredInOrderAndDismissedByDefault) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "call p.Popup\n"
                       "popup choose 3\n"
                       "popup dismiss\n"
                       "popup choose 0\n"
                       "call p.Popup\n"
                       "call p.Popup\n"
                       "call p.Popup\n"),
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=-1)\n"
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=3)\n"
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=-1)\n"
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=0)\n");
}

TEST(HostPopup, ADisabledItemOrASeparatorCannotBeChosen) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "popup choose 2\n"
                       "popup choose 1\n"
                       "popup choose 9\n"
                       "call p.Popup\n"
                       "call p.Popup\n"
                       "call p.Popup\n"),
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=-1)\n"
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=-1)\n"
            "popup p \"&One\" on, -, \"&Two\" off, \"&Three\" on\n"
            "event p.Menu(Index=-1)\n");
}

TEST(HostServices, ClipboardAndBeep) {
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "get Clipboard\n"
                       "clipboard \"abc\"\n"
                       "call p.CopyText\n"
                       "get Clipboard\n"
                       "clipboard 12.5\n"
                       "get Clipboard\n"
                       "call p.Ring\n"),
            "Clipboard = \"\"\n"
            "Clipboard = \"abc!\"\n"
            "Clipboard = \"12.5\"\n"
            "beep\n");
}

TEST(HostServices, SystemTextIsDrawnOnTheControlAndTraced) {
  Host host;
  std::ostringstream out;
  ScriptRunner runner(host, out, out);
  ASSERT_EQ(runner.RunText("new KestuProbe p 0 0 1200 480\n"
                           "trace draw p on\n"
                           "call p.DrawCaption\n"
                           "trace draw p off\n"
                           "call p.DrawCaption\n"),
            0);
  // Traced while on, and only then.
  EXPECT_TRUE(
      out.str().ends_with("event p.Called(Procedure=\"Show\")\n"
                          "draw p DrawText \"Probe\" (2,2,60,20) 256 0x80000012\n"
                          "draw p DrawFocusRect (1,1,61,21)\n"))
      << out.str();
  // The caption's glyphs are on the probe's raster, in its text colour.
  const Raster& raster = host.FindControl("p")->GetRaster();
  int dark = 0;
  for (int y = 2; y < 20; ++y) {
    for (int x = 2; x < 60; ++x) dark += raster.GetPixel(x, y) == 0 ? 1 : 0;
  }
  EXPECT_GT(dark, 10);
}

TEST(HostServices, NotificationsMarkTheFormModifiedUntilSaved) {
  const std::string file = ::testing::TempDir() + "modified.json";
  EXPECT_EQ(TraceAfter("new KestuProbe p\n",
                       "get Form1.Modified\n"
                       "set p.Caption \"x\"\n"
                       "get Form1.Modified\n"
                       "saveform " +
                           file +
                           "\n"
                           "get Form1.Modified\n"),
            "Form1.Modified = False\n"
            "notify p.Caption\n"
            "Form1.Modified = True\n"
            "event p.Called(Procedure=\"WriteProperties\")\n"
            "Form1.Modified = False\n");
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
