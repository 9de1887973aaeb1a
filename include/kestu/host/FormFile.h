#pragma once
// Form files: a whole form as JSON — its name, caption, size, font and
// background, and each control in tab order with its type, name, extender
// values and property bag. Reading checks everything and builds the
// controls off-form before it touches the forms already loaded, so a bad
// file changes nothing.

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestu {

class Host;
class Form;
class HostedControl;
struct ClassInfo;

// Gives a control about to be created its name on its form.
using ControlNamer = std::function<std::string(const ClassInfo&)>;

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

// Some controls of `form` as a form file keeps them: {"Controls": [...]},
// each entry with what it holds, back to front. A control inside another
// of `controls` comes with that one only. What a designer copies.
std::string ControlsFileText(Host& host, Form& form, std::span<HostedControl* const> controls);
// Adds the controls of a ControlsFileText to `form`, inside `container`
// when not null, last in the tab order. They are checked and restored as a
// form file's controls are, all or nothing (a failure is the same errors,
// naming `source`). Each takes the name `rename` gives it just before it
// is created; the outermost are moved `dx`, `dy` twips. Returns those
// outermost controls, back to front.
std::vector<HostedControl*> AddControlsText(Host& host, Form& form, std::string_view text,
                                            std::string_view source, HostedControl* container,
                                            const ControlNamer& rename, int dx, int dy);

}  // namespace kestu
