#include "script/ScriptLexer.h"

#include <cctype>
#include <charconv>

#include "kestu/foundation/Text.h"
#include "script/ScriptError.h"

namespace kestu {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}

bool EndsWord(char c) {
  return IsBlank(c) || c == '"' || c == '(' || c == ')' || c == ',' || c == '=' || c == '#';
}

uint32_t ParseHex(std::string_view digits, std::string_view what) {
  uint32_t value = 0;
  auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (digits.empty() || ec != std::errc() || end != digits.data() + digits.size()) {
    throw ScriptError("bad " + std::string(what) + " escape");
  }
  return value;
}

}  // namespace

bool Token::IsWord(std::string_view word) const {
  return kind == Kind::Word && SameName(text, word);
}

void ScriptLexer::SkipBlanks() {
  while (pos_ < line_.size() && IsBlank(line_[pos_])) ++pos_;
}

bool ScriptLexer::AtComment() const {
  return pos_ < line_.size() && line_[pos_] == '#';
}

bool ScriptLexer::AtEnd() {
  SkipBlanks();
  return pos_ >= line_.size() || AtComment();
}

std::optional<Token> ScriptLexer::Peek() {
  const size_t saved = pos_;
  std::optional<Token> token = Next();
  pos_ = saved;
  return token;
}

std::optional<Token> ScriptLexer::Next() {
  if (AtEnd()) return std::nullopt;
  const char c = line_[pos_];
  switch (c) {
    case '"':
      return ReadString();
    case '(':
      ++pos_;
      return Token{Token::Kind::LeftParen, "("};
    case ')':
      ++pos_;
      return Token{Token::Kind::RightParen, ")"};
    case ',':
      ++pos_;
      return Token{Token::Kind::Comma, ","};
    case '=':
      ++pos_;
      return Token{Token::Kind::Equals, "="};
    default:
      break;
  }
  const size_t start = pos_;
  ReadWordCharacters();
  // A member of a control array inside a dotted name stays in the word:
  // "ppgButtons.optSize(1).Value".
  while (line_.substr(start, pos_ - start).find('.') != std::string_view::npos && AtArrayIndex()) {
    pos_ = line_.find(')', pos_) + 1;
    ReadWordCharacters();
  }
  return Token{Token::Kind::Word, std::string(line_.substr(start, pos_ - start))};
}

void ScriptLexer::ReadWordCharacters() {
  while (pos_ < line_.size() && !EndsWord(line_[pos_])) ++pos_;
}

bool ScriptLexer::AtArrayIndex() const {
  if (pos_ >= line_.size() || line_[pos_] != '(') return false;
  size_t at = pos_ + 1;
  const size_t digits = at;
  while (at < line_.size() && std::isdigit(static_cast<unsigned char>(line_[at]))) ++at;
  return at > digits && at < line_.size() && line_[at] == ')';
}

Token ScriptLexer::ReadString() {
  ++pos_;  // the opening quote
  Token token{Token::Kind::String, {}};
  while (true) {
    if (pos_ >= line_.size()) throw ScriptError("unterminated string");
    const char c = line_[pos_++];
    if (c == '"') return token;
    if (c == '\\') {
      AppendEscape(token.text);
    } else {
      token.text += c;
    }
  }
}

void ScriptLexer::AppendEscape(std::string& out) {
  if (pos_ >= line_.size()) throw ScriptError("unterminated string");
  const char c = line_[pos_++];
  switch (c) {
    case '"':
      out += '"';
      return;
    case '\\':
      out += '\\';
      return;
    case 'n':
      out += '\n';
      return;
    case 't':
      out += '\t';
      return;
    case 'x': {
      if (pos_ + 2 > line_.size()) throw ScriptError("bad \\x escape");
      out += static_cast<char>(ParseHex(line_.substr(pos_, 2), "\\x"));
      pos_ += 2;
      return;
    }
    case 'u': {
      const size_t close = line_.find('}', pos_);
      if (pos_ >= line_.size() || line_[pos_] != '{' || close == std::string_view::npos) {
        throw ScriptError("bad \\u escape");
      }
      const uint32_t code = ParseHex(line_.substr(pos_ + 1, close - pos_ - 1), "\\u");
      if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        throw ScriptError("bad \\u escape");
      }
      AppendUtf8(code, out);
      pos_ = close + 1;
      return;
    }
    default:
      throw ScriptError(std::string("unknown escape \\") + c);
  }
}

std::optional<std::string> ScriptLexer::RawJsonObject() {
  SkipBlanks();
  if (pos_ >= line_.size() || line_[pos_] != '{') return std::nullopt;
  const size_t start = pos_;
  int depth = 0;
  bool in_string = false;
  for (; pos_ < line_.size(); ++pos_) {
    const char c = line_[pos_];
    if (in_string) {
      if (c == '\\') {
        ++pos_;
      } else if (c == '"') {
        in_string = false;
      }
    } else if (c == '"') {
      in_string = true;
    } else if (c == '{') {
      ++depth;
    } else if (c == '}' && --depth == 0) {
      ++pos_;
      return std::string(line_.substr(start, pos_ - start));
    }
  }
  throw ScriptError("unterminated JSON object");
}

size_t ScriptLexer::CommentStart() const {
  bool in_string = false;
  for (size_t i = pos_; i < line_.size(); ++i) {
    const char c = line_[i];
    if (in_string) {
      if (c == '\\') {
        ++i;
      } else if (c == '"') {
        in_string = false;
      }
    } else if (c == '"') {
      in_string = true;
    } else if (c == '#') {
      return i;
    }
  }
  return line_.size();
}

std::string ScriptLexer::RestOfLine() {
  SkipBlanks();
  size_t end = CommentStart();
  while (end > pos_ && IsBlank(line_[end - 1])) --end;
  std::string rest(line_.substr(pos_, end - pos_));
  pos_ = line_.size();
  return rest;
}

}  // namespace kestu
