// What the masked edit box costs per accepted keystroke on the headless
// host: a 30-place mask, from the key procedure (through the character
// test, the text change, the merge) to the pixels in the raster.

#include <benchmark/benchmark.h>

#include <string>

#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "kestu/textedit/KestuTextEdit.h"

namespace {

constexpr int kPlaces = 30;

void BM_AcceptedMaskedKeystroke(benchmark::State& state) {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("Bench");
  kestu::HostedControl& site = host.NewControl(form, kestu::KestuTextEdit::Info(), "t",
                                               kestu::TwipsRect{120, 120, 3600, 315});
  auto& box = static_cast<kestu::KestuTextEdit&>(site.Control());
  box.SetProperty("AutoSelect", kestu::Variant::Boolean(false));
  // Digits in groups of five between literals: 30 places, 5 literals, in a
  // box just wide enough for them.
  std::string mask;
  for (int i = 0; i < kPlaces; ++i) mask.append(i > 0 && i % 5 == 0 ? "-9" : "9");
  box.SetProperty("Mask", kestu::Variant(mask));
  host.SetFocus(&site);
  int typed = 0;
  for (auto _ : state) {
    if (typed == kPlaces) {
      // Every place is taken: back to the first one outside the measurement.
      state.PauseTiming();
      box.SetPosition(0);
      typed = 0;
      state.ResumeTiming();
    }
    int16_t key_ascii = static_cast<int16_t>('1' + typed % 9);
    box.UserControl_KeyPress(key_ascii);
    ++typed;
    benchmark::DoNotOptimize(site.GetRaster().Pixels().data());
  }
  if (box.CursorPos() == 0) state.SkipWithError("a keystroke was refused");
}
BENCHMARK(BM_AcceptedMaskedKeystroke);

}  // namespace
