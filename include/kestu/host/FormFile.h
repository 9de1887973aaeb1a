#pragma once
// Form files: a whole form as JSON — its name, caption, size, font and
// background, and each control in tab order with its type, name, extender
// values and property bag. Reading checks everything and builds the
// controls off-form before it touches the forms already loaded, so a bad
// file changes nothing.

#include <filesystem>
#include <string>
#include <string_view>

namespace kestu {

class Host;
class Form;

// The file's text for `form`: every control's WriteProperties, keys in the
// order written, indented by two.
std::string FormFileText(Host& host, Form& form);
// Writes FormFileText to `path` in one step and clears the form's modified
// flag.
void SaveFormFile(Host& host, Form& form, const std::filesystem::path& path);

// Loads a form in place of the form of the same name, activates it, and
// returns it. Each control is initialised and reads its bag off-form; then
// the form goes in and each control is resized and shown. A malformed file
// is RuntimeError 380 naming `source` (the file), the control and the key;
// a missing file is 53; memory that runs out while it loads is 7.
Form& LoadFormFile(Host& host, const std::filesystem::path& path);
Form& LoadFormText(Host& host, std::string_view text, std::string_view source);

}  // namespace kestu
