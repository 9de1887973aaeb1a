#include "designer/PropertyGrid.h"

#include <algorithm>

#include "kestu/foundation/Keys.h"

namespace kestu {

ClassInfo& PropertyGrid::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "PropertyGrid";
    c.help = "The designer's list of a control's properties and their values.";
    c.default_width = 3600;
    c.default_height = 4800;
    c.create = [] { return std::make_unique<PropertyGrid>(); };
    c.properties = SharedProperties(false);
    c.redraw = [](UserControl& grid) { static_cast<PropertyGrid&>(grid).Redraw(); };
    return c;
  }();
  return info;
}

void PropertyGrid::SetRows(std::vector<Row> rows) {
  std::string chosen_name = chosen_ >= 0 && chosen_ < static_cast<int>(rows_.size())
                                ? rows_[static_cast<size_t>(chosen_)].name
                                : std::string();
  rows_ = std::move(rows);
  chosen_ = rows_.empty() ? -1 : 0;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].name == chosen_name) chosen_ = static_cast<int>(i);
  }
  top_ = std::min(top_, std::max(0, static_cast<int>(rows_.size()) - VisibleRows()));
  ScrollToChosen();
  Redraw();
}

void PropertyGrid::Choose(int index) {
  if (rows_.empty()) return;
  chosen_ = std::clamp(index, 0, static_cast<int>(rows_.size()) - 1);
  ScrollToChosen();
  Redraw();
  if (on_chosen_) on_chosen_(chosen_);
}

int PropertyGrid::VisibleRows() const {
  return std::max(1, PixelHeight() / kRowHeight);
}

void PropertyGrid::ScrollToChosen() {
  if (chosen_ < 0) return;
  if (chosen_ < top_) top_ = chosen_;
  if (chosen_ >= top_ + VisibleRows()) top_ = chosen_ - VisibleRows() + 1;
}

void PropertyGrid::UserControl_KeyDown(int16_t& key_code, int16_t& /*shift*/) {
  const int page = VisibleRows() - 1;
  switch (key_code) {
    case key::kUp:
      Choose(chosen_ - 1);
      break;
    case key::kDown:
      Choose(chosen_ + 1);
      break;
    case key::kPageUp:
      Choose(chosen_ - page);
      break;
    case key::kPageDown:
      Choose(chosen_ + page);
      break;
    case key::kHome:
      Choose(0);
      break;
    case key::kEnd:
      Choose(static_cast<int>(rows_.size()) - 1);
      break;
    default:
      break;
  }
}

void PropertyGrid::UserControl_MouseDown(int16_t& button, int16_t& /*shift*/, float& /*x*/,
                                         float& y) {
  if (button != button::kLeft) return;
  const int row = top_ + static_cast<int>(y) / std::max(1, ScreenTwipsPerPixelY()) / kRowHeight;
  if (row < static_cast<int>(rows_.size())) Choose(row);
}

void PropertyGrid::Draw() {
  const int width = PixelWidth();
  const int height = PixelHeight();
  const int divider = width * 2 / 5;
  UserControl::SetBackColor(syscolor::kWindowBackground);
  Cls();
  const auto w = static_cast<float>(width);
  for (int i = top_; i < static_cast<int>(rows_.size()); ++i) {
    const int top = (i - top_) * kRowHeight;
    if (top >= height) break;
    const Row& row = rows_[static_cast<size_t>(i)];
    const auto t = static_cast<float>(top);
    const auto b = static_cast<float>(top + kRowHeight - 1);
    const bool chosen = i == chosen_;
    if (chosen) {
      Line(0, t, static_cast<float>(divider), b, syscolor::kHighlight, LineKind::FilledBox);
    }
    Line(0, b, w, b, syscolor::kButtonFace);
    UserControl::SetForeColor(chosen ? syscolor::kHighlightText : syscolor::kWindowText);
    const int32_t flags = dt::kSingleLine | dt::kVCenter | dt::kNoPrefix;
    RECT name_cell{4, top, divider - 2, top + kRowHeight - 1};
    KestuControlsAPI::DrawTextA(hDC(), row.name, -1, name_cell, flags);
    UserControl::SetForeColor(syscolor::kWindowText);
    RECT value_cell{divider + 4, top, width - 2, top + kRowHeight - 1};
    KestuControlsAPI::DrawTextA(hDC(), row.value, -1, value_cell, flags);
  }
  const auto d = static_cast<float>(divider);
  Line(d, 0, d, static_cast<float>(height), syscolor::kButtonFace);
  Line(0, 0, w - 1, static_cast<float>(height - 1), syscolor::kButtonShadow, LineKind::Box);
}

}  // namespace kestu
