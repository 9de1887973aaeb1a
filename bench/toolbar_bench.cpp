// What a toolbar costs while the pointer sweeps along it: a bar of twenty
// flat buttons with 16-pixel pictures, docked at the top of its form, and
// the pointer going from one button to the next as a window reports it.
//
// A button under the pointer holds the capture, so the first move over the
// next button still goes to the one it left: that one sees the pointer
// outside, lets it go, draws itself bare and raises MouseExit. The next
// move reaches the new button, which takes the capture, draws its hot
// frame and raises MouseEnter. One transition is those two moves.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "kestu/buttons/KestuTBButton.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "kestu/toolbar/KestuTBBar.h"

namespace {

constexpr int kButtons = 20;
constexpr int kPixel = 15;        // twips
constexpr int kFirstButton = 12;  // pixels in from the bar's left, past the grip
constexpr int kButtonWidth = 23;  // pixels, as AutoSize makes it for 16-pixel pictures

// A 16 x 16 picture of two colours, as an icon would be.
kestu::PictureRef Icon() {
  std::vector<uint32_t> pixels(16 * 16);
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = (i / 16 + i % 16) % 5 ? 0xFF1F3F8F : 0;
  return std::make_shared<const kestu::StdPicture>(16, 16, std::move(pixels));
}

struct Toolbar {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("Bench");
  kestu::HostedControl& bar = host.NewControl(form, kestu::KestuTBBar::Info(), "bar");
  std::vector<kestu::HostedControl*> buttons;

  Toolbar() {
    const kestu::Variant picture(Icon());
    for (int i = 0; i < kButtons; ++i) {
      kestu::HostedControl& button = host.NewControl(
          form, kestu::KestuTBButton::Info(), std::string("b").append(std::to_string(i)),
          kestu::TwipsRect{(kFirstButton + i * kButtonWidth) * kPixel, 2 * kPixel,
                           kButtonWidth * kPixel, 22 * kPixel},
          &bar);
      button.Control().SetProperty("Picture", picture);
      buttons.push_back(&button);
    }
  }

  // The middle of button `i` in the form's pixels.
  int X(int i) const { return buttons[i]->PixelBoundsOnForm().left + 11; }
  int Y() const { return buttons[0]->PixelBoundsOnForm().top + 11; }

  void MoveTo(int x, int y) { host.User().PointerMove(form, x, y, 0); }
};

void BM_ToolbarHoverTransition(benchmark::State& state) {
  Toolbar toolbar;
  const int y = toolbar.Y();
  std::vector<int> middles;
  for (int i = 0; i < kButtons; ++i) middles.push_back(toolbar.X(i));
  // The pointer starts over the first button, which has taken it.
  toolbar.MoveTo(middles[0], y);
  toolbar.MoveTo(middles[0] + 1, y);
  int at = 0;
  for (auto _ : state) {
    at = (at + 1) % kButtons;
    const int x = middles[at];
    toolbar.MoveTo(x, y);      // the button left behind lets the pointer go
    toolbar.MoveTo(x + 1, y);  // the button arrived at takes it
    benchmark::DoNotOptimize(toolbar.buttons[at]->GetRaster().Pixels().data());
  }
  if (toolbar.host.CaptureHolder() != toolbar.buttons[at]) {
    state.SkipWithError("the pointer did not reach the last button");
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["transition"] =
      benchmark::Counter(static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_ToolbarHoverTransition);

}  // namespace
