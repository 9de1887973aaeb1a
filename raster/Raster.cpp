#include "kestu/raster/Raster.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fstream>

#include "Clip.h"
#include "RowOps.h"
#include "TextSpans.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/raster/FontEngine.h"

namespace kestu {

namespace {

__extension__ using Int128 = __int128;

constexpr Rgb kOpaque = 0xFF000000u;
constexpr uint32_t kAlphaHalf = 0x80u;

// Runs shorter than this are drawn inline rather than by the wide row loop.
constexpr int kWideRun = 16;

// Text placed this far off the raster cannot reach it, and laying it out
// there could overflow the coordinates.
constexpr int kFarOutside = 1 << 29;

int NonNegative(int value) {
  return std::max(value, 0);
}

// The rectangle of a `width` x `height` block at (x, y), its far edges
// held at the largest coordinate rather than wrapping.
PixelRect BlockAt(int x, int y, int width, int height) {
  return {x, y, Saturate(int64_t{x} + width), Saturate(int64_t{y} + height)};
}

// Source index for destination index `i` of `dst_size` stretched from
// `src_size`: the source pixel under the destination pixel's centre.
int NearestSource(int i, int dst_size, int src_size) {
  return static_cast<int>((2 * static_cast<int64_t>(i) + 1) * src_size / (2 * int64_t{dst_size}));
}

// Applies an operation fixed at compile time to `area`, already clipped,
// of a block of pixels `stride` wide.
template <RasterOp kOp>
void ApplyToArea(Rgb* pixels, int stride, const PixelRect& area, Rgb pen) {
  const int count = area.right - area.left;
  for (int y = area.top; y < area.bottom; ++y) {
    Rgb* run = pixels + static_cast<size_t>(y) * stride + area.left;
    for (int i = 0; i < count; ++i) run[i] = ApplyRasterOp(kOp, pen, run[i]);
  }
}

}  // namespace

Raster::Raster(int width, int height, Rgb fill)
    : width_(NonNegative(width)),
      height_(NonNegative(height)),
      pixels_(static_cast<size_t>(width_) * height_, fill & 0x00FFFFFFu) {
  Touch();
}

void Raster::Touch() {
  debt_.Settle();
  // The stamp is taken when it is asked for: a face drawn in twenty
  // primitives takes one stamp, not twenty.
  restamp_ = true;
}

// One counter for every raster, so that a stamp names one state of one
// raster's pixels and never another's.
uint64_t Raster::Generation() const {
  debt_.Settle();
  if (restamp_) {
    static std::atomic<uint64_t> last_stamp{0};
    generation_ = last_stamp.fetch_add(1, std::memory_order_relaxed) + 1;
    restamp_ = false;
  }
  return generation_;
}

void Raster::Resize(int width, int height, Rgb fill) {
  Raster resized(width, height, fill);
  resized.Blit(*this, 0, 0);
  *this = std::move(resized);
}

Rgb Raster::GetPixel(int x, int y) const {
  debt_.Settle();
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
  return Row(y)[x];
}

void Raster::SetPixel(int x, int y, Rgb color, RasterOp op) {
  Touch();
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
  Rgb& pixel = Row(y)[x];
  pixel = ApplyRasterOp(op, color, pixel);
}

void Raster::FillRect(const PixelRect& rect, Rgb color, RasterOp op) {
  Touch();
  const PixelRect clipped = Intersect(rect, Bounds());
  if (IsEmpty(clipped)) return;
  // Rows the full width of the raster lie end to end: one run covers them.
  const int64_t block = int64_t{width_} * (clipped.bottom - clipped.top);
  if (clipped.left == 0 && clipped.right == width_ && block <= INT32_MAX) {
    ApplyRow(Row(clipped.top), static_cast<int>(block), color, op);
    return;
  }
  const int count = clipped.right - clipped.left;
  if (count >= kWideRun) {
    for (int y = clipped.top; y < clipped.bottom; ++y)
      ApplyRow(Row(y) + clipped.left, count, color, op);
    return;
  }
  // Glyph runs and the sides of frames: too short for wide stores, and too
  // many to pay a call per row.
  DispatchRasterOp(op,
                   [&](auto kOp) { ApplyToArea<kOp()>(pixels_.data(), width_, clipped, color); });
}

void Raster::DrawLine(int x1, int y1, int x2, int y2, Rgb color, RasterOp op) {
  Touch();
  // The end point is left out, as the host's line does: a line from (0, 0)
  // to (5, 0) covers x = 0..4, and a line to its own start draws nothing.
  if (y1 == y2) {
    if (y1 < 0 || y1 >= height_) return;
    const int64_t left = x1 <= x2 ? x1 : int64_t{x2} + 1;
    const int64_t right = x1 <= x2 ? x2 : int64_t{x1} + 1;
    FillRect({Saturate(left), y1, Saturate(right), y1 + 1}, color, op);
    return;
  }
  if (x1 == x2) {
    if (x1 < 0 || x1 >= width_) return;
    const int64_t top = y1 <= y2 ? y1 : int64_t{y2} + 1;
    const int64_t bottom = y1 <= y2 ? y2 : int64_t{y1} + 1;
    FillRect({x1, Saturate(top), x1 + 1, Saturate(bottom)}, color, op);
    return;
  }
  // Bresenham: step k of the major axis puts the minor axis at the pixel
  // nearest the true line, halves away from the start. The steps before
  // the raster are skipped in closed form, so far ends cost nothing.
  const int64_t dx = int64_t{x2} - x1;
  const int64_t dy = int64_t{y2} - y1;
  const bool x_major = std::llabs(dx) >= std::llabs(dy);
  const int64_t major_start = x_major ? x1 : y1;
  const int64_t minor_start = x_major ? y1 : x1;
  const int64_t major_delta = std::llabs(x_major ? dx : dy);
  const int64_t minor_delta = std::llabs(x_major ? dy : dx);
  const int64_t major_step = (x_major ? dx : dy) > 0 ? 1 : -1;
  const int64_t minor_step = (x_major ? dy : dx) > 0 ? 1 : -1;
  const int64_t major_limit = x_major ? width_ : height_;

  // Steps k in [0, major_delta) whose major coordinate lies inside.
  int64_t first = 0;
  int64_t last = major_delta;  // exclusive
  if (major_step > 0) {
    first = std::max<int64_t>(first, -major_start);
    last = std::min<int64_t>(last, major_limit - major_start);
  } else {
    first = std::max<int64_t>(first, major_start - (major_limit - 1));
    last = std::min<int64_t>(last, major_start + 1);
  }
  if (first >= last) return;

  // Minor offset at step k is (2 k minor_delta + major_delta) div
  // (2 major_delta); the product needs more than 64 bits for far ends.
  const int64_t denominator = 2 * major_delta;
  const Int128 numerator = Int128{2} * first * minor_delta + major_delta;
  int64_t minor_offset = static_cast<int64_t>(numerator / denominator);
  int64_t remainder = static_cast<int64_t>(numerator % denominator);
  for (int64_t k = first; k < last; ++k) {
    const int64_t major = major_start + major_step * k;
    const int64_t minor = minor_start + minor_step * minor_offset;
    const int64_t x = x_major ? major : minor;
    const int64_t y = x_major ? minor : major;
    if (x >= 0 && x < width_ && y >= 0 && y < height_) {
      SetPixel(static_cast<int>(x), static_cast<int>(y), color, op);
    }
    remainder += 2 * minor_delta;
    if (remainder >= denominator) {
      remainder -= denominator;
      ++minor_offset;
    }
  }
}

void Raster::DrawPicture(const StdPicture& picture, int x, int y, int width, int height,
                         RasterOp op) {
  Touch();
  const int src_width = picture.WidthPixels();
  const int src_height = picture.HeightPixels();
  if (width <= 0 || height <= 0 || src_width <= 0 || src_height <= 0) return;
  const PixelRect clipped = Intersect(BlockAt(x, y, width, height), Bounds());
  if (IsEmpty(clipped)) return;
  // The source column under each destination column, worked out once
  // rather than divided out again on every row.
  std::vector<int> columns(static_cast<size_t>(clipped.right - clipped.left));
  for (int dx = clipped.left; dx < clipped.right; ++dx) {
    columns[static_cast<size_t>(dx - clipped.left)] = NearestSource(dx - x, width, src_width);
  }
  const uint32_t* source_pixels = picture.Pixels().data();
  DispatchRasterOp(op, [&](auto kOp) {
    for (int dy = clipped.top; dy < clipped.bottom; ++dy) {
      const uint32_t* source_row =
          source_pixels +
          static_cast<size_t>(NearestSource(dy - y, height, src_height)) * src_width;
      Rgb* row = Row(dy) + clipped.left;
      // Pixels less than half opaque are holes, as a mask would leave them.
      // Chosen without a branch, so that a picture at its own size (the
      // usual icon) blends a vector at a time.
      const auto blend = [&](size_t i, uint32_t source) {
        row[i] = (source >> 24) < kAlphaHalf ? row[i] : ApplyRasterOp(kOp(), source, row[i]);
      };
      if (width == src_width) {
        const uint32_t* source = source_row + columns.front();
        for (size_t i = 0; i < columns.size(); ++i) blend(i, source[i]);
      } else {
        for (size_t i = 0; i < columns.size(); ++i) blend(i, source_row[columns[i]]);
      }
    }
  });
}

TextExtent Raster::MeasureText(const FontSpec& spec, std::string_view utf8) {
  Font& font = FontEngine::Instance().FontFor(spec);
  return {TextAdvance(font, utf8), font.Metrics().height};
}

int Raster::DrawText(const FontSpec& spec, std::string_view utf8, int x, int y, Rgb color,
                     RasterOp op) {
  Touch();
  Font& font = FontEngine::Instance().FontFor(spec);
  if (std::abs(x) > kFarOutside || std::abs(y) > kFarOutside) return TextAdvance(font, utf8);
  const PixelRect bounds = Bounds();
  const int baseline = y + font.Metrics().ascent;
  // The operation is chosen once per string, not once per run of a glyph.
  return DispatchRasterOp(op, [&](auto kOp) {
    auto fill = [&](const PixelRect& run) {
      const PixelRect visible = Intersect(run, bounds);
      if (!IsEmpty(visible)) ApplyToArea<kOp()>(pixels_.data(), width_, visible, color);
    };
    int pen_x = x;
    ForEachCodePoint(utf8, [&](char32_t c) {
      const Glyph& glyph = font.GlyphFor(c);
      if (InkInside(glyph, pen_x, baseline)) {
        // Most glyphs: every span is known to be on the raster.
        PaintInside<kOp()>(glyph, pen_x, baseline, color);
        pen_x += glyph.advance;
      } else {
        pen_x += PaintGlyph(glyph, pen_x, baseline, fill);
      }
    });
    PaintDecorations(spec, font.Metrics(), x, baseline, pen_x - x, fill);
    return pen_x - x;
  });
}

template <RasterOp kOp>
void Raster::PaintInside(const Glyph& glyph, int pen_x, int baseline, Rgb color) {
  const int left = pen_x + glyph.ink_left;
  if (!glyph.row_masks.empty() && left + 8 <= width_) {
    // A narrow glyph a row at a time, four pixels per step.
    Rgb* row = Row(baseline + glyph.ink_top) + left;
    for (const uint8_t mask : glyph.row_masks) {
      ApplyToFour<kOp>(row, mask & 0xFu, color);
      ApplyToFour<kOp>(row + 4, mask >> 4, color);
      row += width_;
    }
    return;
  }
  for (const GlyphSpan& span : glyph.spans)
    ApplyToRow<kOp>(Row(baseline + span.dy) + pen_x + span.x, span.length, color);
}

bool Raster::InkInside(const Glyph& glyph, int pen_x, int baseline) const {
  return pen_x + glyph.ink_left >= 0 && pen_x + glyph.ink_right <= width_ &&
         baseline + glyph.ink_top >= 0 && baseline + glyph.ink_bottom <= height_;
}

void Raster::Blit(const Raster& source, int x, int y) {
  Touch();
  source.debt_.Settle();
  const PixelRect clipped = Intersect(BlockAt(x, y, source.width_, source.height_), Bounds());
  if (IsEmpty(clipped)) return;
  const int count = clipped.right - clipped.left;
  for (int row = clipped.top; row < clipped.bottom; ++row) {
    const Rgb* from = source.Row(row - y) + (clipped.left - x);
    std::copy_n(from, count, Row(row) + clipped.left);
  }
}

std::vector<uint8_t> Raster::ToPng() const {
  debt_.Settle();
  std::vector<uint32_t> opaque(pixels_.size());
  std::transform(pixels_.begin(), pixels_.end(), opaque.begin(),
                 [](Rgb pixel) { return pixel | kOpaque; });
  return EncodePng(width_, height_, opaque);
}

void Raster::SavePng(const std::filesystem::path& path) const {
  const std::vector<uint8_t> png = ToPng();
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw ErrorFromErrno(errno, path.string(), true);
  out.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
  out.close();
  if (!out) throw ErrorFromErrno(errno, path.string(), true);
}

}  // namespace kestu
