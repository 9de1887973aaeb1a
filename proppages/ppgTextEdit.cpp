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
constexpr int16_t kStyleCount = 4;

// What the preview shows when the author gave no default value and no
// mask: enough letters of both cases for the style to show.
constexpr const char* kSampleText = "Sample text";

bool IsChecked(UserControl& box) {
  return box.GetProperty("Value").ToInteger() == 1;
}

Variant CheckValue(bool checked) {
  return Variant(int16_t{checked ? int16_t{1} : int16_t{0}});
}

}  // namespace

const PageInfo& ppgTextEdit::Info() {
  static const PageInfo info{"ppgTextEdit", "General", 400 * kPx, 256 * kPx,
                             [](PageSite& site) { return std::make_unique<ppgTextEdit>(site); }};
  return info;
}

KESTU_REGISTER_PAGE(ppgTextEdit)

ppgTextEdit::ppgTextEdit(PageSite& site) : PropertyPage(site) {
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
  cbo_text_style_ = &Add("ComboBox", "cboTextStyle", 8 * kPx, 111 * kPx, 180 * kPx, 21 * kPx);
  const MethodInfo* add_item = cbo_text_style_->Class().FindMethod("AddItem");
  for (const char* style : kStyles) {
    Variant item[] = {Variant(style)};
    add_item->invoke(*cbo_text_style_, item);
  }
  Add("Label", "Label5", 8 * kPx, 140 * kPx, 180 * kPx, 13 * kPx)
      .SetProperty("Caption", "Default value:");
  txt_default_value_ = &Add("TextBox", "txtDefaultValue", 8 * kPx, 155 * kPx, 180 * kPx, 21 * kPx);

  static constexpr struct {
    const char* name;
    const char* caption;
    const char* property;
  } kFlags[] = {{"chkIncludeLiterals", "Text includes literals", "IncludeLiterals"},
                {"chkAutoSelect", "Select all on focus", "AutoSelect"},
                {"chkLocked", "Locked", "Locked"},
                {"chkBorder3D", "3D border", "Border3D"},
                {"chkShadow", "Shadow", "Shadow"}};
  for (size_t i = 0; i < flags_.size(); ++i) {
    UserControl& box = Add("CheckBox", kFlags[i].name, 204 * kPx,
                           (8 + 20 * static_cast<int>(i)) * kPx, 188 * kPx, 17 * kPx);
    box.SetProperty("Caption", kFlags[i].caption);
    flags_[i] = {&box, kFlags[i].property};
  }

  UserControl& frame = Add("Frame", "fraPreview", 8 * kPx, 186 * kPx, 384 * kPx, 62 * kPx);
  frame.SetProperty("Caption", " Preview ");
  // Tall enough for the shadow's band below the face.
  prv_text_ = &Add("KestuTextEdit", "prvText", 10 * kPx, 22 * kPx, 260 * kPx, 26 * kPx, &frame);
}

// Always from the first selected control only.
void ppgTextEdit::PropertyPage_SelectionChanged() {
  UserControl& box = SelectedControls(0);
  filling_ = true;
  try {
    txt_mask_->SetProperty("Text", box.GetProperty("Mask"));
    txt_max_length_->SetProperty("Text", box.GetProperty("MaxLength").ToString());
    txt_fill_char_->SetProperty("Text", box.GetProperty("FillChar"));
    txt_default_value_->SetProperty("Text", box.GetProperty("DefaultValue"));
    chosen_style_ = static_cast<int16_t>(box.GetProperty("TextStyle").ToInteger());
    const bool listed = chosen_style_ >= 0 && chosen_style_ < kStyleCount;
    cbo_text_style_->SetProperty("ListIndex", listed ? chosen_style_ : int16_t{-1});
    for (const FlagBox& flag : flags_) {
      flag.box->SetProperty("Value", CheckValue(box.GetProperty(flag.property).ToBool()));
    }
  } catch (...) {
    filling_ = false;
    throw;
  }
  filling_ = false;
  UpdatePreview();
}

// Only the first selected box changes, whatever else is selected, as on
// the other pages.
void ppgTextEdit::PropertyPage_ApplyChanges() {
  WriteSettings(SelectedControls(0), false);
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
  if (!put("Mask", mask) && new_length) {
    try {
      box.SetProperty("Mask", mask);
    } catch (const RuntimeError&) {
      if (!tolerant) throw;
    }
  }
  put("TextStyle", chosen_style_);
}

// The preview takes the page's settings as they stand and shows the
// default value through them, or, without one, the empty mask (its
// literals in place), or a sample when there is no mask either. A setting
// the box would refuse (a length past 16 bits, a padded style with a
// negative length) must not stop the page: the preview keeps that
// property's last good value and shows the rest, and the error is
// reported on Apply.
void ppgTextEdit::UpdatePreview() {
  WriteSettings(*prv_text_, true);
  std::string sample = txt_default_value_->GetProperty("Text").ToString();
  if (sample.empty() && txt_mask_->GetProperty("Text").ToString().empty()) sample = kSampleText;
  try {
    prv_text_->SetProperty("Text", sample);
    // Assigning the text does not restyle it; assigning the style does.
    prv_text_->SetProperty("TextStyle", chosen_style_);
  } catch (const RuntimeError&) {
    // The preview shows what it could take.
  }
}

void ppgTextEdit::ChildEvent(UserControl& child, const EventInfo& event) {
  // The preview's own events (the author may type in it) change nothing.
  if (&child == prv_text_) return;
  if (event.name != "Change" && event.name != "Click") return;
  if (&child == cbo_text_style_) {
    const int16_t index = static_cast<int16_t>(child.GetProperty("ListIndex").ToInteger());
    if (index >= 0) chosen_style_ = index;
  }
  SetChanged(true);
  if (!filling_) UpdatePreview();
}

}  // namespace kestu
