#include "textedit/MaskText.h"

#include <algorithm>

#include "kestu/foundation/Integer.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

// One character read at a 1-based position into a one-character buffer:
// past the end it reads as a space, never as nothing. The rules rely on it.
char32_t At(std::u32string_view text, int position) {
  if (position < 1) throw RuntimeError(err::kInvalidProcedureCall);
  const auto index = static_cast<size_t>(position - 1);
  return index < text.size() ? text[index] : U' ';
}

std::u32string_view TrimRight(std::u32string_view text) {
  while (!text.empty() && text.back() == U' ') text.remove_suffix(1);
  return text;
}

std::u32string_view Trim(std::u32string_view text) {
  text = TrimRight(text);
  while (!text.empty() && text.front() == U' ') text.remove_prefix(1);
  return text;
}

// The host's Left$: a negative length is error 5.
std::u32string Left(std::u32string_view text, int length) {
  if (length < 0) throw RuntimeError(err::kInvalidProcedureCall);
  return std::u32string(text.substr(0, static_cast<size_t>(length)));
}

bool IsDigit(char32_t c) {
  return c >= U'0' && c <= U'9';
}

// Compared by code with "A" to "Z" after upper-casing: an accented letter
// is no letter here. Deliberate.
bool IsPlainLetter(char32_t c) {
  const char32_t upper = UpperCase(c);
  return upper >= U'A' && upper <= U'Z';
}

int16_t LengthOf(std::u32string_view text) {
  return ToInt16(static_cast<int64_t>(text.size()));
}

}  // namespace

bool MaskText::IsMaskChar(char32_t c) {
  return c == U'#' || c == U'9' || c == U'X' || c == U'A' || c == U'a' || c == U'C' || c == U'c';
}

CharVerdict MaskText::IsValidChar(std::u32string& character, int16_t position) const {
  constexpr CharVerdict kAccept{true, false};
  constexpr CharVerdict kBeep{false, true};
  if (character.empty()) return kAccept;
  const char32_t first = character.front();
  if (first == U' ' && !f_.allow_space_char) return kBeep;
  char32_t m = At(f_.mask, position);
  // A space in the mask, and any place past its end, takes anything,
  // though literal removal counts a mask space as a literal. Deliberate.
  if (m == U' ') m = U'X';
  switch (m) {
    case U'X':
      return kAccept;
    case U'9':
    case U'#': {
      const bool digit = IsDigit(UpperCase(first));
      if (!digit && first != U'.' && first != U',' && first != U' ') return kBeep;
      if (m == U'9' || digit) return kAccept;
      if (first == U' ') return kBeep;
      if (f_.text.find(U',') != std::u32string::npos) return kBeep;
      character = U",";
      return kAccept;
    }
    case U'A':
    case U'a':
      if (!IsPlainLetter(first) && first != U' ') return kBeep;
      character = m == U'A' ? UpperCase(character) : LowerCase(character);
      return kAccept;
    case U'C':
      character = UpperCase(character);
      return kAccept;
    case U'c':
      character = LowerCase(character);
      return kAccept;
    default:
      return {};  // a literal takes nothing, quietly
  }
}

std::u32string MaskText::StripLiterals() const {
  if (f_.mask.empty()) return f_.text;
  std::u32string out;
  const int mask_length = LengthOf(f_.mask);
  for (int i = 1; i <= mask_length; ++i) {
    if (IsMaskChar(f_.mask[static_cast<size_t>(i - 1)])) out.push_back(At(f_.text, i));
  }
  if (f_.text.size() > f_.mask.size()) out.append(f_.text, f_.mask.size());
  return out;
}

int16_t MaskText::CountLiterals() const {
  if (LengthOf(TrimRight(f_.text)) <= f_.max_length || Trim(f_.mask).empty()) return 0;
  return LengthOf(f_.mask) -
         static_cast<int16_t>(std::count_if(f_.mask.begin(), f_.mask.end(), IsMaskChar));
}

std::u32string MaskText::PadLeftText(std::u32string_view text, int16_t length,
                                     std::u32string& fill) {
  const std::u32string_view trimmed = Trim(text);
  if (fill.empty()) fill = U" ";  // in place: the caller's FillChar too. Deliberate
  if (length < 0) throw RuntimeError(err::kInvalidProcedureCall);
  const auto wanted = static_cast<size_t>(length);
  if (trimmed.size() >= wanted) return std::u32string(trimmed.substr(trimmed.size() - wanted));
  return std::u32string(wanted - trimmed.size(), fill.front()) + std::u32string(trimmed);
}

bool MaskText::IsEmpty() const {
  return Trim(StripLiterals()).empty();
}

bool MaskText::AssignText(std::u32string value) {
  f_.text = std::move(value);
  // A text too long loses as many more characters as the mask has
  // literals.
  f_.text = Left(f_.text, (Int16(f_.max_length) - Int16(CountLiterals())).value());
  return TrimRight(f_.text).empty();
}

void MaskText::StyleText(bool pad_empty) {
  switch (f_.text_style) {
    case ccUpperCase:
      f_.text = UpperCase(f_.text);
      break;
    case ccLowerCase:
      f_.text = LowerCase(f_.text);
      break;
    case ccPadLeft:
      if (pad_empty || !Trim(f_.text).empty()) {
        f_.text = PadLeftText(f_.text, f_.max_length, f_.fill_char);
      }
      break;
    default:
      break;
  }
}

std::u32string MaskText::ReadText() {
  StyleText(false);
  if (f_.text.size() > static_cast<size_t>(std::max<int16_t>(f_.max_length, 0))) {
    f_.text = Left(f_.text, f_.max_length);
  }
  return std::u32string(TrimRight(f_.include_literals ? f_.text : StripLiterals()));
}

void MaskText::ApplyTextStyle() {
  // Unlike reading Text, an empty text is padded too: it becomes
  // MaxLength fill characters. Deliberate.
  StyleText(true);
}

void MaskText::AssignMask(std::u32string mask) {
  f_.text = std::u32string(Trim(StripLiterals()));
  f_.mask = std::move(mask);
  const int16_t mask_length = LengthOf(f_.mask);
  if (f_.max_length < mask_length) f_.max_length = mask_length;
}

void MaskText::ApplyMask() {
  if (f_.mask.empty()) return;
  const std::u32string& text = f_.text;
  const int text_length = LengthOf(text);
  const int mask_length = LengthOf(f_.mask);
  std::u32string merged;
  merged.reserve(f_.mask.size() + text.size());
  int k = 0;
  for (int i = 1; i <= mask_length; ++i) {
    const char32_t m = f_.mask[static_cast<size_t>(i - 1)];
    if (!IsMaskChar(m)) {
      merged.push_back(m);
      // A literal the text already holds at this very place is used up.
      if (i <= text_length && text[static_cast<size_t>(i - 1)] == m) ++k;
    } else {
      ++k;
      merged.push_back(k <= text_length ? text[static_cast<size_t>(k - 1)] : U' ');
    }
  }
  if (k < text_length) merged.append(text, static_cast<size_t>(k));
  // The test is on the length before the merge: a result the merge made
  // longer with literals stays longer than MaxLength. Deliberate.
  if (text_length > f_.max_length) merged = Left(merged, f_.max_length);
  f_.text = std::move(merged);
}

std::optional<int16_t> MaskText::LoseFocus() {
  std::optional<int16_t> caret;
  if (f_.text_style == ccPadLeft && !Trim(f_.fill_char).empty() && !Trim(f_.text).empty()) {
    f_.text = PadLeftText(f_.text, f_.max_length, f_.fill_char);
    caret = LengthOf(TrimRight(f_.text));
  }
  // The default is taken as it stands, not checked against the mask.
  if (IsEmpty()) f_.text = f_.default_value;
  return caret;
}

}  // namespace kestu
