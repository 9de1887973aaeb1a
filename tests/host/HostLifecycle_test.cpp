// The order in which the host calls a control's lifecycle procedures, and
// what happens when one of them fails.

#include <gtest/gtest.h>

#include "kestu/host/Host.h"
#include "support/ProbeControl.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

// Records the procedures of every probe, whoever drives the host.
class CallLog : public HostObserver {
 public:
  void OnEvent(HostedControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override {
    if (event.name != "Called") return;
    calls += control.Name() + ":" + arguments[0].ref.Get().ToString() + ";";
  }
  std::string calls;
};

TEST(HostLifecycle, NewControlInitialisesThenResizesThenShows) {
  const ScriptResult r = RunScript("new KestuProbe pr 120 240 1200 480\n");
  EXPECT_EQ(r.out,
            "event pr.Called(Procedure=\"Initialize\")\n"
            "event pr.Called(Procedure=\"InitProperties\")\n"
            "event pr.Called(Procedure=\"Resize 1200x480\")\n"
            "event pr.Called(Procedure=\"Show\")\n");
  EXPECT_EQ(r.status, 0);
}

TEST(HostLifecycle, LoadedControlReadsItsBagInsteadOfInitProperties) {
  const ScriptResult r = RunScript(
      "load KestuProbe pr {\"Caption\": \"hi\", \"Number\": {\"$type\":\"Integer\",\"value\":7}}"
      " 0 0 600 300\n"
      "get pr.Caption\n"
      "get pr.Number\n");
  EXPECT_EQ(r.out,
            "event pr.Called(Procedure=\"Initialize\")\n"
            "event pr.Called(Procedure=\"ReadProperties\")\n"
            "event pr.Called(Procedure=\"Resize 600x300\")\n"
            "event pr.Called(Procedure=\"Show\")\n"
            "pr.Caption = \"hi\"\n"
            "pr.Number = 7\n");
}

TEST(HostLifecycle, ABagThatDoesNotFitLeavesNoControlBehind) {
  // 40000 does not fit the probe's 16-bit Number: error 6 while reading,
  // and the half-read control is terminated and taken off the form.
  const ScriptResult r = RunScript(
      "load KestuProbe pr {\"Number\": 40000}\n"
      "get pr.Number\n");
  EXPECT_EQ(r.out,
            "event pr.Called(Procedure=\"Initialize\")\n"
            "event pr.Called(Procedure=\"ReadProperties\")\n"
            "event pr.Called(Procedure=\"Terminate\")\n"
            "error 6 Overflow\n");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err,
            "test.kss:1: load KestuProbe pr: error 6 Overflow (key \"Number\": Double read as "
            "Integer)\ntest.kss:2: unknown control 'pr'\n");
}

TEST(HostLifecycle, SaveRunsWriteProperties) {
  const ScriptResult r = RunScript(
      "new KestuProbe pr\n"
      "set pr.Caption \"a\\\"b\"\n"
      "save pr\n");
  EXPECT_NE(
      r.out.find("notify pr.Caption\n"
                 "event pr.Called(Procedure=\"WriteProperties\")\n"
                 "bag pr {\"Caption\":\"a\\\"b\",\"Number\":{\"$type\":\"Integer\",\"value\":0},"
                 "\"Color\":{\"$type\":\"Long\",\"value\":-2147483633}}\n"),
      std::string::npos)
      << r.out;
}

TEST(HostLifecycle, TerminateRunsWhenRemovedAndWhenTheHostEnds) {
  CallLog log;
  {
    Host host;
    host.AddObserver(&log);
    Form& form = host.CreateForm("Main");
    HostedControl& first = host.NewControl(form, ProbeControl::Info(), "a");
    host.NewControl(form, ProbeControl::Info(), "b");
    log.calls.clear();
    host.RemoveControl(first);
    EXPECT_EQ(log.calls, "a:Terminate;");
    EXPECT_EQ(host.FindControl("a"), nullptr);
    log.calls.clear();
  }
  EXPECT_EQ(log.calls, "b:Terminate;");
}

TEST(HostLifecycle, ResizeRunsOnlyWhenTheSizeChangesAndMayNest) {
  const ScriptResult r = RunScript(
      "new KestuProbe pr 0 0 1200 480\n"
      "size pr 1200 480\n"
      "set pr.MinWidth 1500\n"
      "size pr 900 480\n"
      "get pr.Width\n");
  // The probe widens itself inside its own Resize: a nested Resize.
  EXPECT_NE(r.out.find("event pr.Called(Procedure=\"Show\")\n"
                       "event pr.Called(Procedure=\"Resize 900x480\")\n"
                       "event pr.Called(Procedure=\"Resize 1500x480\")\n"
                       "pr.Width = 1500\n"),
            std::string::npos)
      << r.out;
}

TEST(HostLifecycle, RasterFollowsTheSizeInPixelsOfTheScreenAtCreation) {
  Host host;
  Form& form = host.CreateForm("Main");
  host.SetTwipsPerPixel(12, 20);
  HostedControl& probe =
      host.NewControl(form, ProbeControl::Info(), "pr", TwipsRect{0, 0, 606, 400});
  host.SetTwipsPerPixel(15, 15);
  // 606 / 12 = 50.5 rounds up; the control keeps the screen it was born on.
  EXPECT_EQ(probe.GetRaster().Width(), 51);
  EXPECT_EQ(probe.GetRaster().Height(), 20);
  probe.RequestSize(1200, 400);
  EXPECT_EQ(probe.GetRaster().Width(), 100);
}

TEST(HostLifecycle, PaintAndAmbientChangesReachTheControl) {
  const ScriptResult r = RunScript(
      "mode design\n"
      "new KestuProbe pr\n"
      "paint pr\n"
      "ambient pr UserMode True\n"
      "ambient pr displayname \"Other\"\n");
  EXPECT_NE(r.out.find("event pr.Called(Procedure=\"Paint\")\n"
                       "event pr.Called(Procedure=\"AmbientChanged UserMode\")\n"
                       "event pr.Called(Procedure=\"AmbientChanged DisplayName\")\n"),
            std::string::npos)
      << r.out;
}

TEST(HostLifecycle, AmbientValuesOfANewSite) {
  Host host;
  Form& form = host.CreateForm("Main");
  host.SetUserMode(false);
  HostedControl& probe = host.NewControl(form, ProbeControl::Info(), "pr");
  EXPECT_FALSE(probe.AmbientUserMode());
  EXPECT_EQ(probe.AmbientDisplayName(), "pr");
  EXPECT_FALSE(probe.AmbientDisplayAsDefault());
  // The ambient font is the form's, shared by every control on it.
  EXPECT_EQ(probe.AmbientFont(), form.Font());
  EXPECT_EQ(probe.AmbientFont()->Name, "MS Sans Serif");
  EXPECT_DOUBLE_EQ(probe.AmbientFont()->Size, 8.25);
}

}  // namespace
}  // namespace kestu
