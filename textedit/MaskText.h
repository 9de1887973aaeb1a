#pragma once
// The masked box's text and the rules that keep it: the mask language and
// its character test, literals, the text styles, and what assigning Text
// or Mask and losing the focus do to the text. The box's keys, mouse,
// clipboard and drawing call these; they never test a mask character
// themselves. Positions are 1-based, as the box's interface counts them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "kestu/textedit/KestuTextEdit.h"

namespace kestu {

// The box's members the rules work on, by reference.
struct MaskFields {
  std::u32string& text;
  std::u32string& mask;
  int16_t& max_length;
  const bool& include_literals;
  const int16_t& text_style;
  std::u32string& fill_char;
  const bool& allow_space_char;
  const std::u32string& default_value;
};

// What IsValidChar decided; a refusal at a literal does not beep.
struct CharVerdict {
  bool accepted = false;
  bool beep = false;
};

class MaskText {
 public:
  explicit MaskText(MaskFields fields) : f_(fields) {}

  // One of the placeholders "#", "9", "X", "A", "a", "C", "c".
  static bool IsMaskChar(char32_t c);

  // Tests `character` against the mask at `position` and may rewrite it
  // (case, "." to ","). Error 5 for a position before the first.
  CharVerdict IsValidChar(std::u32string& character, int16_t position) const;

  // The text without the mask's literals (`TextWithoutMask`).
  std::u32string StripLiterals() const;
  // The mask's literals, counted only once the text is too long.
  int16_t CountLiterals() const;
  // `text` trimmed, cut to its rightmost `length` characters or filled on
  // the left with `fill`'s first character; an empty `fill` becomes " ",
  // in place.
  static std::u32string PadLeftText(std::u32string_view text, int16_t length, std::u32string& fill);
  // Nothing but spaces once the literals are gone.
  bool IsEmpty() const;

  // Stores an assigned text, cut to what fits; true when it is blank, so
  // the caret goes home.
  bool AssignText(std::u32string value);
  // Normalises the stored text by the style and the maximum length, and
  // gives what reading `Text` returns.
  std::u32string ReadText();
  // The style applied to the stored text (`TextStyle` or `FillChar` set).
  void ApplyTextStyle();
  // A new mask: the old one's literals leave the text first.
  void AssignMask(std::u32string mask);
  // Spreads the text over the mask's placeholders, before every redraw.
  void ApplyMask();
  // The text part of losing the focus; where the caret goes, if it moves.
  std::optional<int16_t> LoseFocus();

 private:
  // Cases or pads the stored text by its style; `pad_empty` pads a blank
  // text too.
  void StyleText(bool pad_empty);

  MaskFields f_;
};

}  // namespace kestu
