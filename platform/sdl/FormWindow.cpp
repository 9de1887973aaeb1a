#include "kestu/sdl/FormWindow.h"

#include <SDL.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

#include "kestu/host/Form.h"
#include "kestu/host/Snapshot.h"
#include "platform/sdl/WindowSurface.h"

namespace kestu {

namespace {

bool SameRow(const Raster& a, const Raster& b, int row) {
  const size_t width = static_cast<size_t>(a.Width());
  return std::memcmp(a.Pixels().data() + row * width, b.Pixels().data() + row * width,
                     width * sizeof(Rgb)) == 0;
}

}  // namespace

FormWindow::FormWindow(Host& host, Form& form) : host_(host), form_(form), form_hwnd_(form.hWnd()) {
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
  form_.MoveOnScreen(left, top);
}

void FormWindow::MatchFormSize() {
  int width = 0, height = 0;
  SDL_GetWindowSize(window_, &width, &height);
  const int wanted_width = std::max(1, form_.WidthPixels());
  const int wanted_height = std::max(1, form_.HeightPixels());
  if (width != wanted_width || height != wanted_height) {
    SDL_SetWindowSize(window_, wanted_width, wanted_height);
    whole_ = true;
  }
  if (form_.Caption() != SDL_GetWindowTitle(window_)) {
    SDL_SetWindowTitle(window_, form_.Caption().c_str());
  }
}

bool FormWindow::Present(bool caret_lit, const FormOverlay& overlay) {
  MatchFormSize();
  FormScene scene(host_, form_, caret_lit);
  RowBand band = whole_ ? RowBand{0, form_.HeightPixels()} : scene.RowsChangedSince(scene_);
  if (band.Empty()) return false;  // the picture would come out the same: no render at all
  RenderForm(host_, form_, frame_, caret_lit);
  if (overlay) overlay(form_, frame_);
  // A control that repainted may have drawn what it had: send only the
  // rows that really differ. Rows outside the band are the same by the
  // scene, so they are not even compared.
  const bool same_size = shown_.Width() == frame_.Width() && shown_.Height() == frame_.Height();
  if (!whole_ && same_size) {
    while (band.first < band.end && SameRow(frame_, shown_, band.first)) ++band.first;
    while (band.end > band.first && SameRow(frame_, shown_, band.end - 1)) --band.end;
  }
  if (!band.Empty() && !PresentRows(window_, frame_, band.first, band.end)) return false;
  whole_ = false;
  scene_ = std::move(scene);
  // The next frame is rendered whole into the old one: swapping is free.
  std::swap(shown_, frame_);
  return !band.Empty();
}

}  // namespace kestu
