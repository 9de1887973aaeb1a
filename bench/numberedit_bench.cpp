// What the numeric edit box costs per user action on the headless host:
// one accepted digit, from the key procedure to the pixels in the raster,
// and one assignment of Value (conversion, normalisation and redraw).

#include <benchmark/benchmark.h>

#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "kestu/numberedit/KestuNumberEdit.h"

namespace {

struct FocusedBox {
  kestu::Host host;
  kestu::HostedControl* site = nullptr;
  kestu::KestuNumberEdit* box = nullptr;

  FocusedBox() {
    kestu::Form& form = host.CreateForm("Bench");
    site = &host.NewControl(form, kestu::KestuNumberEdit::Info(), "n1",
                            kestu::TwipsRect{120, 120, 1800, 315});
    box = &static_cast<kestu::KestuNumberEdit&>(site->Control());
    box->SetProperty("AutoSelect", kestu::Variant::Boolean(false));
    box->SetIntMaxLength(15);
    host.SetFocus(site);
  }
};

void BM_AcceptedDigitKeystroke(benchmark::State& state) {
  FocusedBox fixture;
  int typed = 0;
  for (auto _ : state) {
    if (typed == 15) {
      // The integer part is full: back to "0" outside the measurement.
      state.PauseTiming();
      fixture.box->SetText(kestu::Variant(""));
      typed = 0;
      state.ResumeTiming();
    }
    int16_t key_ascii = static_cast<int16_t>('1' + typed % 9);
    fixture.box->UserControl_KeyPress(key_ascii);
    ++typed;
    benchmark::DoNotOptimize(fixture.site->GetRaster().Pixels().data());
  }
  // Every keystroke measured must have been accepted, none refused.
  if (fixture.box->Text().ToString().size() != static_cast<size_t>(typed)) {
    state.SkipWithError("a digit was refused");
  }
}
BENCHMARK(BM_AcceptedDigitKeystroke);

void BM_ValueAssignment(benchmark::State& state) {
  FocusedBox fixture;
  const double values[] = {1234567.891, -0.5, 42, 987654321.12345};
  size_t i = 0;
  for (auto _ : state) {
    fixture.box->SetValue(values[i++ % 4]);
    benchmark::DoNotOptimize(fixture.site->GetRaster().Pixels().data());
  }
}
BENCHMARK(BM_ValueAssignment);

}  // namespace
