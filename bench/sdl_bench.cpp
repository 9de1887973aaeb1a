// Real windows: the time from a key injected into the window system's queue
// to the window's pixels updated on the X server, and the cost of showing
// one whole 800 x 600 frame, each beside the same operation done by a bare
// SDL program in the same run (the `Bare` benchmarks): a window of the same
// size that takes the same events and shows the same rows, with no host
// behind it. Needs a display (run under Xvfb); without one the benchmarks
// report that they were skipped.

#include <SDL.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

#include "kestu/desktop/SdlDesktop.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/host/Host.h"

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kWidth = 800;
constexpr int kHeight = 600;
// The rows the box covers, which a key changes.
constexpr int kBoxTop = 20;
constexpr int kBoxHeight = 21;

// An 800 x 600 form with a focused numeric edit box, in a window. Its
// clock moves on a whole frame whenever the benchmark says, so that every
// key finds the display ready for a frame, as a user's keys do.
struct WindowedForm {
  kestu::Host host;
  kestu::Form* form = nullptr;
  uint64_t now_ms = 1000;
  std::unique_ptr<kestu::SdlDesktop> desktop;

  WindowedForm() {
    form = &host.CreateForm("Bench", kWidth * kTwipsPerPixel, kHeight * kTwipsPerPixel);
    const kestu::ClassInfo* info = kestu::ControlRegistry::Instance().Find("KestuNumberEdit");
    if (info) {
      host.SetFocus(&host.NewControl(
          *form, *info, "amount",
          kestu::TwipsRect{300, kBoxTop * kTwipsPerPixel, 3000, kBoxHeight * kTwipsPerPixel}));
    }
    desktop = std::make_unique<kestu::SdlDesktop>(host, [this] { return now_ms; });
    desktop->RunOnce(0);  // the first frame
  }
  void NextFrame() { now_ms += 17; }
};

// A bare SDL window of the same size, on the same kind of surface.
struct BareWindow {
  SDL_Window* window = nullptr;

  BareWindow() {
    SDL_InitSubSystem(SDL_INIT_VIDEO);
    if (std::string_view(SDL_GetCurrentVideoDriver()) == "x11") {
      SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    }
    window = SDL_CreateWindow("Bare", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, kWidth,
                              kHeight, SDL_WINDOW_SHOWN);
    Fill(0, kHeight, 0x00C0C0C0);
  }
  ~BareWindow() {
    SDL_DestroyWindow(window);
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
  }
  uint32_t Id() const { return SDL_GetWindowID(window); }

  // Rows [first, end) in one colour, shown.
  void Fill(int first, int end, uint32_t color) {
    SDL_Surface* surface = SDL_GetWindowSurface(window);
    for (int y = first; y < end; ++y) {
      auto* row = reinterpret_cast<uint32_t*>(static_cast<uint8_t*>(surface->pixels) +
                                              static_cast<size_t>(y) * surface->pitch);
      std::fill_n(row, kWidth, color);
    }
    const SDL_Rect band{0, first, kWidth, end - first};
    SDL_UpdateWindowSurfaceRects(window, &band, 1);
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
    bench.NextFrame();
    PushKey(window_id, digit ? SDLK_1 : SDLK_BACKSPACE, digit ? "1" : nullptr);
    digit = !digit;
    const int64_t before = bench.desktop->PresentCount();
    while (bench.desktop->PresentCount() == before) bench.desktop->RunOnce(0);
  }
}
BENCHMARK(BM_KeyToPresentedFrame)->Unit(benchmark::kMicrosecond);

// The same three events taken from the queue, and the box's 21 rows
// filled and shown.
void BM_KeyToPresentedFrameBare(benchmark::State& state) {
  if (SkipWithoutDisplay(state)) return;
  BareWindow bare;
  uint32_t color = 0;
  for (auto _ : state) {
    PushKey(bare.Id(), SDLK_1, "1");
    SDL_Event event;
    while (SDL_PollEvent(&event)) benchmark::DoNotOptimize(event);
    bare.Fill(kBoxTop, kBoxTop + kBoxHeight, color ^= 0x00FFFFFF);
  }
}
BENCHMARK(BM_KeyToPresentedFrameBare)->Unit(benchmark::kMicrosecond);

// A whole 800 x 600 frame: the form composed and every row shown.
void BM_PresentWholeFrame(benchmark::State& state) {
  if (SkipWithoutDisplay(state)) return;
  WindowedForm bench;
  kestu::FormWindow& window = *bench.desktop->WindowOf(*bench.form);
  for (auto _ : state) {
    window.Invalidate();
    benchmark::DoNotOptimize(window.Present(true));
  }
  state.SetBytesProcessed(state.iterations() * kWidth * kHeight * 4);
}
BENCHMARK(BM_PresentWholeFrame)->Unit(benchmark::kMicrosecond);

// Every row of the same window size filled and shown.
void BM_PresentWholeFrameBare(benchmark::State& state) {
  if (SkipWithoutDisplay(state)) return;
  BareWindow bare;
  uint32_t color = 0;
  for (auto _ : state) bare.Fill(0, kHeight, color ^= 0x00FFFFFF);
  state.SetBytesProcessed(state.iterations() * kWidth * kHeight * 4);
}
BENCHMARK(BM_PresentWholeFrameBare)->Unit(benchmark::kMicrosecond);

}  // namespace
