#include "script/ScriptValue.h"

#include <charconv>
#include <limits>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/Text.h"
#include "script/ScriptError.h"

namespace kestu {

namespace {

Token Expect(ScriptLexer& lexer, Token::Kind kind, const char* what) {
  std::optional<Token> token = lexer.Next();
  if (!token || token->kind != kind) throw ScriptError(std::string("expected ") + what);
  return *token;
}

std::optional<Variant> ParseHexNumber(std::string_view digits) {
  if (digits.empty() || digits.size() > 8) return std::nullopt;
  uint32_t bits = 0;
  auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), bits, 16);
  if (ec != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  if (bits <= 0x7FFF) return Variant(static_cast<int16_t>(bits));
  return Variant(static_cast<int32_t>(bits));
}

bool LooksLikeInteger(std::string_view word) {
  size_t i = (word[0] == '-' || word[0] == '+') ? 1 : 0;
  if (i == word.size()) return false;
  for (; i < word.size(); ++i) {
    if (word[i] < '0' || word[i] > '9') return false;
  }
  return true;
}

}  // namespace

std::optional<Variant> ParseNumber(std::string_view word) {
  if (word.empty()) return std::nullopt;
  if (word.size() > 2 && word[0] == '0' && (word[1] == 'x' || word[1] == 'X')) {
    return ParseHexNumber(word.substr(2));
  }
  std::string_view digits = word[0] == '+' ? word.substr(1) : word;
  if (digits.empty()) return std::nullopt;
  if (LooksLikeInteger(word)) {
    int64_t value = 0;
    auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (ec == std::errc() && end == digits.data() + digits.size()) {
      if (value >= std::numeric_limits<int16_t>::min() &&
          value <= std::numeric_limits<int16_t>::max()) {
        return Variant(static_cast<int16_t>(value));
      }
      if (value >= std::numeric_limits<int32_t>::min() &&
          value <= std::numeric_limits<int32_t>::max()) {
        return Variant(static_cast<int32_t>(value));
      }
    }
  }
  // A real; the leading sign was dropped only for "+".
  // Only digits and a point may start the number ("inf" and "nan" are names).
  const char first = digits[0] == '-' && digits.size() > 1 ? digits[1] : digits[0];
  if (!(first >= '0' && first <= '9') && first != '.') return std::nullopt;
  double value = 0;
  auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::general);
  if (ec != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return Variant(value);
}

ScriptValue ScriptValue::Parse(ScriptLexer& lexer) {
  std::optional<Token> token = lexer.Next();
  if (!token) throw ScriptError("expected a value");
  return FromToken(*token, lexer);
}

ScriptValue ScriptValue::FromToken(const Token& token, ScriptLexer& lexer) {
  ScriptValue value;
  if (token.Is(Token::Kind::String)) {
    value.literal_ = Variant(token.text);
    return value;
  }
  if (!token.Is(Token::Kind::Word)) throw ScriptError("expected a value, not '" + token.text + "'");
  const std::string& word = token.text;
  if (std::optional<Variant> number = ParseNumber(word)) {
    value.literal_ = *number;
  } else if (SameName(word, "True") || SameName(word, "False")) {
    value.literal_ = Variant::Boolean(SameName(word, "True"));
  } else if (SameName(word, "Empty")) {
    value.literal_ = Variant();
  } else if (SameName(word, "Null")) {
    value.literal_ = Variant::Null();
  } else if (SameName(word, "Nothing")) {
    value.literal_ = Variant::Nothing();
  } else if (SameName(word, "font")) {
    value.kind_ = Kind::Font;
    Expect(lexer, Token::Kind::LeftParen, "'(' after font");
    value.font_.Name = Expect(lexer, Token::Kind::String, "a font name").text;
    Expect(lexer, Token::Kind::Comma, "',' and a size");
    const std::optional<Variant> size =
        ParseNumber(Expect(lexer, Token::Kind::Word, "a size").text);
    if (!size) throw ScriptError("expected a font size");
    value.font_.Size = size->ToDouble();
    std::optional<Token> next;
    while ((next = lexer.Next()) && next->Is(Token::Kind::Comma)) {
      const Token flag = Expect(lexer, Token::Kind::Word, "a font flag");
      if (flag.IsWord("bold")) {
        value.font_.Bold = true;
      } else if (flag.IsWord("italic")) {
        value.font_.Italic = true;
      } else if (flag.IsWord("underline")) {
        value.font_.Underline = true;
      } else if (flag.IsWord("strikethrough")) {
        value.font_.Strikethrough = true;
      } else {
        throw ScriptError("unknown font flag '" + flag.text + "'");
      }
    }
    if (!next || !next->Is(Token::Kind::RightParen)) throw ScriptError("expected ')' after font");
  } else if (SameName(word, "picture")) {
    value.kind_ = Kind::Picture;
    Expect(lexer, Token::Kind::LeftParen, "'(' after picture");
    value.path_ = Expect(lexer, Token::Kind::String, "a picture file name").text;
    Expect(lexer, Token::Kind::RightParen, "')' after picture");
  } else if (const auto* constant = ControlRegistry::Instance().FindConstant(word)) {
    value.literal_ = Variant(constant->second);
  } else {
    throw ScriptError("unknown name '" + word + "'");
  }
  return value;
}

Variant ScriptValue::Evaluate(const std::filesystem::path& base_dir) const {
  switch (kind_) {
    case Kind::Font:
      return Variant(std::make_shared<StdFont>(font_));
    case Kind::Picture:
      return Variant(LoadPicture(ResolveInputPath(base_dir, path_)));
    case Kind::Literal:
      break;
  }
  return literal_;
}

std::filesystem::path ResolveInputPath(const std::filesystem::path& base_dir,
                                       const std::string& name) {
  const std::filesystem::path path(name);
  if (path.is_absolute() || base_dir.empty()) return path;
  std::error_code ignored;
  const std::filesystem::path beside = base_dir / path;
  return std::filesystem::exists(beside, ignored) ? beside : path;
}

}  // namespace kestu
