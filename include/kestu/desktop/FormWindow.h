#pragma once
// One form of the host shown in a real window: the window has the form's
// caption and client size, follows the form's place on the screen, and
// shows the form's picture, composing only the rows that what it is made of
// says can have changed and sending only those that differ from what the
// window shows.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "kestu/desktop/FormScene.h"
#include "kestu/raster/Raster.h"

struct SDL_Window;

namespace kestu {

class Host;
class Form;

// The picture a form is drawn over instead of its plain colour (the
// gallery's captions), or null. A backdrop of another size than the form
// is not used.
using FormBackdrop = std::function<const Raster*(const Form&)>;

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
  // The name of the form shown, kept when the form goes.
  const std::string& ShownName() const { return form_name_; }
  SDL_Window* Window() const { return window_; }

  // Shows the form's picture (the caret only when `caret_lit`, over
  // `backdrop` when there is one): the rows that can have changed are
  // composed, and those that differ from what the window shows are sent.
  // False when nothing was sent.
  bool Present(bool caret_lit, const Raster* backdrop = nullptr);
  // Whether Present would send anything: the picture can have changed.
  bool Changed(bool caret_lit, const Raster* backdrop) const;
  // The display frame of the last present.
  std::optional<uint64_t> ShownInFrame() const { return shown_in_frame_; }
  void SetShownInFrame(uint64_t frame) { shown_in_frame_ = frame; }
  // The window lost its pixels (exposed): the next Present shows all.
  void Invalidate() { whole_ = true; }
  // The window moved: the form's screen rectangle follows.
  void FollowWindowPosition();
  // Shows `form` from now on: a form replaced by another of its name (a
  // designer's undo) keeps its window where the user put it.
  void Rebind(Form& form);

 private:
  void MatchFormSize();

  Host& host_;
  Form* form_;
  int32_t form_hwnd_;
  std::string form_name_;
  SDL_Window* window_ = nullptr;
  FormScene scene_;  // what the window shows was composed from
  bool whole_ = true;
  std::optional<uint64_t> shown_in_frame_;
};

}  // namespace kestu
