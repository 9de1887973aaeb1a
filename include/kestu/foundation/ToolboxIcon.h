#pragma once
// A control's toolbox picture, declared in its class metadata
// (`ClassInfo::toolbox_icon`) as character art: 16 rows of 16 characters,
// one character a pixel. Art in the sources needs no picture files at
// build time, reads in a review, and cannot drift from a separate file.
//
// The palette is the classic desktop's sixteen colours, dark in lower case
// and bright in upper case where a pair shares a letter, and '.' for a
// transparent pixel (the toolbox's own face shows through):
//
//   .  transparent          k  000000 black          w  FFFFFF white
//   l  C0C0C0 light grey    g  808080 dark grey      (button face, shadow)
//   b  000080 navy          B  0000FF blue
//   c  008080 teal          C  00FFFF cyan
//   G  008000 green         L  00FF00 lime
//   r  800000 maroon        R  FF0000 red
//   y  808000 olive         Y  FFFF00 yellow
//   m  800080 purple        M  FF00FF magenta

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "kestu/foundation/StdPicture.h"

namespace kestu {

inline constexpr int kToolboxIconSide = 16;

// The pixel of a palette character, 0xAARRGGBB: opaque colours, 0 for
// '.'; nothing for a character outside the palette.
std::optional<uint32_t> ToolboxIconColor(char c);

// What is wrong with `art`, in one line ("row 3 has 15 characters, not
// 16"), or empty when it is 16 rows of 16 palette characters with at
// least one pixel drawn: a blank icon is a mistake, not a picture.
std::string ToolboxIconProblem(std::span<const std::string_view> art);

// The art as a 16 x 16 picture, or nothing when ToolboxIconProblem finds
// a fault: a malformed icon is refused whole, never drawn in part.
std::optional<StdPicture> ToolboxIconPicture(std::span<const std::string_view> art);

}  // namespace kestu
