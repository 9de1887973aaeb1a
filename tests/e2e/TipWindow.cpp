// kestu_tip_window: a form in a real window with two probes, "p", which
// shows the host's tooltip at every pointer move over it, and "ok", the
// form's default control. The trace goes to standard output as kestu-run
// --trace prints it, and the tip's picture as the host drew it is written
// to tip-host.png whenever a tip appears, so the end-to-end test can
// compare it with what reached the screen.

#include <exception>
#include <iostream>

#include "kestu/desktop/SdlDesktop.h"
#include "kestu/host/Host.h"
#include "kestu/host/ToolWindow.h"
#include "kestu/script/TraceWriter.h"
#include "support/ProbeControl.h"

namespace {

class TipPictureWriter : public kestu::HostObserver {
 public:
  void OnToolWindowShown(const kestu::ToolWindow& window) override {
    window.Picture().SavePng("tip-host.png");
  }
};

}  // namespace

int main() {
  try {
    kestu::Host host;
    std::cout << std::unitbuf;
    kestu::TraceWriter trace(std::cout);
    TipPictureWriter pictures;
    // The picture is written before the trace line that the test waits for.
    host.AddObserver(&pictures);
    host.AddObserver(&trace);
    kestu::Form& form = host.CreateForm("Tips", 4800, 3000);
    form.SetCaption("Tips");
    // "p" at pixels (20, 20), 100 x 20; "ok" at (20, 100), 100 x 20.
    kestu::HostedControl& p = host.NewControl(form, kestu::ProbeControl::Info(), "p",
                                              kestu::TwipsRect{300, 300, 1500, 300});
    p.Control().SetProperty("HoverTip", kestu::Variant("Probe tip"));
    kestu::HostedControl& ok = host.NewControl(form, kestu::ProbeControl::Info(), "ok",
                                               kestu::TwipsRect{300, 1500, 1500, 300});
    ok.SetExtender("Default", kestu::Variant::Boolean(true));
    kestu::SdlDesktop desktop(host);
    desktop.Run();
  } catch (const std::exception& error) {
    std::cerr << "kestu_tip_window: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
