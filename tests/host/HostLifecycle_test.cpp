// What the host does for a control's lifecycle that a script cannot see:
// Terminate when the host ends, the raster's size, a new site's ambient
// values. The order of the procedures is shown by scripts/probe/.

#include <gtest/gtest.h>

#include <stdexcept>

#include "kestu/decor/KestuLine3D.h"
#include "kestu/host/Host.h"
#include "support/ProbeControl.h"

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

// A program reaches its controls typed: the one it creates, and a form's by
// name, refused with a message that names the form, the control and both
// classes.
TEST(HostLifecycle, ControlsReachedTyped) {
  Host host;
  Form& form = host.CreateForm("Order");
  ProbeControl& probe = host.New<ProbeControl>(form, "probe");
  EXPECT_EQ(&host.Get<ProbeControl>(form, "PROBE"), &probe);
  try {
    host.Get<KestuLine3D>(form, "probe");
    ADD_FAILURE() << "a probe was taken for a line";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "form 'Order' has 'probe' as a KestuProbe, not a KestuLine3D");
  }
  EXPECT_THROW(host.Get<ProbeControl>(form, "missing"), std::invalid_argument);
}

}  // namespace
}  // namespace kestu
