#pragma once
// A property's value as the designer's grid shows it and reads it back
// from what the user typed or chose, by the property's type:
//   colours   a system colour by name ("Button Face"), else &H00BBGGRR&;
//   enums     the constant's name (a number the class has no name for
//             stays a number);
//   Boolean   True or False;
//   fonts     "Name, Size" then Bold, Italic, Underline, Strikethrough;
//   pictures  (None), or (Picture WxH); read back from a file's path;
//   the rest  their text, numbers as the host writes them.
// Reading checks the form of the text only: the control's own checks
// (ranges, lengths) run when the value is assigned.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

enum class EditorKind { Text, Number, Boolean, Color, Enumeration, Font, Picture };

// How a property is edited, and the choices a list offers for it (the
// system colours, the constants, True and False); empty for typing.
struct PropertyEditor {
  EditorKind kind = EditorKind::Text;
  std::vector<std::string> choices;
};

PropertyEditor EditorFor(const ClassInfo& info, const PropertyInfo& property);

// The system colours by index, as the colour list names them.
const std::vector<std::string>& SystemColorNames();

std::string ValueText(const ClassInfo& info, const PropertyInfo& property, const Variant& value);

// The value `text` stands for. A picture's path is found from `base_dir`
// when relative. Error 380 names the property for text of the wrong form;
// a picture that cannot be read is its own error (53, 481).
Variant ParseValue(const ClassInfo& info, const PropertyInfo& property, std::string_view text,
                   const std::filesystem::path& base_dir);

}  // namespace kestu
