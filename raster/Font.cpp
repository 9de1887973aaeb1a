#include "kestu/raster/Font.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cmath>

namespace kestu {

namespace {

// Glyphs are hinted for, and rendered to, one bit per pixel: the raster
// operations (a caption inverted under a progress bar) must hit exactly
// the pixels the text covers.
constexpr FT_Int32 kLoadFlags = FT_LOAD_TARGET_MONO;

// The shear of a synthesised italic: about 12 degrees, as type designers'
// own obliques lean.
constexpr FT_Matrix kObliqueShear{0x10000, 0x0366A, 0, 0x10000};

int RoundF26(FT_Pos value) {
  return static_cast<int>((value + 32) >> 6);
}

// How much a synthesised bold widens each stem, in 26.6: whole pixels, at
// least one, so that a bold caption is visibly bold at small sizes and its
// advance stays a whole number of pixels.
FT_Pos BoldStrength(FT_Face face) {
  const FT_Pos em = FT_MulFix(face->units_per_EM, face->size->metrics.y_scale);
  return std::max<FT_Pos>(64, (em / 24 + 32) & ~FT_Pos{63});
}

FontMetrics MetricsWithoutFace(double pixel_size) {
  FontMetrics m;
  m.ascent = static_cast<int>(std::lround(pixel_size * 0.8));
  m.descent = static_cast<int>(std::lround(pixel_size * 0.2));
  m.height = m.ascent + m.descent;
  m.strikeout_offset = m.ascent / 3;
  return m;
}

FontMetrics MetricsOf(FT_Face face) {
  const FT_Size_Metrics& size = face->size->metrics;
  FontMetrics m;
  m.ascent = RoundF26(size.ascender);
  m.descent = -RoundF26(size.descender);
  m.height = m.ascent + m.descent;
  m.strikeout_offset = m.ascent / 3;
  if (!FT_IS_SCALABLE(face)) return m;

  const FT_Pos thickness = FT_MulFix(face->underline_thickness, size.y_scale);
  m.underline_thickness = std::max(1, RoundF26(thickness));
  // The font gives the centre of its underline; the cell must keep it.
  const FT_Pos centre_below = -FT_MulFix(face->underline_position, size.y_scale);
  m.underline_offset = RoundF26(centre_below - m.underline_thickness * 32);
  m.underline_offset = std::max(0, std::min(m.underline_offset, m.descent - m.underline_thickness));

  if (const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2))) {
    m.strikeout_offset = RoundF26(FT_MulFix(os2->yStrikeoutPosition, size.y_scale));
    m.strikeout_thickness = std::max(1, RoundF26(FT_MulFix(os2->yStrikeoutSize, size.y_scale)));
  }
  return m;
}

bool PixelSet(const FT_Bitmap& bitmap, const unsigned char* row, unsigned x) {
  switch (bitmap.pixel_mode) {
    case FT_PIXEL_MODE_MONO:
      return (row[x >> 3] & (0x80 >> (x & 7))) != 0;
    case FT_PIXEL_MODE_GRAY:
      return row[x] >= 128;
    case FT_PIXEL_MODE_BGRA:
      return row[4 * x + 3] >= 128;
    default:
      return false;
  }
}

// The set pixels of a rendered glyph as runs along its rows.
std::vector<GlyphSpan> SpansOf(const FT_Bitmap& bitmap, int left, int top) {
  std::vector<GlyphSpan> spans;
  // With an upward flow the buffer starts at the bottom row.
  const unsigned char* first_row = bitmap.buffer;
  if (bitmap.pitch < 0) first_row -= static_cast<ptrdiff_t>(bitmap.pitch) * (bitmap.rows - 1);
  for (unsigned r = 0; r < bitmap.rows; ++r) {
    const unsigned char* row = first_row + static_cast<ptrdiff_t>(bitmap.pitch) * r;
    unsigned x = 0;
    while (x < bitmap.width) {
      if (!PixelSet(bitmap, row, x)) {
        ++x;
        continue;
      }
      const unsigned start = x;
      while (x < bitmap.width && PixelSet(bitmap, row, x)) ++x;
      spans.push_back({static_cast<int16_t>(left + static_cast<int>(start)),
                       static_cast<int16_t>(static_cast<int>(r) - top),
                       static_cast<int16_t>(x - start)});
    }
  }
  return spans;
}

// The ink box of the glyph's spans, and its rows as bit masks when narrow.
void MeasureInk(Glyph& glyph) {
  if (glyph.spans.empty()) return;
  const GlyphSpan& first = glyph.spans.front();
  glyph.ink_left = first.x;
  glyph.ink_right = static_cast<int16_t>(first.x + first.length);
  glyph.ink_top = first.dy;
  glyph.ink_bottom = static_cast<int16_t>(first.dy + 1);
  for (const GlyphSpan& span : glyph.spans) {
    glyph.ink_left = std::min(glyph.ink_left, span.x);
    glyph.ink_right = std::max(glyph.ink_right, static_cast<int16_t>(span.x + span.length));
    glyph.ink_top = std::min(glyph.ink_top, span.dy);
    glyph.ink_bottom = std::max(glyph.ink_bottom, static_cast<int16_t>(span.dy + 1));
  }
  if (glyph.ink_right - glyph.ink_left > 8) return;
  glyph.row_masks.assign(static_cast<size_t>(glyph.ink_bottom - glyph.ink_top), 0);
  for (const GlyphSpan& span : glyph.spans) {
    const unsigned run = ((1u << span.length) - 1) << (span.x - glyph.ink_left);
    glyph.row_masks[static_cast<size_t>(span.dy - glyph.ink_top)] |= static_cast<uint8_t>(run);
  }
}

}  // namespace

Font::Font(FT_FaceRec_* face, FT_FaceRec_* fallback, SyntheticStyle synthetic, double pixel_size)
    : face_(face),
      fallback_(fallback),
      synthetic_(synthetic),
      metrics_(face != nullptr ? MetricsOf(face) : MetricsWithoutFace(pixel_size)) {}

const Glyph& Font::GlyphFor(char32_t code_point) {
  if (code_point < latin1_.size()) {
    std::unique_ptr<Glyph>& cached = latin1_[code_point];
    if (!cached) cached = std::make_unique<Glyph>(Render(code_point));
    return *cached;
  }
  auto found = others_.find(code_point);
  if (found == others_.end()) found = others_.emplace(code_point, Render(code_point)).first;
  return found->second;
}

Glyph Font::Render(char32_t code_point) const {
  if (face_ == nullptr) return {};
  FT_Face face = face_;
  FT_UInt index = FT_Get_Char_Index(face, code_point);
  if (index == 0 && fallback_ != nullptr) {
    if (const FT_UInt covered = FT_Get_Char_Index(fallback_, code_point); covered != 0) {
      face = fallback_;
      index = covered;
    }
  }
  // Outlines first, so that styles can be synthesised; a face made only of
  // bitmaps gives its bitmaps.
  if (FT_Load_Glyph(face, index, kLoadFlags | FT_LOAD_NO_BITMAP) != 0 &&
      FT_Load_Glyph(face, index, kLoadFlags) != 0) {
    return {};
  }
  FT_GlyphSlot slot = face->glyph;
  Glyph glyph;
  glyph.advance = RoundF26(slot->advance.x);
  if (slot->format == FT_GLYPH_FORMAT_OUTLINE) {
    if (synthetic_.bold) {
      // Widened to the right only, so the glyph keeps its left edge.
      const FT_Pos strength = BoldStrength(face);
      FT_Outline_EmboldenXY(&slot->outline, strength, 0);
      FT_Outline_Translate(&slot->outline, strength / 2, 0);
      glyph.advance += RoundF26(strength);
    }
    if (synthetic_.oblique) FT_Outline_Transform(&slot->outline, &kObliqueShear);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO) != 0) return glyph;
  }
  if (slot->format == FT_GLYPH_FORMAT_BITMAP) {
    glyph.spans = SpansOf(slot->bitmap, slot->bitmap_left, slot->bitmap_top);
    MeasureInk(glyph);
  }
  return glyph;
}

}  // namespace kestu
