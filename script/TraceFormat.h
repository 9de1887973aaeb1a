#pragma once
// How the script host prints values: strings quoted with the script's
// escapes, True/False, integers in decimal, OLE_COLOR values as 0x and
// eight hex digits, reals in the shortest form that reads back, Empty,
// Null, Nothing, font("Name", SIZE[, flags]) and picture(WxH).

#include <cstdint>
#include <string>
#include <string_view>

#include "kestu/foundation/Variant.h"

namespace kestu {

// The type name under which a value prints as a colour.
inline constexpr std::string_view kColorTypeName = "OLE_COLOR";

std::string QuoteString(std::string_view utf8);
// Shortest text that reads back to the same double: "1234567.89", "0.5",
// "-12", "1E+15".
std::string FormatReal(double value);
// The same for a single-precision value, at its own precision.
std::string FormatSingle(float value);
std::string FormatColor(uint32_t color);
// `type_name` is the receiving property's or argument's type as the
// interface shows it; "OLE_COLOR" prints integers as colours.
std::string FormatValue(const Variant& value, std::string_view type_name = {});

}  // namespace kestu
