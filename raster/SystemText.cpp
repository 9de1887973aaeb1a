#include "kestu/raster/SystemText.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

#include "Clip.h"
#include "TextSpans.h"
#include "kestu/foundation/Text.h"
#include "kestu/raster/FontEngine.h"

namespace kestu {

namespace {

// One character as laid out: whether the prefix "&" before it asked for
// it to be underlined.
using Line = std::vector<CaptionCharacter>;

constexpr PixelRect kNoClipRect{INT_MIN, INT_MIN, INT_MAX, INT_MAX};

// Text is laid out in 64 bits and placed back within this reach: a line
// placed further off than any surface is wide is not seen either way, and
// its pixels' coordinates must not overflow.
constexpr int64_t kReach = int64_t{1} << 29;

int Place(int64_t position) {
  return static_cast<int>(std::clamp(position, -kReach, kReach));
}

int64_t FloorHalf(int64_t value) {
  return value >= 0 ? value / 2 : -((1 - value) / 2);
}

// The first `length` characters of `text` (all of them for a negative
// length), split into lines at "\n" unless the text is one line.
std::vector<std::u32string> SplitLines(std::string_view text, int32_t length, bool single_line) {
  std::vector<std::u32string> lines(1);
  size_t pos = 0;
  for (int32_t taken = 0; pos < text.size() && (length < 0 || taken < length); ++taken) {
    const char32_t c = NextCodePoint(text, pos);
    if (c == U'\n' && !single_line) {
      // "\r\n" is one break, not a carriage return and a break.
      if (!lines.back().empty() && lines.back().back() == U'\r') lines.back().pop_back();
      lines.emplace_back();
    } else {
      lines.back().push_back(c);
    }
  }
  return lines;
}

// With prefixes, the caption rule ("&" underlines the next character);
// without, every character stands as it is.
Line ApplyPrefixes(const std::u32string& text, bool prefixes) {
  if (prefixes) return ParseCaption(text);
  Line line;
  line.reserve(text.size());
  for (char32_t c : text) line.push_back({c, false});
  return line;
}

int Advance(Font& font, const Line& line, size_t begin, size_t end) {
  int width = 0;
  for (size_t i = begin; i < end; ++i) width += font.GlyphFor(line[i].code_point).advance;
  return width;
}

int LineWidth(Font& font, const Line& line) {
  return Advance(font, line, 0, line.size());
}

// Breaks a line at spaces so that each part fits `width`; a word wider
// than the box keeps a line to itself, and the spaces where a line breaks
// are dropped.
void AppendWrapped(Font& font, const Line& line, int width, std::vector<Line>& out) {
  Line current;
  int current_width = 0;  // including its trailing spaces
  size_t word = 0;
  while (word < line.size()) {
    size_t word_end = word;
    while (word_end < line.size() && line[word_end].code_point != U' ') ++word_end;
    size_t spaces_end = word_end;
    while (spaces_end < line.size() && line[spaces_end].code_point == U' ') ++spaces_end;
    const int word_width = Advance(font, line, word, word_end);
    if (!current.empty() && current_width + word_width > width) {
      while (!current.empty() && current.back().code_point == U' ') current.pop_back();
      out.push_back(std::move(current));
      current.clear();
      current_width = 0;
    }
    current.insert(current.end(), line.begin() + static_cast<ptrdiff_t>(word),
                   line.begin() + static_cast<ptrdiff_t>(spaces_end));
    current_width += word_width + Advance(font, line, word_end, spaces_end);
    word = spaces_end;
  }
  out.push_back(std::move(current));
}

std::vector<Line> LayOutLines(Font& font, std::string_view text, int32_t length, const RECT& rect,
                              int32_t flags) {
  const bool single_line = (flags & dt::kSingleLine) != 0;
  const bool prefixes = (flags & dt::kNoPrefix) == 0;
  const bool wrap = !single_line && (flags & dt::kWordBreak) != 0;
  std::vector<Line> lines;
  for (const std::u32string& raw : SplitLines(text, length, single_line)) {
    Line line = ApplyPrefixes(raw, prefixes);
    if (wrap) {
      AppendWrapped(font, line, Saturate(int64_t{rect.Right} - rect.Left), lines);
    } else {
      lines.push_back(std::move(line));
    }
  }
  return lines;
}

// Top of the first line. Vertical placement applies to a single line
// only, as the system's call has it.
int FirstLineTop(const RECT& rect, int32_t flags, int text_height) {
  const int64_t top = rect.Top;
  const int64_t bottom = rect.Bottom;
  if ((flags & dt::kSingleLine) == 0) return Place(top);
  if ((flags & dt::kBottom) != 0) return Place(bottom - text_height);
  if ((flags & dt::kVCenter) != 0) return Place(top + FloorHalf(bottom - top - text_height));
  return Place(top);
}

int LineLeft(const RECT& rect, int32_t flags, int line_width) {
  const int64_t left = rect.Left;
  const int64_t right = rect.Right;
  if ((flags & dt::kCenter) != 0) return Place(left + FloorHalf(right - left - line_width));
  if ((flags & dt::kRight) != 0) return Place(right - line_width);
  return Place(left);
}

}  // namespace

int32_t DrawSystemText(Surface& surface, const FontSpec& spec, std::string_view text,
                       int32_t length, RECT& rect, int32_t flags, Rgb color) {
  Font& font = FontEngine::Instance().FontFor(spec);
  const FontMetrics& metrics = font.Metrics();
  const std::vector<Line> lines = LayOutLines(font, text, length, rect, flags);
  const int text_height = Saturate(int64_t{metrics.height} * static_cast<int64_t>(lines.size()));

  if ((flags & dt::kCalcRect) != 0) {
    int widest = 0;
    for (const Line& line : lines) widest = std::max(widest, LineWidth(font, line));
    rect.Right = Saturate(int64_t{rect.Left} + widest);
    rect.Bottom = Saturate(int64_t{rect.Top} + text_height);
    return text_height;
  }

  const PixelRect clip = (flags & dt::kNoClip) != 0
                             ? kNoClipRect
                             : PixelRect{rect.Left, rect.Top, rect.Right, rect.Bottom};
  auto fill = [&](const PixelRect& run) {
    const PixelRect visible = Intersect(run, clip);
    if (!IsEmpty(visible)) surface.FillRect(visible, color, RasterOp::CopyPen);
  };
  int top = FirstLineTop(rect, flags, text_height);
  for (const Line& line : lines) {
    if (top >= surface.Height()) break;  // the rest is below the surface
    const int baseline = top + metrics.ascent;
    const int left = LineLeft(rect, flags, LineWidth(font, line));
    int pen_x = left;
    for (const CaptionCharacter& cell : line) {
      const int advance = PaintGlyph(font.GlyphFor(cell.code_point), pen_x, baseline, fill);
      if (cell.underline) fill(UnderlineRect(metrics, pen_x, baseline, advance));
      pen_x += advance;
    }
    PaintDecorations(spec, metrics, left, baseline, pen_x - left, fill);
    top += metrics.height;
  }
  return text_height;
}

void DrawSystemFocusRect(Surface& surface, const PixelRect& rect) {
  if (IsEmpty(rect)) return;
  const PixelRect visible = Intersect(rect, {0, 0, surface.Width(), surface.Height()});
  if (IsEmpty(visible)) return;
  // The dots follow one checkerboard across the surface, so every pixel of
  // the frame is visited once, even where sides meet or coincide.
  const auto dot = [&](int x, int y) {
    if (((x + y) & 1) == 0) surface.SetPixel(x, y, 0, RasterOp::Invert);
  };
  const auto row = [&](int y) {
    if (y < visible.top || y >= visible.bottom) return;
    for (int x = visible.left; x < visible.right; ++x) dot(x, y);
  };
  const auto column = [&](int x) {
    if (x < visible.left || x >= visible.right) return;
    const int inner_bottom = std::min(rect.bottom - 1, visible.bottom);
    for (int y = std::max(rect.top + 1, visible.top); y < inner_bottom; ++y) dot(x, y);
  };
  const int last_x = rect.right - 1;
  const int last_y = rect.bottom - 1;
  row(rect.top);
  if (last_y != rect.top) row(last_y);
  column(rect.left);
  if (last_x != rect.left) column(last_x);
}

}  // namespace kestu
