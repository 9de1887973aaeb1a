#pragma once
// A designer's hold on the form it designs. While a form has one, the
// user's keyboard and pointer on it go to the designer instead of the
// controls (a designed control is moved, not pressed), and the form's
// picture shows the designer's marks over the controls: the selection's
// handles and the rectangle being drawn.

#include <cstdint>
#include <vector>

#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/Surface.h"

namespace kestu {

// One mark on a designed form, in its pixels: a filled square (a handle)
// or a one-pixel frame.
struct DesignMark {
  PixelRect rect;
  Rgb color = 0;
  bool filled = true;
  friend bool operator==(const DesignMark&, const DesignMark&) = default;
};

class FormDesigner {
 public:
  enum class Pointer { Down, Up, Move };

  virtual ~FormDesigner() = default;

  // A key went down on the form (the host's code and Shift bits). True
  // when the designer took it: no text of it is typed anywhere.
  virtual bool KeyDown(int16_t key_code, int16_t shift) = 0;
  // The pointer at form pixel (x, y); `buttons` are the buttons held
  // after a move, or the one that went down or up.
  virtual void PointerAt(Pointer action, int x, int y, int16_t buttons, int16_t shift,
                         bool double_click) = 0;
  // What the form's picture shows over its controls, last on top.
  virtual const std::vector<DesignMark>& Marks() const = 0;
};

}  // namespace kestu
