#include "kestu/host/Snapshot.h"

#include <algorithm>

#include "kestu/host/Host.h"
#include "raster/Clip.h"

namespace kestu {

namespace {

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
  if (owner.control && &owner.control->Owner() == &form && owner.control->ShownOnForm()) {
    const std::optional<PixelRect> cell = CaretCellIn(*caret, owner.control->PixelBoundsOnForm());
    if (!cell) return std::nullopt;
    const PixelRect clipped = Intersect(*cell, owner.control->ClipOnForm());
    if (IsEmpty(clipped)) return std::nullopt;
    return clipped;
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
  for (const HostedControl* control : form.PaintOrder()) {
    if (!control->ShownOnForm()) continue;
    const Raster& raster = control->GetRaster();
    const PixelRect at = control->PixelBoundsOnForm();
    const PixelRect covered = Intersect(control->VisibleOnForm(), whole);
    if (IsEmpty(covered)) continue;
    layers_.push_back({raster.Pixels().data(), raster.Width(), at.left, at.top, covered});
  }
  if (const auto cell = CaretCellOnForm(host, form, caret_lit)) {
    const PixelRect clipped = Intersect(*cell, whole);
    if (!IsEmpty(clipped)) caret_ = clipped;
  }
  if (const FormDesigner* designer = form.Designer()) marks_ = designer->Marks();
  covered_.reserve(layers_.size() + 1);
}

void FormPicture::ComposeRow(int y, Rgb* out) const {
  // Front to back, each pixel written once: a layer shows only where
  // nothing in front of it covers it (every raster is opaque), and the
  // background only where no layer does. A form of panels inside panels
  // costs its area, not the sum of its controls' areas.
  covered_.clear();
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
    if (y < layer->visible.top || y >= layer->visible.bottom) continue;
    const Rgb* row = layer->pixels + static_cast<size_t>(y - layer->top) * layer->stride;
    PaintUncovered(layer->visible.left, layer->visible.right, [&](int left, int right) {
      std::copy(row + (left - layer->left), row + (right - layer->left), out + left);
    });
  }
  PaintUncovered(0, width_, [&](int left, int right) {
    if (backdrop_) {
      const Rgb* row = backdrop_ + static_cast<size_t>(y) * width_;
      std::copy(row + left, row + right, out + left);
    } else {
      std::fill(out + left, out + right, background_);
    }
  });
  if (caret_ && y >= caret_->top && y < caret_->bottom) {
    for (int x = caret_->left; x < caret_->right; ++x) out[x] = ~out[x] & 0x00FFFFFFu;
  }
  if (!marks_.empty()) PaintMarks(y, out);
}

void FormPicture::PaintMarks(int y, Rgb* out) const {
  for (const DesignMark& mark : marks_) {
    const PixelRect& r = mark.rect;
    if (y < r.top || y >= r.bottom) continue;
    const int left = std::max(r.left, 0);
    const int right = std::min(r.right, width_);
    if (left >= right) continue;
    if (mark.filled || y == r.top || y == r.bottom - 1) {
      std::fill(out + left, out + right, mark.color);
      continue;
    }
    if (r.left >= 0) out[r.left] = mark.color;
    if (r.right <= width_) out[r.right - 1] = mark.color;
  }
}

template <typename Paint>
void FormPicture::PaintUncovered(int left, int right, Paint&& paint) const {
  // `covered_` holds the columns painted so far on this row: sorted,
  // disjoint spans.
  size_t first = 0;
  while (first < covered_.size() && covered_[first].right <= left) ++first;
  size_t end = first;
  int x = left;
  for (; end < covered_.size() && covered_[end].left < right; ++end) {
    if (covered_[end].left > x) paint(x, covered_[end].left);
    x = std::max(x, covered_[end].right);
  }
  if (x < right) paint(x, right);
  // The spans [first, end) overlap [left, right): one span takes their place.
  Span merged{left, right};
  if (first < end) {
    merged.left = std::min(left, covered_[first].left);
    merged.right = std::max(right, covered_[end - 1].right);
  }
  covered_.erase(covered_.begin() + static_cast<std::ptrdiff_t>(first),
                 covered_.begin() + static_cast<std::ptrdiff_t>(end));
  covered_.insert(covered_.begin() + static_cast<std::ptrdiff_t>(first), merged);
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
