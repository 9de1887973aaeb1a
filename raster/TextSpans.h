#pragma once
// Text laid out as runs of pixels. The raster fills the runs itself; the
// system text call clips them to its rectangle first. Both lay text out
// here, so a caption and a Print of the same string cover the same pixels.

#include <string_view>

#include "kestu/foundation/Surface.h"
#include "kestu/foundation/Text.h"
#include "kestu/raster/Font.h"

namespace kestu {

// Calls `sink(rect)` for each run of the glyph with the pen at (pen_x,
// baseline); returns its advance.
template <typename Sink>
int PaintGlyph(const Glyph& glyph, int pen_x, int baseline, Sink& sink) {
  for (const GlyphSpan& span : glyph.spans) {
    const int left = pen_x + span.x;
    const int top = baseline + span.dy;
    sink(PixelRect{left, top, left + span.length, top + 1});
  }
  return glyph.advance;
}

// Width of a string: the sum of its advances, without kerning, so that a
// string measures the same as its parts.
inline int TextAdvance(Font& font, std::string_view utf8) {
  int width = 0;
  ForEachCodePoint(utf8, [&](char32_t c) { width += font.GlyphFor(c).advance; });
  return width;
}

inline PixelRect UnderlineRect(const FontMetrics& m, int x, int baseline, int width) {
  const int top = baseline + m.underline_offset;
  return {x, top, x + width, top + m.underline_thickness};
}

inline PixelRect StrikeoutRect(const FontMetrics& m, int x, int baseline, int width) {
  const int top = baseline - m.strikeout_offset;
  return {x, top, x + width, top + m.strikeout_thickness};
}

// The underline and strikeout a font spec asks for, across `width`.
template <typename Sink>
void PaintDecorations(const FontSpec& spec, const FontMetrics& m, int x, int baseline, int width,
                      Sink& sink) {
  if (width <= 0) return;
  if (spec.underline) sink(UnderlineRect(m, x, baseline, width));
  if (spec.strikethrough) sink(StrikeoutRect(m, x, baseline, width));
}

}  // namespace kestu
