#include "kestu/desktop/FormWindow.h"

#include <SDL.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "desktop/WindowSurface.h"
#include "kestu/host/Form.h"
#include "kestu/host/Snapshot.h"

namespace kestu {

FormWindow::FormWindow(Host& host, Form& form)
    : host_(host), form_(&form), form_hwnd_(form.hWnd()), form_name_(form.Name()) {
  window_ = SDL_CreateWindow(form.Caption().c_str(), SDL_WINDOWPOS_UNDEFINED,
                             SDL_WINDOWPOS_UNDEFINED, std::max(1, form.WidthPixels()),
                             std::max(1, form.HeightPixels()), SDL_WINDOW_SHOWN);
  if (!window_) throw std::runtime_error(std::string("cannot open a window: ") + SDL_GetError());
  FollowWindowPosition();
}

FormWindow::~FormWindow() {
  SDL_DestroyWindow(window_);
}

uint32_t FormWindow::WindowId() const {
  return SDL_GetWindowID(window_);
}

void FormWindow::FollowWindowPosition() {
  int left = 0, top = 0;
  SDL_GetWindowPosition(window_, &left, &top);
  form_->MoveOnScreen(left, top);
}

void FormWindow::Rebind(Form& form) {
  form_ = &form;
  form_hwnd_ = form.hWnd();
  form_name_ = form.Name();
  scene_ = FormScene();
  whole_ = true;
  FollowWindowPosition();
}

void FormWindow::MatchFormSize() {
  int width = 0, height = 0;
  SDL_GetWindowSize(window_, &width, &height);
  const int wanted_width = std::max(1, form_->WidthPixels());
  const int wanted_height = std::max(1, form_->HeightPixels());
  if (width != wanted_width || height != wanted_height) {
    SDL_SetWindowSize(window_, wanted_width, wanted_height);
    whole_ = true;
  }
  if (form_->Caption() != SDL_GetWindowTitle(window_)) {
    SDL_SetWindowTitle(window_, form_->Caption().c_str());
  }
}

bool FormWindow::Changed(bool caret_lit, const Raster* backdrop) const {
  return whole_ || !FormScene(host_, *form_, caret_lit, backdrop).RowsChangedSince(scene_).Empty();
}

bool FormWindow::Present(bool caret_lit, const Raster* backdrop) {
  MatchFormSize();
  FormScene scene(host_, *form_, caret_lit, backdrop);
  const RowBand band = whole_ ? RowBand{0, form_->HeightPixels()} : scene.RowsChangedSince(scene_);
  if (band.Empty()) return false;  // the picture would come out the same: nothing composed
  // Only the rows the scene says can differ are composed, each straight
  // into the window's surface. A control that repainted may have drawn
  // what it had: then a row the window already shows is not sent.
  const FormPicture picture(host_, *form_, caret_lit, backdrop);
  const std::optional<RowBand> shown =
      PresentRows(window_, picture.Width(), band, /*compare=*/!whole_, [&](int y, Rgb* scratch) {
        picture.ComposeRow(y, scratch);
        return scratch;
      });
  if (!shown) return false;
  whole_ = false;
  scene_ = std::move(scene);
  return !shown->Empty();
}

}  // namespace kestu
