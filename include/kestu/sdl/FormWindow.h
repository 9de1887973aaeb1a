#pragma once
// One form of the host shown in a real window: the window has the form's
// caption and client size, follows the form's place on the screen, and
// shows the form's picture, rendering it only when what it is made of
// changed and sending only the rows that differ from what the window shows.

#include <cstdint>
#include <functional>

#include "kestu/raster/Raster.h"
#include "kestu/sdl/FormScene.h"

struct SDL_Window;

namespace kestu {

class Host;
class Form;

// Drawn over a form's picture before it is shown (the gallery's captions).
// It draws the same for the same form: a window renders again only when
// the form's own picture can have changed.
using FormOverlay = std::function<void(const Form&, Raster&)>;

class FormWindow {
 public:
  // Opens a window for `form` and puts the form where the window landed.
  // Throws std::runtime_error when the window system refuses.
  FormWindow(Host& host, Form& form);
  ~FormWindow();
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  // The form's handle: forms go away in the host, handles are never reused.
  int32_t FormHwnd() const { return form_hwnd_; }
  uint32_t WindowId() const;
  SDL_Window* Window() const { return window_; }

  // Renders the form (the caret only when `caret_lit`), draws `overlay`
  // over it, and shows the rows that differ from what the window shows.
  // False when nothing changed; then nothing is rendered either.
  bool Present(bool caret_lit, const FormOverlay& overlay);
  // The window lost its pixels (exposed): the next Present shows all.
  void Invalidate() { whole_ = true; }
  // The window moved: the form's screen rectangle follows.
  void FollowWindowPosition();

 private:
  void MatchFormSize();

  Host& host_;
  Form& form_;
  int32_t form_hwnd_;
  SDL_Window* window_ = nullptr;
  Raster frame_{0, 0};
  Raster shown_{0, 0};
  FormScene scene_;  // what `shown_` was rendered from
  bool whole_ = true;
};

}  // namespace kestu
