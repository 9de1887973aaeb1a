#include "kestu/proppages/ppgTextEdit.h"

#include <string>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

namespace {

// Layout, in pixels of 15 twips: the texts and the style on the left, the
// flags on the right, the preview across the bottom.
constexpr int kPx = 15;

// The styles in the order of their values, named as the property shows them.
constexpr const char* kStyles[] = {"0 - ccNormal", "1 - ccUpperCase", "2 - ccLowerCase",
                                   "3 - ccPadLeft"};
constexpr PropertyPage::FlagSpec kFlags[] = {
    {"chkIncludeLiterals", "Text includes literals", "IncludeLiterals"},
    {"chkAutoSelect", "Select all on focus", "AutoSelect"},
    {"chkLocked", "Locked", "Locked"},
    {"chkBorder3D", "3D border", "Border3D"},
    {"chkShadow", "Shadow", "Shadow"}};

// What the preview shows when the author gave no default value and no
// mask: enough letters of both cases for the style to show.
constexpr const char* kSampleText = "Sample text";

}  // namespace

const PageInfo& ppgTextEdit::Info() {
  static const PageInfo info{"ppgTextEdit", "General", 400 * kPx, 256 * kPx,
                             [](PageSite& site) { return std::make_unique<ppgTextEdit>(site); }};
  return info;
}

KESTU_REGISTER_PAGE(ppgTextEdit)

ppgTextEdit::ppgTextEdit(PageSite& site) : PreviewPage(site) {
  Add("Label", "Label1", 8 * kPx, 8 * kPx, 180 * kPx, 13 * kPx).SetProperty("Caption", "Mask:");
  txt_mask_ = &Add("TextBox", "txtMask", 8 * kPx, 23 * kPx, 180 * kPx, 21 * kPx);
  Add("Label", "Label2", 8 * kPx, 52 * kPx, 86 * kPx, 13 * kPx)
      .SetProperty("Caption", "Maximum length:");
  txt_max_length_ = &Add("TextBox", "txtMaxLength", 8 * kPx, 67 * kPx, 86 * kPx, 21 * kPx);
  Add("Label", "Label3", 102 * kPx, 52 * kPx, 86 * kPx, 13 * kPx)
      .SetProperty("Caption", "Fill character:");
  txt_fill_char_ = &Add("TextBox", "txtFillChar", 102 * kPx, 67 * kPx, 86 * kPx, 21 * kPx);
  Add("Label", "Label4", 8 * kPx, 96 * kPx, 180 * kPx, 13 * kPx)
      .SetProperty("Caption", "Text style:");
  style_.list = &AddList("cboTextStyle", kStyles, 8 * kPx, 111 * kPx, 180 * kPx, 21 * kPx);
  Add("Label", "Label5", 8 * kPx, 140 * kPx, 180 * kPx, 13 * kPx)
      .SetProperty("Caption", "Default value:");
  txt_default_value_ = &Add("TextBox", "txtDefaultValue", 8 * kPx, 155 * kPx, 180 * kPx, 21 * kPx);

  flags_ = AddFlags(kFlags, 204 * kPx, 8 * kPx, 188 * kPx, 20 * kPx);

  UserControl& frame = Add("Frame", "fraPreview", 8 * kPx, 186 * kPx, 384 * kPx, 62 * kPx);
  frame.SetProperty("Caption", " Preview ");
  // Tall enough for the shadow's band below the face.
  SetPreview(Add("KestuTextEdit", "prvText", 10 * kPx, 22 * kPx, 260 * kPx, 26 * kPx, &frame));
}

void ppgTextEdit::Fill(UserControl& box) {
  txt_mask_->SetProperty("Text", box.GetProperty("Mask"));
  txt_max_length_->SetProperty("Text", box.GetProperty("MaxLength").ToString());
  txt_fill_char_->SetProperty("Text", box.GetProperty("FillChar"));
  txt_default_value_->SetProperty("Text", box.GetProperty("DefaultValue"));
  style_.Show(box.GetProperty("TextStyle").ToInteger());
  ShowFlags(flags_, box);
}

// The order is fixed: the flags, the default value and the fill character,
// which every box takes; then the length, the leading number of its text,
// which past 16 bits overflows (what came before stays assigned); then the
// mask, after the length because a mask longer than the length raises it
// (a new length assigns the mask again, so that rule holds whichever of
// the two the author changed); the style last, as it restyles the text
// with the fill character and the length already in place. A setting the
// box already holds is not assigned again.
void ppgTextEdit::WriteSettings(UserControl& box, bool tolerant) {
  const auto put = [&](const char* property, const Variant& value) {
    return Assign(box, property, value, tolerant);
  };
  for (const FlagBox& flag : flags_) put(flag.property, Variant::Boolean(IsChecked(*flag.box)));
  put("DefaultValue", txt_default_value_->GetProperty("Text"));
  put("FillChar", txt_fill_char_->GetProperty("Text"));
  const bool new_length = put("MaxLength", Val(txt_max_length_->GetProperty("Text").ToString()));
  const Variant mask = txt_mask_->GetProperty("Text");
  if (!put("Mask", mask) && new_length) Put(box, "Mask", mask, tolerant);
  put("TextStyle", style_.chosen);
}

// The default value through the settings, or, without one, the empty
// mask (its literals in place), or a sample when there is no mask either.
void ppgTextEdit::ShowSample() {
  std::string sample = txt_default_value_->GetProperty("Text").ToString();
  if (sample.empty() && txt_mask_->GetProperty("Text").ToString().empty()) sample = kSampleText;
  try {
    Preview().SetProperty("Text", sample);
    // Assigning the text does not restyle it; assigning the style does.
    Preview().SetProperty("TextStyle", style_.chosen);
  } catch (const RuntimeError&) {
    // A padded style with a length the box refuses: the preview shows what
    // it could take.
  }
}

}  // namespace kestu
