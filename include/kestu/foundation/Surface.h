#pragma once
// The pixel device a control's drawing members draw into. The host gives
// every control one; the software raster implements it, and a window only
// shows that raster, so what a test sees is what the user sees.
// Coordinates here are pixels; scales and twips live in UserControl.

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {

// The host's 16 raster operations (`DrawMode`), by their host numbers.
enum class RasterOp : uint8_t {
  Blackness = 1,
  NotMergePen = 2,
  MaskNotPen = 3,
  NotCopyPen = 4,
  MaskPenNot = 5,
  Invert = 6,
  XorPen = 7,
  NotMaskPen = 8,
  MaskPen = 9,
  NotXorPen = 10,
  Nop = 11,
  MergeNotPen = 12,
  CopyPen = 13,
  MergePenNot = 14,
  MergePen = 15,
  Whiteness = 16,
};

// Applies `op` to one destination pixel with pen `pen` (both 0x00RRGGBB),
// or lane by lane to a vector of them.
template <typename Pixels = Rgb>
constexpr Pixels ApplyRasterOp(RasterOp op, Pixels pen, std::type_identity_t<Pixels> dst) {
  constexpr Rgb kMask = 0x00FFFFFF;
  switch (op) {
    case RasterOp::Blackness:
      return Pixels{};
    case RasterOp::NotMergePen:
      return ~(pen | dst) & kMask;
    case RasterOp::MaskNotPen:
      return (~pen & dst) & kMask;
    case RasterOp::NotCopyPen:
      return ~pen & kMask;
    case RasterOp::MaskPenNot:
      return (pen & ~dst) & kMask;
    case RasterOp::Invert:
      return ~dst & kMask;
    case RasterOp::XorPen:
      return (pen ^ dst) & kMask;
    case RasterOp::NotMaskPen:
      return ~(pen & dst) & kMask;
    case RasterOp::MaskPen:
      return pen & dst & kMask;
    case RasterOp::NotXorPen:
      return ~(pen ^ dst) & kMask;
    case RasterOp::Nop:
      return dst & kMask;
    case RasterOp::MergeNotPen:
      return (~pen | dst) & kMask;
    case RasterOp::CopyPen:
      return pen & kMask;
    case RasterOp::MergePenNot:
      return (pen | ~dst) & kMask;
    case RasterOp::MergePen:
      return (pen | dst) & kMask;
    case RasterOp::Whiteness:
      return Pixels{} | kMask;
  }
  return pen & kMask;
}

// A rectangle in pixels; `right` and `bottom` are exclusive, as in the
// operating system's RECT.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// A font as a surface renders it: the face asked for and its em size in
// pixels (points at the surface's pixels per inch).
struct FontSpec {
  std::string_view name;
  double pixel_size = 11.0;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikethrough = false;
};

struct TextExtent {
  int width = 0;   // advance of the whole string
  int height = 0;  // line height of the font (ascent + descent), even for ""
};

// Pixels a surface is owed: drawing done in full but not yet laid onto
// the surface, because nobody has looked at or drawn over it since.
class PendingPixels {
 public:
  // Lays the pixels down now. The surface has already forgotten the debt,
  // so drawing onto it from here does not come back.
  virtual void Settle() = 0;
  // The surface is going away first; nothing is owed any more.
  virtual void Abandon() = 0;

 protected:
  ~PendingPixels() = default;
};

class Surface {
 public:
  virtual ~Surface() = default;

  // Lets `pending` lay its pixels down when they are next needed (read,
  // stamped, drawn over, resized or copied) instead of now, so a face that
  // nobody looks at costs no pixel work. A surface that cannot wait
  // settles at once; one owed by another settles that first.
  virtual void Defer(PendingPixels& pending) { pending.Settle(); }
  // Lays down now what is owed, if anything.
  virtual void SettlePending() const {}

  virtual int Width() const = 0;
  virtual int Height() const = 0;
  // A stamp of the pixels: a new one whenever they may have changed. Two
  // surfaces share a stamp only when one is a copy of the other.
  virtual uint64_t Generation() const = 0;
  // New size; the old pixels are kept where they still fit, the rest is
  // filled with `fill`.
  virtual void Resize(int width, int height, Rgb fill) = 0;

  virtual Rgb GetPixel(int x, int y) const = 0;
  // Everything below clips to the surface.
  virtual void SetPixel(int x, int y, Rgb color, RasterOp op) = 0;
  virtual void FillRect(const PixelRect& rect, Rgb color, RasterOp op) = 0;
  // A one-pixel line from (x1, y1) towards (x2, y2), leaving out the end
  // point, as the host's line does.
  virtual void DrawLine(int x1, int y1, int x2, int y2, Rgb color, RasterOp op) = 0;
  // The picture at (x, y), scaled to width x height (nearest pixel);
  // alpha below one half is transparent.
  virtual void DrawPicture(const StdPicture& picture, int x, int y, int width, int height,
                           RasterOp op) = 0;

  virtual TextExtent MeasureText(const FontSpec& font, std::string_view utf8) = 0;
  // Text with its cell's top-left at (x, y); transparent background.
  // Underline and strikethrough are drawn across the advance, which is
  // returned in pixels, as MeasureText gives it.
  virtual int DrawText(const FontSpec& font, std::string_view utf8, int x, int y, Rgb color,
                       RasterOp op) = 0;
};

}  // namespace kestu
