#include "kestu/foundation/Integer.h"

namespace kestu {
namespace {

template <typename T>
T RealToInteger(double value) {
  // The range is checked on the rounded value: 32767.5 rounds to 32768 and
  // overflows, while -32768.5 rounds to -32768 and fits.
  const double rounded = RoundHalfEven(value);
  if (std::isnan(rounded) || rounded < std::numeric_limits<T>::min() ||
      rounded > std::numeric_limits<T>::max()) {
    throw RuntimeError(err::kOverflow);
  }
  return static_cast<T>(rounded);
}

template <typename T>
T NarrowInteger(int64_t value) {
  if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max()) {
    throw RuntimeError(err::kOverflow);
  }
  return static_cast<T>(value);
}

}  // namespace

double RoundHalfEven(double value) {
  if (!std::isfinite(value)) return value;
  const double below = std::floor(value);
  const double fraction = value - below;
  if (fraction < 0.5) return below;
  if (fraction > 0.5) return below + 1;
  return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

int16_t CInt(double value) {
  return RealToInteger<int16_t>(value);
}
int32_t CLng(double value) {
  return RealToInteger<int32_t>(value);
}

int16_t ToInt16(int64_t value) {
  return NarrowInteger<int16_t>(value);
}
int32_t ToInt32(int64_t value) {
  return NarrowInteger<int32_t>(value);
}

}  // namespace kestu
