// What the command button costs on the headless host, from the procedure
// the host calls to the pixels in the raster: the pointer coming over it
// (capture, the hot look drawn, MouseEnter raised) and a whole redraw with
// a 32-pixel picture.

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "kestu/buttons/KestuActiveCommand.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"

namespace {

// A 32 x 32 picture of two colours, as an icon would be.
kestu::PictureRef Icon() {
  std::vector<uint32_t> pixels(32 * 32);
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = (i / 32 + i % 32) % 7 ? 0xFF1F3F8F : 0;
  return std::make_shared<const kestu::StdPicture>(32, 32, std::move(pixels));
}

struct Bench {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("Bench");
  kestu::HostedControl& site = host.NewControl(form, kestu::KestuActiveCommand::Info(), "cmd",
                                               kestu::TwipsRect{120, 120, 1215, 735});
  kestu::KestuActiveCommand& button = static_cast<kestu::KestuActiveCommand&>(site.Control());

  Bench() {
    button.SetProperty("Picture", kestu::Variant(Icon()));
    button.SetProperty("PictSize", kestu::Variant(kestu::cc32x32));
    button.SetProperty("PictPosition", kestu::Variant(kestu::ccTop));
  }
};

// Each iteration is two transitions, in and out again: the counter gives
// the time of one.
void BM_HoverTransition(benchmark::State& state) {
  Bench bench;
  int16_t no_button = 0;
  int16_t no_shift = 0;
  for (auto _ : state) {
    float x = 600, y = 300;
    bench.button.UserControl_MouseMove(no_button, no_shift, x, y);
    benchmark::DoNotOptimize(bench.site.GetRaster().Pixels().data());
    x = 5000;
    bench.button.UserControl_MouseMove(no_button, no_shift, x, y);
    benchmark::DoNotOptimize(bench.site.GetRaster().Pixels().data());
  }
  state.counters["transition"] =
      benchmark::Counter(2.0 * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_HoverTransition);

void BM_RedrawWithPicture32(benchmark::State& state) {
  Bench bench;
  for (auto _ : state) {
    bench.button.Redraw();
    benchmark::DoNotOptimize(bench.site.GetRaster().Pixels().data());
  }
}
BENCHMARK(BM_RedrawWithPicture32);

}  // namespace
