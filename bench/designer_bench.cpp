// The designer: dragging a control on a form of 100 controls, from one
// mouse move to the frame that shows the control's outline where the
// pointer took it. Once through real windows (needs a display: run under
// Xvfb), once headless: the move handled and the changed rows composed.

#include <SDL.h>
#include <benchmark/benchmark.h>

#include <memory>

#include "designer/Designer.h"
#include "kestu/desktop/FormScene.h"
#include "kestu/desktop/SdlDesktop.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"

namespace {

constexpr int kColumns = 10;
constexpr int kRows = 10;
constexpr int kCellPixels = 40;  // each control 32 x 24 pixels in a 40-pixel cell
constexpr int kStep = 8;         // each move: one grid step further, then back

// A designer whose form holds 100 controls (number boxes, buttons and
// panels in turn), with the middle one pressed: the drag is under way.
struct DesignedForm {
  kestu::Host host;
  kestu::Designer designer{host};
  int press_x = 0;
  int press_y = 0;

  DesignedForm() {
    static const char* const kClasses[] = {"KestuNumberEdit", "KestuActiveCommand", "KestuPanel3D"};
    kestu::Form& form = Form();
    form.Resize(kColumns * kCellPixels * 15, kRows * kCellPixels * 15);
    for (int i = 0; i < kColumns * kRows; ++i) {
      const int x = i % kColumns * kCellPixels;
      const int y = i / kColumns * kCellPixels;
      designer.Document().Place(kClasses[i % 3],
                                kestu::TwipsRect{x * 15, y * 15, 32 * 15, 24 * 15});
    }
    press_x = kColumns / 2 * kCellPixels + 16;
    press_y = kRows / 2 * kCellPixels + 12;
  }
  kestu::Form& Form() { return designer.Document().DesignedForm(); }
};

void BM_DesignerDragToPresentedFrame(benchmark::State& state) {
  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    state.SkipWithError(("no display: " + *problem).c_str());
    return;
  }
  DesignedForm bench;
  uint64_t now_ms = 1000;
  kestu::SdlDesktop desktop(bench.host, [&now_ms] { return now_ms; });
  desktop.RunOnce(0);
  const uint32_t window_id = desktop.WindowOf(bench.Form())->WindowId();
  SDL_Event press{};
  press.type = SDL_MOUSEBUTTONDOWN;
  press.button.windowID = window_id;
  press.button.button = SDL_BUTTON_LEFT;
  press.button.state = SDL_PRESSED;
  press.button.clicks = 1;
  press.button.x = bench.press_x;
  press.button.y = bench.press_y;
  SDL_PushEvent(&press);
  desktop.RunOnce(0);
  bool out = true;
  for (auto _ : state) {
    now_ms += 17;  // a frame on: the display is ready for the next one
    SDL_Event move{};
    move.type = SDL_MOUSEMOTION;
    move.motion.windowID = window_id;
    move.motion.state = SDL_BUTTON_LMASK;
    move.motion.x = bench.press_x + (out ? kStep : 0);
    move.motion.y = bench.press_y + (out ? kStep : 0);
    out = !out;
    SDL_PushEvent(&move);
    const int64_t before = desktop.PresentCount();
    while (desktop.PresentCount() == before) desktop.RunOnce(0);
  }
}
BENCHMARK(BM_DesignerDragToPresentedFrame)->Unit(benchmark::kMicrosecond);

// The same move without a window: handled, the scene compared and the
// rows that changed composed, as a window would before sending them.
void BM_DesignerDragComposed(benchmark::State& state) {
  DesignedForm bench;
  kestu::Form& form = bench.Form();
  bench.host.User().PointerDown(form, bench.press_x, bench.press_y, 1, 0);
  kestu::FormScene shown(bench.host, form, false);
  std::vector<kestu::Rgb> row(static_cast<size_t>(form.WidthPixels()));
  bool out = true;
  for (auto _ : state) {
    const int offset = out ? kStep : 0;
    out = !out;
    bench.host.User().PointerMove(form, bench.press_x + offset, bench.press_y + offset, 0);
    kestu::FormScene now(bench.host, form, false);
    const kestu::RowBand band = now.RowsChangedSince(shown);
    const kestu::FormPicture picture(bench.host, form, false);
    for (int y = band.first; y < band.end; ++y) picture.ComposeRow(y, row.data());
    benchmark::DoNotOptimize(row.data());
    shown = std::move(now);
  }
}
BENCHMARK(BM_DesignerDragComposed)->Unit(benchmark::kMicrosecond);

}  // namespace
