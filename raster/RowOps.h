#pragma once
// The one place pixels are combined with a pen: every primitive of the
// raster reduces to runs along a row, and every run goes through here.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "kestu/foundation/Surface.h"

namespace kestu {

template <RasterOp kOp>
using RasterOpConstant = std::integral_constant<RasterOp, kOp>;

// Calls `fn` with the operation as a compile-time constant, so the loop
// inside it is specialised per operation and vectorises. An operation
// number outside the host's 1..16 draws as copy pen, as ApplyRasterOp does.
template <typename Fn>
decltype(auto) DispatchRasterOp(RasterOp op, Fn&& fn) {
  switch (op) {
    case RasterOp::Blackness:
      return fn(RasterOpConstant<RasterOp::Blackness>{});
    case RasterOp::NotMergePen:
      return fn(RasterOpConstant<RasterOp::NotMergePen>{});
    case RasterOp::MaskNotPen:
      return fn(RasterOpConstant<RasterOp::MaskNotPen>{});
    case RasterOp::NotCopyPen:
      return fn(RasterOpConstant<RasterOp::NotCopyPen>{});
    case RasterOp::MaskPenNot:
      return fn(RasterOpConstant<RasterOp::MaskPenNot>{});
    case RasterOp::Invert:
      return fn(RasterOpConstant<RasterOp::Invert>{});
    case RasterOp::XorPen:
      return fn(RasterOpConstant<RasterOp::XorPen>{});
    case RasterOp::NotMaskPen:
      return fn(RasterOpConstant<RasterOp::NotMaskPen>{});
    case RasterOp::MaskPen:
      return fn(RasterOpConstant<RasterOp::MaskPen>{});
    case RasterOp::NotXorPen:
      return fn(RasterOpConstant<RasterOp::NotXorPen>{});
    case RasterOp::Nop:
      return fn(RasterOpConstant<RasterOp::Nop>{});
    case RasterOp::MergeNotPen:
      return fn(RasterOpConstant<RasterOp::MergeNotPen>{});
    case RasterOp::CopyPen:
      break;
    case RasterOp::MergePenNot:
      return fn(RasterOpConstant<RasterOp::MergePenNot>{});
    case RasterOp::MergePen:
      return fn(RasterOpConstant<RasterOp::MergePen>{});
    case RasterOp::Whiteness:
      return fn(RasterOpConstant<RasterOp::Whiteness>{});
  }
  return fn(RasterOpConstant<RasterOp::CopyPen>{});
}

// Applies the operation to `count` pixels from `row`.
template <RasterOp kOp>
[[gnu::always_inline]] inline void ApplyToRow(Rgb* row, int count, Rgb pen) {
  if constexpr (kOp == RasterOp::CopyPen) {
    std::fill_n(row, count, pen & 0x00FFFFFFu);
  } else {
    for (int i = 0; i < count; ++i) row[i] = ApplyRasterOp(kOp, pen, row[i]);
  }
}

// Four pixels in one register: every target has 16-byte vectors.
using FourPixels = Rgb __attribute__((vector_size(16)));

// Applies the operation to the pixels of `row[0..3]` whose bit is set in
// `mask` (bit i for row[i]) and leaves the others as they were. A glyph's
// row is drawn this way in one or two steps, however many runs it has.
template <RasterOp kOp>
[[gnu::always_inline]] inline void ApplyToFour(Rgb* row, unsigned mask, Rgb pen) {
  if (mask == 0) return;
  constexpr FourPixels kLaneBits = {1, 2, 4, 8};
  const FourPixels chosen = __builtin_convertvector((kLaneBits & mask) != 0, FourPixels);
  FourPixels under;
  std::memcpy(&under, row, sizeof under);
  const FourPixels drawn = ApplyRasterOp(kOp, FourPixels{} + pen, under);
  const FourPixels result = (drawn & chosen) | (under & ~chosen);
  std::memcpy(row, &result, sizeof result);
}

// Applies `op` to `count` pixels from `row`: the runs of fills, lines and
// text all end here.
void ApplyRow(Rgb* row, int count, Rgb pen, RasterOp op);

}  // namespace kestu
