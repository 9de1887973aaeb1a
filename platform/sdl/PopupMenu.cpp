#include "kestu/sdl/PopupMenu.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace kestu {

namespace {

// The system's menu font: 8 points at 96 pixels per inch.
constexpr FontSpec kMenuFont{.name = "MS Sans Serif", .pixel_size = 11.0};
constexpr int kFrame = 3;             // raised frame, three pixels each side
constexpr int kTextIndent = 17;       // room on the left for a check mark
constexpr int kTextRightMargin = 17;  // room on the right for a submenu arrow
constexpr int kItemPadding = 3;       // above and below the text
constexpr int kSeparatorHeight = 9;

// A caption without its "&" marks, and the position of the access key's
// character in it (npos when none).
struct ShownCaption {
  std::string text;
  size_t access = std::string::npos;
};

ShownCaption Shown(const std::string& caption) {
  ShownCaption shown;
  for (size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) {
      ++i;
      if (caption[i] != '&' && shown.access == std::string::npos) shown.access = shown.text.size();
    }
    shown.text += caption[i];
  }
  return shown;
}

Rgb System(OLE_COLOR color) {
  return ResolveColor(color);
}

}  // namespace

PopupMenu::PopupMenu(std::vector<MenuItem> items) : items_(std::move(items)) {
  Layout();
  Draw();
}

void PopupMenu::Layout() {
  const int text_height = picture_.MeasureText(kMenuFont, "M").height;
  int widest = 0;
  int top = kFrame;
  rows_.clear();
  for (const MenuItem& item : items_) {
    const int height = item.IsSeparator() ? kSeparatorHeight : text_height + 2 * kItemPadding;
    rows_.push_back({top, height});
    top += height;
    if (!item.IsSeparator()) {
      widest = std::max(widest, picture_.MeasureText(kMenuFont, Shown(item.caption).text).width);
    }
  }
  const int width = 2 * kFrame + kTextIndent + widest + kTextRightMargin;
  picture_.Resize(width, top + kFrame, System(syscolor::kButtonFace));
}

int PopupMenu::ItemAt(int x, int y) const {
  if (x < kFrame || x >= Width() - kFrame) return -1;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (y >= rows_[i].top && y < rows_[i].top + rows_[i].height) return static_cast<int>(i);
  }
  return -1;
}

std::optional<int> PopupMenu::ChoiceAt(int x, int y) const {
  const int index = ItemAt(x, y);
  if (index < 0 || items_[index].IsSeparator() || !items_[index].enabled) return std::nullopt;
  return index;
}

void PopupMenu::PointAt(int x, int y) {
  const int index = ItemAt(x, y);
  SetHighlight(index >= 0 && !items_[index].IsSeparator() ? index : -1);
}

void PopupMenu::SetHighlight(int index) {
  if (index == highlighted_) return;
  const int previous = highlighted_;
  highlighted_ = index;
  if (previous >= 0) DrawItem(previous);
  if (index >= 0) DrawItem(index);
}

int PopupMenu::Step(int from, int direction) const {
  const int count = static_cast<int>(items_.size());
  int index = from;
  for (int tried = 0; tried < count; ++tried) {
    index = index < 0 ? (direction > 0 ? 0 : count - 1) : (index + direction + count) % count;
    if (!items_[index].IsSeparator()) return index;
  }
  return -1;
}

std::optional<int> PopupMenu::AccessKeyItem(int16_t key_code) const {
  for (size_t i = 0; i < items_.size(); ++i) {
    const ShownCaption shown = Shown(items_[i].caption);
    if (shown.access == std::string::npos) continue;
    const int key = std::toupper(static_cast<unsigned char>(shown.text[shown.access]));
    if (key == key_code) return static_cast<int>(i);
  }
  return std::nullopt;
}

MenuKeyResult PopupMenu::PressKey(int16_t key_code) {
  switch (key_code) {
    case 38:  // Up
      SetHighlight(Step(highlighted_, -1));
      return {};
    case 40:  // Down
      SetHighlight(Step(highlighted_, +1));
      return {};
    case 27:  // Escape
      return {.closed = true};
    case 13:  // Enter: a disabled item keeps the menu open, as the system's does
      if (highlighted_ < 0) return {.closed = true};
      if (!items_[highlighted_].enabled) return {};
      return {.closed = true, .chosen = highlighted_};
    default:
      break;
  }
  if (const std::optional<int> item = AccessKeyItem(key_code)) {
    if (!items_[*item].enabled) return {};
    return {.closed = true, .chosen = *item};
  }
  return {};
}

void PopupMenu::Draw() {
  const int w = Width();
  const int h = Height();
  picture_.FillRect({0, 0, w, h}, System(syscolor::kButtonFace), RasterOp::CopyPen);
  // The raised frame: light then highlight on the top and left, dark
  // shadow then shadow on the bottom and right.
  const auto edge = [&](int inset, Rgb top_left, Rgb bottom_right) {
    picture_.FillRect({inset, inset, w - inset, inset + 1}, top_left, RasterOp::CopyPen);
    picture_.FillRect({inset, inset, inset + 1, h - inset}, top_left, RasterOp::CopyPen);
    picture_.FillRect({inset, h - inset - 1, w - inset, h - inset}, bottom_right,
                      RasterOp::CopyPen);
    picture_.FillRect({w - inset - 1, inset, w - inset, h - inset}, bottom_right,
                      RasterOp::CopyPen);
  };
  edge(0, System(syscolor::k3DLight), System(syscolor::k3DDarkShadow));
  edge(1, System(syscolor::k3DHighlight), System(syscolor::kButtonShadow));
  for (size_t i = 0; i < items_.size(); ++i) DrawItem(static_cast<int>(i));
}

void PopupMenu::DrawItem(int index) {
  const MenuItem& item = items_[index];
  const Row& row = rows_[index];
  const PixelRect cell{kFrame, row.top, Width() - kFrame, row.top + row.height};
  if (item.IsSeparator()) {
    const int middle = row.top + row.height / 2 - 1;
    picture_.FillRect({cell.left + 1, middle, cell.right - 1, middle + 1},
                      System(syscolor::kButtonShadow), RasterOp::CopyPen);
    picture_.FillRect({cell.left + 1, middle + 1, cell.right - 1, middle + 2},
                      System(syscolor::k3DHighlight), RasterOp::CopyPen);
    return;
  }
  const bool lit = index == highlighted_;
  picture_.FillRect(cell, System(lit ? syscolor::kHighlight : syscolor::kButtonFace),
                    RasterOp::CopyPen);
  const ShownCaption shown = Shown(item.caption);
  const int x = kFrame + kTextIndent;
  const int y = row.top + kItemPadding;
  Rgb ink = System(lit ? 0x8000000E : syscolor::kButtonText);  // highlighted text
  if (!item.enabled) {
    // Greyed and, when not highlighted, embossed: the text in white one
    // pixel down and right under the grey.
    if (!lit) {
      picture_.DrawText(kMenuFont, shown.text, x + 1, y + 1, System(syscolor::k3DHighlight),
                        RasterOp::CopyPen);
    }
    ink = System(syscolor::kButtonShadow);
  }
  picture_.DrawText(kMenuFont, shown.text, x, y, ink, RasterOp::CopyPen);
  if (shown.access == std::string::npos) return;
  // The access key's character again, underlined, over itself.
  const int before = picture_.MeasureText(kMenuFont, shown.text.substr(0, shown.access)).width;
  FontSpec underlined = kMenuFont;
  underlined.underline = true;
  size_t length = 1;  // the whole UTF-8 sequence of the character
  while (shown.access + length < shown.text.size() &&
         (static_cast<unsigned char>(shown.text[shown.access + length]) & 0xC0) == 0x80) {
    ++length;
  }
  picture_.DrawText(underlined, shown.text.substr(shown.access, length), x + before, y, ink,
                    RasterOp::CopyPen);
}

}  // namespace kestu
