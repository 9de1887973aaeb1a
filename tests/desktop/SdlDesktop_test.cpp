// The desktop on SDL's window-less video driver: real windows, surfaces and
// event queue, no display. The desktop's clock is the test's: a user's
// pointer moves reach the desktop 300 ms apart, so time passes as the
// desktop takes them from the queue, and never by the wall clock.

#include "kestu/desktop/SdlDesktop.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>

#include "desktop/TwoNumberBoxes.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"
#include "support/ProbeControl.h"
#include "support/ScriptHarness.h"

namespace kestu {
namespace {

constexpr uint64_t kStartMs = 1000;
constexpr uint64_t kMoveMs = 300;

class SdlDesktopTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "dummy", SDL_HINT_OVERRIDE);
    ASSERT_EQ(RunScriptOn(host_, test::kTwoNumberBoxes).status, 0);
    form_ = host_.FindForm("F");
    desktop_.emplace(host_, [this] { return Now(); });
    desktop_->RunOnce(0);  // the windows' first events and pictures
  }
  void TearDown() override {
    desktop_.reset();
    SDL_ResetHint(SDL_HINT_VIDEODRIVER);
  }

  uint64_t Now() const {
    const int queued = SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_MOUSEMOTION, SDL_MOUSEMOTION);
    return kStartMs + waited_ms_ + kMoveMs * static_cast<uint64_t>(moves_pushed_ - queued);
  }

  uint32_t WindowId() const { return desktop_->WindowOf(*form_)->WindowId(); }

  void PushMove() {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = WindowId();
    event.motion.x = 300;
    event.motion.y = 150;
    SDL_PushEvent(&event);
    ++moves_pushed_;
  }

  void PushKey(SDL_Keycode key, const char* text) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.windowID = WindowId();
    event.key.keysym.sym = key;
    SDL_PushEvent(&event);
    if (text) {
      SDL_Event typed{};
      typed.type = SDL_TEXTINPUT;
      typed.text.windowID = WindowId();
      SDL_strlcpy(typed.text.text, text, sizeof(typed.text.text));
      SDL_PushEvent(&typed);
    }
    event.type = SDL_KEYUP;
    SDL_PushEvent(&event);
  }

  // The window's surface holds the form's picture, row by row.
  bool ShowsTheForm(bool caret_lit = true) const {
    Raster expected(0, 0);
    RenderForm(host_, *form_, expected, caret_lit);
    const SDL_Surface* surface = SDL_GetWindowSurface(desktop_->WindowOf(*form_)->Window());
    if (surface->w != expected.Width() || surface->h != expected.Height()) return false;
    for (int y = 0; y < surface->h; ++y) {
      const auto* row = reinterpret_cast<const uint32_t*>(
          static_cast<const uint8_t*>(surface->pixels) + static_cast<size_t>(y) * surface->pitch);
      const std::span<const Rgb> wanted = expected.Pixels().subspan(y * expected.Width());
      for (int x = 0; x < surface->w; ++x) {
        if ((row[x] & 0x00FFFFFF) != wanted[x]) return false;
      }
    }
    return true;
  }

  Host host_;
  Form* form_ = nullptr;
  std::optional<SdlDesktop> desktop_;
  int moves_pushed_ = 0;
  uint64_t waited_ms_ = 0;
};

TEST_F(SdlDesktopTest, TheWindowShowsTheFormsPictureAfterEveryChange) {
  ASSERT_EQ(SDL_GetCurrentVideoDriver(), std::string("dummy"));
  EXPECT_TRUE(ShowsTheForm());
  RunScriptOn(host_, "focus b\n");
  PushKey(SDLK_7, "7");
  desktop_->RunOnce(0);
  EXPECT_TRUE(ShowsTheForm());
  // A turn with nothing new presents nothing.
  const int64_t presents = desktop_->PresentCount();
  desktop_->RunOnce(0);
  EXPECT_EQ(desktop_->PresentCount(), presents);
  for (const char* change : {"set b.Top 1500\n", "set a.Visible False\n", "size b 3000 600\n",
                             "set b.Left 0\n", "set a.Visible True\n"}) {
    RunScriptOn(host_, change);
    desktop_->RunOnce(0);
    EXPECT_TRUE(ShowsTheForm()) << change;
  }
}

TEST_F(SdlDesktopTest, AChangeWithinAFrameIsShownAtTheNextAndInputNeverWaits) {
  desktop_->SetFrameRate(50);  // frames of 20 ms
  RunScriptOn(host_, "focus b\n");
  desktop_->RunOnce(0);
  ASSERT_TRUE(ShowsTheForm());
  const int64_t presents = desktop_->PresentCount();
  PushKey(SDLK_7, "7");
  desktop_->RunOnce(0);
  EXPECT_EQ(RunScriptOn(host_, "get b.Value\n").out, "b.Value = 7\n");
  EXPECT_EQ(desktop_->PresentCount(), presents);
  EXPECT_FALSE(ShowsTheForm());
  waited_ms_ += 20;
  desktop_->RunOnce(0);
  EXPECT_EQ(desktop_->PresentCount(), presents + 1);
  EXPECT_TRUE(ShowsTheForm());
}

TEST_F(SdlDesktopTest, TimersAndTheCaretGoOnWhileAPopupMenuIsOpen) {
  RunScriptOn(host_, "focus a\n");
  desktop_->RunOnce(0);
  const int64_t clock = host_.ClockMilliseconds();
  // The user moves the pointer twice, 300 ms apart, then leaves the menu
  // with Escape: the periodic check is due at 250 and 500 ms, the caret's
  // blink at 530 ms.
  PushMove();
  PushMove();
  PushKey(SDLK_ESCAPE, nullptr);
  const ScriptResult menu = RunScriptOn(host_, "click a 2\n");
  ASSERT_NE(menu.out.find("popup a "), std::string::npos);
  EXPECT_EQ(host_.ClockMilliseconds(), clock + 2 * Host::kTickMilliseconds);
  EXPECT_TRUE(ShowsTheForm(/*caret_lit=*/false));
  EXPECT_FALSE(ShowsTheForm(/*caret_lit=*/true));
}

// The names of the events the controls raise, in order.
class EventLog : public HostObserver {
 public:
  void OnEvent(HostedControl& control, const EventInfo& event, std::span<EventArgument>) override {
    log.append(control.Name()).append(".").append(event.name).append(";");
  }
  std::string log;
};

// SDL sends no moves from outside a window: when the pointer leaves it,
// the control holding the capture hears one from where the pointer went,
// so a control tracking the pointer sees it leave.
TEST_F(SdlDesktopTest, TheCaptureHolderHearsThePointerLeaveTheWindow) {
  HostedControl& p =
      host_.NewControl(*form_, ProbeControl::Info(), "p", TwipsRect{2400, 900, 1200, 480});
  EventLog events;
  host_.AddObserver(&events);
  SDL_Event leave{};
  leave.type = SDL_WINDOWEVENT;
  leave.window.event = SDL_WINDOWEVENT_LEAVE;
  leave.window.windowID = WindowId();
  SDL_PushEvent(&leave);
  desktop_->RunOnce(0);
  EXPECT_EQ(events.log, "");
  KestuControlsAPI::SetCapture(p.hWnd());
  SDL_PushEvent(&leave);
  desktop_->RunOnce(0);
  host_.RemoveObserver(&events);
  EXPECT_EQ(events.log, "p.MouseMove;");
}

}  // namespace
}  // namespace kestu
