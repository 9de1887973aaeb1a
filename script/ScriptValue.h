#pragma once
// A value as a script writes it: a number, a string, True/False, Empty,
// Null, Nothing, font(...), picture("file") or an enumeration constant's
// name. Parsing checks the syntax and the names; a picture is read from
// its file only when the command runs, so a missing file is a run-time
// error of that command.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "script/ScriptLexer.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

class ScriptValue {
 public:
  // The value at the lexer's position; ScriptError when there is none, it
  // is malformed, or it names nothing known.
  static ScriptValue Parse(ScriptLexer& lexer);
  // The same, from a token already taken.
  static ScriptValue FromToken(const Token& token, ScriptLexer& lexer);

  // The value itself: a new font object for font(...), the decoded picture
  // for picture(...), found through `base_dir` as ResolveInputPath says.
  Variant Evaluate(const std::filesystem::path& base_dir) const;

 private:
  enum class Kind { Literal, Font, Picture };
  Kind kind_ = Kind::Literal;
  Variant literal_;
  StdFont font_;
  std::string path_;
};

// A number as a script writes it: a decimal integer is the narrowest of
// Integer, Long and Double that holds it; 0xHHHHHHHH is a 32-bit pattern
// (0x80000005 is the Long -2147483643); anything with a point or an
// exponent is a Double. Nothing when `word` is not a number.
std::optional<Variant> ParseNumber(std::string_view word);

// A file the script reads: a relative name is looked for beside the
// script first, then in the working folder.
std::filesystem::path ResolveInputPath(const std::filesystem::path& base_dir,
                                       const std::string& name);

}  // namespace kestu
