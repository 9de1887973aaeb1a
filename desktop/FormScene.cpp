#include "kestu/desktop/FormScene.h"

#include <algorithm>

#include "kestu/foundation/OleColor.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"

namespace kestu {

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

FormScene::FormScene(const Host& host, const Form& form, bool caret_lit, const Raster* backdrop)
    : width_(form.WidthPixels()),
      height_(form.HeightPixels()),
      background_(ResolveColor(form.BackColor())),
      backdrop_(backdrop),
      backdrop_generation_(backdrop ? backdrop->Generation() : 0),
      caret_(CaretCellOnForm(host, form, caret_lit)) {
  for (const HostedControl* control : form.PaintOrder()) {
    if (!control->ShownOnForm()) continue;
    layers_.push_back({control->hWnd(), control->PixelBoundsOnForm(), control->VisibleOnForm(),
                       control->GetRaster().Generation()});
  }
  if (const FormDesigner* designer = form.Designer()) marks_ = designer->Marks();
}

bool FormScene::SameLayout(const FormScene& before) const {
  return width_ == before.width_ && height_ == before.height_ &&
         background_ == before.background_ && backdrop_ == before.backdrop_ &&
         backdrop_generation_ == before.backdrop_generation_ &&
         layers_.size() == before.layers_.size() &&
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
    if (now.placed == then.placed && now.visible == then.visible &&
        now.generation == then.generation) {
      continue;
    }
    AddRows(band, then.visible);
    AddRows(band, now.visible);
  }
  if (caret_ != before.caret_) {
    if (caret_) AddRows(band, *caret_);
    if (before.caret_) AddRows(band, *before.caret_);
  }
  if (marks_ != before.marks_) {
    for (const DesignMark& mark : marks_) AddRows(band, mark.rect);
    for (const DesignMark& mark : before.marks_) AddRows(band, mark.rect);
  }
  return band;
}

}  // namespace kestu
