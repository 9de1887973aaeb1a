#include "kestu/host/Snapshot.h"

#include <algorithm>

#include "kestu/host/Host.h"

namespace kestu {

namespace {

PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

bool IsEmpty(const PixelRect& r) {
  return r.left >= r.right || r.top >= r.bottom;
}

// The caret's cell, clipped to its window at `window`, as the system
// draws a solid caret.
std::optional<PixelRect> CaretCellIn(const Caret& caret, const PixelRect& window) {
  const PixelRect cell{window.left + caret.x, window.top + caret.y,
                       window.left + caret.x + caret.width, window.top + caret.y + caret.height};
  const PixelRect clipped = Intersect(cell, window);
  if (IsEmpty(clipped)) return std::nullopt;
  return clipped;
}

}  // namespace

std::optional<PixelRect> CaretCellOnForm(const Host& host, const Form& form, bool caret_lit) {
  const auto& caret = host.GetCaret();
  if (!caret || !caret->shown || !caret_lit) return std::nullopt;
  const Host::WindowRef owner = host.FindWindow(caret->hwnd);
  if (owner.form == &form) {
    return CaretCellIn(*caret, {0, 0, form.WidthPixels(), form.HeightPixels()});
  }
  if (owner.control && &owner.control->Owner() == &form && owner.control->Visible()) {
    return CaretCellIn(*caret, owner.control->PixelBoundsOnForm());
  }
  return std::nullopt;
}

FormPicture::FormPicture(const Host& host, const Form& form, bool caret_lit, const Raster* backdrop)
    : width_(std::max(0, form.WidthPixels())),
      height_(std::max(0, form.HeightPixels())),
      background_(ResolveColor(form.BackColor())) {
  if (backdrop && backdrop->Width() == width_ && backdrop->Height() == height_) {
    backdrop_ = backdrop->Pixels().data();
  }
  const PixelRect whole{0, 0, width_, height_};
  for (const auto& control : form.Controls()) {
    if (!control->Visible()) continue;
    const Raster& raster = control->GetRaster();
    const PixelRect at = control->PixelBoundsOnForm();
    const PixelRect covered =
        Intersect({at.left, at.top, at.left + raster.Width(), at.top + raster.Height()}, whole);
    if (IsEmpty(covered)) continue;
    layers_.push_back({raster.Pixels().data(), raster.Width(), at.left, at.top, covered});
  }
  if (const auto cell = CaretCellOnForm(host, form, caret_lit)) {
    const PixelRect clipped = Intersect(*cell, whole);
    if (!IsEmpty(clipped)) caret_ = clipped;
  }
}

void FormPicture::ComposeRow(int y, Rgb* out) const {
  if (backdrop_) {
    std::copy_n(backdrop_ + static_cast<size_t>(y) * width_, width_, out);
  } else {
    std::fill_n(out, width_, background_);
  }
  for (const Layer& layer : layers_) {
    if (y < layer.visible.top || y >= layer.visible.bottom) continue;
    const Rgb* row = layer.pixels + static_cast<size_t>(y - layer.top) * layer.stride;
    std::copy(row + (layer.visible.left - layer.left), row + (layer.visible.right - layer.left),
              out + layer.visible.left);
  }
  if (caret_ && y >= caret_->top && y < caret_->bottom) {
    for (int x = caret_->left; x < caret_->right; ++x) out[x] = ~out[x] & 0x00FFFFFFu;
  }
}

void RenderForm(const Host& host, const Form& form, Raster& out, bool caret_lit,
                const Raster* backdrop) {
  const FormPicture picture(host, form, caret_lit, backdrop);
  if (out.Width() != picture.Width() || out.Height() != picture.Height()) {
    out = Raster(picture.Width(), picture.Height());
  }
  const std::span<Rgb> pixels = out.MutablePixels();
  for (int y = 0; y < picture.Height(); ++y) {
    picture.ComposeRow(y, pixels.data() + static_cast<size_t>(y) * picture.Width());
  }
}

Raster RenderForm(const Host& host, const Form& form) {
  Raster out(0, 0);
  RenderForm(host, form, out);
  return out;
}

Raster RenderControl(const Host& host, const HostedControl& control) {
  const Raster& raster = control.GetRaster();
  Raster out(raster.Width(), raster.Height());
  out.Blit(raster, 0, 0);
  const auto& caret = host.GetCaret();
  if (caret && caret->shown && caret->hwnd == control.hWnd()) {
    if (const auto cell = CaretCellIn(*caret, {0, 0, out.Width(), out.Height()})) {
      out.FillRect(*cell, 0, RasterOp::Invert);
    }
  }
  return out;
}

}  // namespace kestu
