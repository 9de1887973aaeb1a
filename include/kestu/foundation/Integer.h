#pragma once
// The host runtime's integer arithmetic: 16-bit and 32-bit signed values
// whose overflow raises error 6, and its rules for turning reals into
// integers.

#include <cmath>
#include <cstdint>
#include <limits>

#include "kestu/foundation/RuntimeError.h"

namespace kestu {

// Rounds to the nearest integer, halves to the even neighbour (2.5 -> 2,
// 3.5 -> 4), as the host does when it converts a real to an integer.
double RoundHalfEven(double value);

// `Int`: rounds toward minus infinity (Int(-2.5) = -3).
inline double Int(double value) { return std::floor(value); }
// `Fix`: rounds toward zero.
inline double Fix(double value) { return std::trunc(value); }

// Real to 16-bit / 32-bit integer: half to even, error 6 outside the range
// (and for NaN).
int16_t CInt(double value);
int32_t CLng(double value);

// Narrowing of a wider integer, error 6 when it does not fit.
int16_t ToInt16(int64_t value);
int32_t ToInt32(int64_t value);

// A signed integer of the host's width whose every operation traps
// overflow. Reads like the host's arithmetic: `Int16 px = Int16(5) * tppx;`.
template <typename T>
class Checked {
  static_assert(std::is_same_v<T, int16_t> || std::is_same_v<T, int32_t>);

 public:
  constexpr Checked() = default;
  constexpr Checked(T value) : value_(value) {}  // NOLINT: implicit by design

  // From any wider integer or a real, with the host's conversion rules.
  static Checked From(int64_t value) { return Checked(Narrow(value)); }
  static Checked FromReal(double value) {
    if constexpr (std::is_same_v<T, int16_t>) {
      return Checked(CInt(value));
    } else {
      return Checked(CLng(value));
    }
  }

  constexpr T value() const { return value_; }
  constexpr operator T() const { return value_; }  // NOLINT: reads as the host's

  friend Checked operator+(Checked a, Checked b) { return From(int64_t{a.value_} + b.value_); }
  friend Checked operator-(Checked a, Checked b) { return From(int64_t{a.value_} - b.value_); }
  friend Checked operator*(Checked a, Checked b) { return From(int64_t{a.value_} * b.value_); }
  Checked operator-() const { return From(-int64_t{value_}); }
  Checked& operator+=(Checked b) { return *this = *this + b; }
  Checked& operator-=(Checked b) { return *this = *this - b; }
  Checked& operator*=(Checked b) { return *this = *this * b; }

  // The host's integer division `\`: truncates toward zero; by zero is
  // error 11.
  friend Checked IntDiv(Checked a, Checked b) {
    if (b.value_ == 0) throw RuntimeError(err::kDivisionByZero);
    return From(int64_t{a.value_} / b.value_);
  }

 private:
  static T Narrow(int64_t value) {
    if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max()) {
      throw RuntimeError(err::kOverflow);
    }
    return static_cast<T>(value);
  }

  T value_ = 0;
};

using Int16 = Checked<int16_t>;
using Int32 = Checked<int32_t>;

// The host's Boolean is 16 bits: True is -1, False is 0.
inline constexpr int16_t kTrue = -1;
inline constexpr int16_t kFalse = 0;
inline constexpr int16_t ToHostBool(bool b) { return b ? kTrue : kFalse; }

}  // namespace kestu
