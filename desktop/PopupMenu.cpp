#include "kestu/desktop/PopupMenu.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "kestu/foundation/Text.h"
#include "kestu/host/KeyStroke.h"

namespace kestu {

namespace {

// The system's menu font: 8 points at 96 pixels per inch.
constexpr FontSpec kMenuFont{.name = "MS Sans Serif", .pixel_size = 11.0};
constexpr int kFrame = 3;             // raised frame, three pixels each side
constexpr int kTextIndent = 17;       // room on the left for a check mark
constexpr int kTextRightMargin = 17;  // room on the right for a submenu arrow
constexpr int kItemPadding = 3;       // above and below the text
constexpr int kSeparatorHeight = 9;

// A caption without its "&" marks, and where its access key's character
// is in it (npos when it has none).
struct ShownCaption {
  std::string text;
  size_t access = std::string::npos;  // a byte offset in `text`
  size_t access_length = 0;           // the character's UTF-8 bytes
  char32_t access_key = 0;
};

ShownCaption Shown(const std::string& caption) {
  ShownCaption shown;
  for (const CaptionCharacter& c : ParseCaption(DecodeUtf8(caption))) {
    const size_t at = shown.text.size();
    AppendUtf8(c.code_point, shown.text);
    if (c.underline && shown.access == std::string::npos) {
      shown.access = at;
      shown.access_length = shown.text.size() - at;
      shown.access_key = c.code_point;
    }
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
    // The key that types the character: "&s" and "&S" are the S key, "&ç"
    // the key that carries "ç".
    if (KeyStrokeFor(shown.access_key).key_code == key_code) return static_cast<int>(i);
  }
  return std::nullopt;
}

MenuKeyResult PopupMenu::PressKey(int16_t key_code) {
  switch (key_code) {
    case key::kUp:
      SetHighlight(Step(highlighted_, -1));
      return {};
    case key::kDown:
      SetHighlight(Step(highlighted_, +1));
      return {};
    case key::kEscape:
      return {.closed = true};
    case key::kEnter:  // a disabled item keeps the menu open, as the system's does
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
  picture_.DrawText(underlined, shown.text.substr(shown.access, shown.access_length), x + before, y,
                    ink, RasterOp::CopyPen);
}

}  // namespace kestu
