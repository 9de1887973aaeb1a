#include "kestu/sdl/FormScene.h"

#include <algorithm>

#include "kestu/foundation/OleColor.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

// The caret's cell in pixels of `form`, when it is drawn on it: its
// position is in its window's client area, the form's or a control's.
std::optional<PixelRect> CaretCell(const Host& host, const Form& form, bool caret_lit) {
  const auto& caret = host.GetCaret();
  if (!caret || !caret->shown || !caret_lit) return std::nullopt;
  const Host::WindowRef owner = host.FindWindow(caret->hwnd);
  PixelRect window;
  if (owner.form == &form) {
    window = {0, 0, form.WidthPixels(), form.HeightPixels()};
  } else if (owner.control && &owner.control->Owner() == &form && owner.control->Visible()) {
    window = owner.control->PixelBoundsOnForm();
  } else {
    return std::nullopt;
  }
  return PixelRect{window.left + caret->x, window.top + caret->y,
                   window.left + caret->x + caret->width, window.top + caret->y + caret->height};
}

}  // namespace

void RowBand::Add(int top, int bottom) {
  if (top >= bottom) return;
  if (Empty()) {
    first = top;
    end = bottom;
    return;
  }
  first = std::min(first, top);
  end = std::max(end, bottom);
}

FormScene::FormScene(const Host& host, const Form& form, bool caret_lit)
    : width_(form.WidthPixels()),
      height_(form.HeightPixels()),
      background_(ResolveColor(form.BackColor())),
      caret_(CaretCell(host, form, caret_lit)) {
  for (const auto& control : form.Controls()) {
    if (!control->Visible()) continue;
    layers_.push_back(
        {control->hWnd(), control->PixelBoundsOnForm(), control->GetRaster().Generation()});
  }
}

bool FormScene::SameLayout(const FormScene& before) const {
  return width_ == before.width_ && height_ == before.height_ &&
         background_ == before.background_ && layers_.size() == before.layers_.size() &&
         std::equal(layers_.begin(), layers_.end(), before.layers_.begin(),
                    [](const Layer& a, const Layer& b) { return a.hwnd == b.hwnd; });
}

void FormScene::AddRows(RowBand& band, const PixelRect& rect) const {
  if (rect.left >= rect.right) return;
  band.Add(std::max(rect.top, 0), std::min(rect.bottom, height_));
}

RowBand FormScene::RowsChangedSince(const FormScene& before) const {
  RowBand band;
  if (!SameLayout(before)) {
    band.Add(0, height_);
    return band;
  }
  for (size_t i = 0; i < layers_.size(); ++i) {
    const Layer& now = layers_[i];
    const Layer& then = before.layers_[i];
    if (now.bounds == then.bounds && now.generation == then.generation) continue;
    AddRows(band, then.bounds);
    AddRows(band, now.bounds);
  }
  if (caret_ != before.caret_) {
    if (caret_) AddRows(band, *caret_);
    if (before.caret_) AddRows(band, *before.caret_);
  }
  return band;
}

}  // namespace kestu
