// Real windows: the time from a key injected into the window system's queue
// to the window's pixels updated on the X server, and the cost of showing
// one whole 800 x 600 frame. Needs a display (run under Xvfb); without one
// the benchmarks report that they were skipped.

#include <SDL.h>
#include <benchmark/benchmark.h>

#include <memory>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/host/Host.h"
#include "kestu/sdl/SdlDesktop.h"

namespace {

constexpr int kTwipsPerPixel = 15;

// An 800 x 600 form with a focused numeric edit box, in a window.
struct WindowedForm {
  kestu::Host host;
  kestu::Form* form = nullptr;
  std::unique_ptr<kestu::SdlDesktop> desktop;

  WindowedForm() {
    form = &host.CreateForm("Bench", 800 * kTwipsPerPixel, 600 * kTwipsPerPixel);
    const kestu::ClassInfo* info = kestu::ControlRegistry::Instance().Find("KestuNumberEdit");
    if (info) {
      host.SetFocus(
          &host.NewControl(*form, *info, "amount", kestu::TwipsRect{300, 300, 3000, 315}));
    }
    desktop = std::make_unique<kestu::SdlDesktop>(host);
    desktop->RunOnce(0);  // the first frame
  }
};

bool SkipWithoutDisplay(benchmark::State& state) {
  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    state.SkipWithError(("no display: " + *problem).c_str());
    return true;
  }
  return false;
}

void PushKey(uint32_t window_id, SDL_Keycode key, const char* text) {
  SDL_Event event{};
  event.type = SDL_KEYDOWN;
  event.key.windowID = window_id;
  event.key.keysym.sym = key;
  SDL_PushEvent(&event);
  if (text) {
    SDL_Event typed{};
    typed.type = SDL_TEXTINPUT;
    typed.text.windowID = window_id;
    SDL_strlcpy(typed.text.text, text, sizeof(typed.text.text));
    SDL_PushEvent(&typed);
  }
  event.type = SDL_KEYUP;
  SDL_PushEvent(&event);
}

// One key stroke (a digit, then Backspace, in turn) from the queue through
// the box's rules and drawing to the changed rows on the X server. A
// present counts once the window system's put-image request and a round
// trip behind it came back: the server has drawn the pixels by then.
void BM_KeyToPresentedFrame(benchmark::State& state) {
  if (SkipWithoutDisplay(state)) return;
  WindowedForm bench;
  const uint32_t window_id = bench.desktop->WindowOf(*bench.form)->WindowId();
  bool digit = true;
  for (auto _ : state) {
    PushKey(window_id, digit ? SDLK_1 : SDLK_BACKSPACE, digit ? "1" : nullptr);
    digit = !digit;
    const int64_t before = bench.desktop->PresentCount();
    while (bench.desktop->PresentCount() == before) bench.desktop->RunOnce(0);
  }
}
BENCHMARK(BM_KeyToPresentedFrame)->Unit(benchmark::kMicrosecond);

// A whole 800 x 600 frame: the form rendered and every row shown.
void BM_PresentWholeFrame(benchmark::State& state) {
  if (SkipWithoutDisplay(state)) return;
  WindowedForm bench;
  kestu::FormWindow& window = *bench.desktop->WindowOf(*bench.form);
  for (auto _ : state) {
    window.Invalidate();
    benchmark::DoNotOptimize(window.Present(true, {}));
  }
  state.SetBytesProcessed(state.iterations() * 800 * 600 * 4);
}
BENCHMARK(BM_PresentWholeFrame)->Unit(benchmark::kMicrosecond);

}  // namespace
