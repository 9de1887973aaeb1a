// What the masked edit box costs per accepted keystroke on the headless
// host: a 30-character mask, from the key procedure (through the character
// test, the text change, the merge) to the pixels in the raster.

#include <benchmark/benchmark.h>

#include <string>

#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "kestu/textedit/KestuTextEdit.h"

namespace {

constexpr int kMaskLength = 30;
constexpr int kGroup = 6;  // five digits, then a literal
constexpr int kPlaces = kMaskLength - (kMaskLength - 1) / kGroup;

void BM_AcceptedMaskedKeystroke(benchmark::State& state) {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("Bench");
  kestu::HostedControl& site = host.NewControl(form, kestu::KestuTextEdit::Info(), "t",
                                               kestu::TwipsRect{120, 120, 3600, 315});
  auto& box = static_cast<kestu::KestuTextEdit&>(site.Control());
  box.SetProperty("AutoSelect", kestu::Variant::Boolean(false));
  // Digits in groups of five between literals: 26 places and 4 literals,
  // in a box wide enough for them.
  std::string mask;
  for (int i = 0; i < kMaskLength; ++i) mask.append(i > 0 && i % kGroup == 0 ? "-" : "9");
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
