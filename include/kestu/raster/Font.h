#pragma once
// One font face at one pixel size and style, with its rendered glyphs.
// Glyphs are monochrome and hinted, so the raster operations apply to
// whole pixels and drawings are the same on every run.

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

struct FT_FaceRec_;

namespace kestu {

// A horizontal run of set pixels of a glyph, relative to the pen on the
// baseline: row `dy` (negative is above the baseline), columns
// [x, x + length).
struct GlyphSpan {
  int16_t x = 0;
  int16_t dy = 0;
  int16_t length = 0;
};

struct Glyph {
  int advance = 0;  // pixels
  std::vector<GlyphSpan> spans;
  // The box the spans cover, relative to the pen on the baseline, as
  // [ink_left, ink_right) x [ink_top, ink_bottom): a glyph wholly inside
  // the raster is drawn without clipping each span.
  int16_t ink_left = 0;
  int16_t ink_top = 0;
  int16_t ink_right = 0;
  int16_t ink_bottom = 0;
  // For a glyph whose ink is at most 8 pixels wide, one byte per row of the
  // ink box, top down: bit i is column ink_left + i. Empty for wider glyphs.
  std::vector<uint8_t> row_masks;
};

// Vertical measures in whole pixels.
struct FontMetrics {
  int ascent = 0;            // baseline below the cell's top
  int descent = 0;           // cell's bottom below the baseline
  int height = 0;            // ascent + descent: the line height
  int underline_offset = 1;  // top row of the underline below the baseline
  int underline_thickness = 1;
  int strikeout_offset = 3;  // top row of the strikeout above the baseline
  int strikeout_thickness = 1;
};

// How a face must be altered for a style its family has no file for.
struct SyntheticStyle {
  bool bold = false;
  bool oblique = false;
  friend bool operator==(const SyntheticStyle&, const SyntheticStyle&) = default;
};

class Font {
 public:
  // Renders from `face` (already sized), reaching for `fallback` (sized
  // alike, may be null) for characters `face` lacks. Neither is owned. A
  // null `face` gives a font of empty glyphs whose metrics follow
  // `pixel_size`, so text never fails to lay out.
  Font(FT_FaceRec_* face, FT_FaceRec_* fallback, SyntheticStyle synthetic, double pixel_size);
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;

  const FontMetrics& Metrics() const { return metrics_; }
  // The glyph of a character, rendered on first use and kept.
  const Glyph& GlyphFor(char32_t code_point);

 private:
  Glyph Render(char32_t code_point) const;

  FT_FaceRec_* face_;
  FT_FaceRec_* fallback_;
  SyntheticStyle synthetic_;
  FontMetrics metrics_;
  // Latin-1 is looked up by index: captions are mostly made of it.
  std::array<std::unique_ptr<Glyph>, 256> latin1_;
  std::unordered_map<char32_t, Glyph> others_;
};

}  // namespace kestu
