#pragma once
// Reads one line of a script into tokens, on demand: blanks separate
// tokens, "#" outside a string ends the line, strings are in double quotes
// with the escapes \" \\ \n \t \xHH (a byte) and \u{HHHH} (a character).
// Commands whose last argument is raw text (a JSON bag, an echo) take it
// from the lexer as it stands.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestu {

struct Token {
  enum class Kind { Word, String, LeftParen, RightParen, Comma, Equals };
  Kind kind = Kind::Word;
  std::string text;  // a word as written; a string's decoded contents
  bool Is(Kind k) const { return kind == k; }
  bool IsWord(std::string_view word) const;  // a word, ignoring case
};

class ScriptLexer {
 public:
  explicit ScriptLexer(std::string_view line) : line_(line) {}

  // The next token, or nothing at the end of the line (or at a comment).
  std::optional<Token> Next();
  // The next token without taking it.
  std::optional<Token> Peek();
  bool AtEnd();

  // A JSON object starting at the next non-blank character, as raw text up
  // to its matching brace; nothing when the next character is not "{".
  std::optional<std::string> RawJsonObject();
  // The rest of the line as written, without the comment and the blanks
  // around it.
  std::string RestOfLine();

 private:
  void SkipBlanks();
  bool AtComment() const;
  void ReadWordCharacters();
  // At "(DIGITS)".
  bool AtArrayIndex() const;
  Token ReadString();
  void AppendEscape(std::string& out);
  size_t CommentStart() const;

  std::string_view line_;
  size_t pos_ = 0;
};

}  // namespace kestu
