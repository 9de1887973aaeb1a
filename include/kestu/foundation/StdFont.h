#pragma once
// The container's font object. Held by reference: two controls given one
// font object share it, and a change through one is seen by both.

#include <memory>
#include <string>

namespace kestu {

struct StdFont {
  std::string Name = "MS Sans Serif";
  double Size = 8.25;  // points
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool Strikethrough = false;

  friend bool operator==(const StdFont&, const StdFont&) = default;
};

using FontRef = std::shared_ptr<StdFont>;

inline FontRef MakeFont(std::string name, double size) {
  auto font = std::make_shared<StdFont>();
  font->Name = std::move(name);
  font->Size = size;
  return font;
}

}  // namespace kestu
