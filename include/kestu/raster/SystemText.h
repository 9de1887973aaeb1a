#pragma once
// The operating system's text and focus-rectangle calls, drawn on any
// surface. The window system routes a control's DrawTextA and
// DrawFocusRect here, with the control's surface and font.

#include <cstdint>
#include <string_view>

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Surface.h"

namespace kestu {

// Draws `text` in `rect` as the system's text call does with `flags`
// (dt::...): "&" hides itself and underlines the character after it, "&&"
// draws one "&" (unless dt::kNoPrefix); lines break at "\n" ("\r\n" counts
// as one) unless dt::kSingleLine; the text is clipped to `rect` unless
// dt::kNoClip. `length` counts characters, and a negative one takes the
// whole text. With dt::kCalcRect nothing is drawn and `rect` is fitted to
// the text. Returns the height of the text in pixels.
int32_t DrawSystemText(Surface& surface, const FontSpec& font, std::string_view text,
                       int32_t length, RECT& rect, int32_t flags, Rgb color);

// The system's focus rectangle: every other pixel of the frame just inside
// `rect` inverted, so drawing it twice leaves the surface as it was.
void DrawSystemFocusRect(Surface& surface, const PixelRect& rect);

}  // namespace kestu
