#pragma once
// The software drawing surface: a block of 0x00RRGGBB pixels in memory.
// Controls draw into it, a window only shows it, and tests read it.

#include <cstdint>
#include <filesystem>
#include <span>
#include <utility>
#include <vector>

#include "kestu/foundation/Surface.h"

namespace kestu {

struct Glyph;

class Raster : public Surface {
 public:
  // A raster of `width` x `height` pixels, all `fill`. Negative sizes are
  // taken as empty.
  Raster(int width, int height, Rgb fill = 0x00FFFFFF);

  int Width() const override { return width_; }
  int Height() const override { return height_; }
  uint64_t Generation() const override;
  void Resize(int width, int height, Rgb fill) override;
  void Defer(PendingPixels& pending) override { debt_.Owe(pending); }
  void SettlePending() const override { debt_.Settle(); }

  // Outside the raster: black.
  Rgb GetPixel(int x, int y) const override;
  void SetPixel(int x, int y, Rgb color, RasterOp op) override;
  void FillRect(const PixelRect& rect, Rgb color, RasterOp op) override;
  void DrawLine(int x1, int y1, int x2, int y2, Rgb color, RasterOp op) override;
  // A width or height of zero or less draws nothing.
  void DrawPicture(const StdPicture& picture, int x, int y, int width, int height,
                   RasterOp op) override;

  TextExtent MeasureText(const FontSpec& font, std::string_view utf8) override;
  int DrawText(const FontSpec& font, std::string_view utf8, int x, int y, Rgb color,
               RasterOp op) override;

  // Copies `source` with its top-left at (x, y), clipped to this raster.
  void Blit(const Raster& source, int x, int y);

  // Row-major, `Width() * Height()` pixels of 0x00RRGGBB.
  std::span<const Rgb> Pixels() const {
    debt_.Settle();
    return pixels_;
  }
  // The same pixels to be written in place, such as a picture composed a
  // row at a time: the stamp changes here, once.
  std::span<Rgb> MutablePixels() {
    Touch();
    return pixels_;
  }
  // The pixels as an opaque PNG; the same pixels always give the same bytes.
  std::vector<uint8_t> ToPng() const;
  // Writes ToPng() to `path`; a file that cannot be written throws the
  // host's file error.
  void SavePng(const std::filesystem::path& path) const;

 private:
  Rgb* Row(int y) { return pixels_.data() + static_cast<size_t>(y) * width_; }
  const Rgb* Row(int y) const { return pixels_.data() + static_cast<size_t>(y) * width_; }
  PixelRect Bounds() const { return {0, 0, width_, height_}; }
  // Whether every span of `glyph`, its pen at (pen_x, baseline), is on the raster.
  bool InkInside(const Glyph& glyph, int pen_x, int baseline) const;
  // Draws a glyph InkInside() has passed.
  template <RasterOp kOp>
  void PaintInside(const Glyph& glyph, int pen_x, int baseline, Rgb color);
  // Every member that may change a pixel calls this first.
  void Touch();

  // Who owes this raster pixels, if anyone. The debt stays with the raster
  // it is owed to: copying a raster settles the source's first.
  class Debt {
   public:
    Debt() = default;
    Debt(const Debt& source) { source.Settle(); }
    Debt& operator=(const Debt& source) {
      source.Settle();
      Settle();
      return *this;
    }
    ~Debt() {
      if (pending_ != nullptr) pending_->Abandon();
    }
    void Owe(PendingPixels& pending) {
      if (pending_ != &pending) Settle();
      pending_ = &pending;
    }
    void Settle() const {
      if (PendingPixels* pending = std::exchange(pending_, nullptr)) pending->Settle();
    }

   private:
    mutable PendingPixels* pending_ = nullptr;
  };

  // First of the members, so that a copy settles before any pixel is taken.
  Debt debt_;
  int width_ = 0;
  int height_ = 0;
  std::vector<Rgb> pixels_;
  mutable uint64_t generation_ = 0;
  mutable bool restamp_ = true;
};

}  // namespace kestu
