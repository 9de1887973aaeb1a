#include "kestu/proppages/ppgNumberEdit.h"

#include <algorithm>
#include <string>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

namespace {

// Layout, in pixels of 15 twips: the lengths and the format on the left,
// the flags on the right, the preview across the bottom.
constexpr int kPx = 15;

// The formats in the order of their values, each with how it writes a
// number, so the author need not remember which separator is which.
constexpr const char* kFormats[] = {"0 - BrazilFormat (1.234,56)", "1 - USFormat (1,234.56)"};
constexpr PropertyPage::FlagSpec kFlags[] = {
    {"chkThSeparator", "Thousands separator", "ThSeparator"},
    {"chkAllowNegative", "Allow negative numbers", "AllowNegative"},
    {"chkAutoSelect", "Select all on focus", "AutoSelect"},
    {"chkLocked", "Locked", "Locked"},
    {"chkBorder3D", "3D border", "Border3D"},
    {"chkShadow", "Shadow", "Shadow"}};

// The sample's digits: as many integer digits as the box allows, so the
// author sees how wide the box must be, and as many decimals.
constexpr std::string_view kIntegerDigits = "123456789012345";
constexpr std::string_view kDecimalDigits = "89123";

// The sample in the box's invariant "." form: the box puts its own
// separators in.
std::string SampleNumber(int integer_digits, int decimal_digits, bool negative) {
  const auto count = [](int n, std::string_view digits) {
    return static_cast<size_t>(std::clamp(n, 0, static_cast<int>(digits.size())));
  };
  std::string sample;
  if (negative) sample.push_back('-');
  const size_t integers = count(integer_digits, kIntegerDigits);
  if (integers == 0) sample.push_back('0');
  sample.append(kIntegerDigits.substr(0, integers));
  const size_t decimals = count(decimal_digits, kDecimalDigits);
  if (decimals > 0) sample.push_back('.');
  sample.append(kDecimalDigits.substr(0, decimals));
  return sample;
}

}  // namespace

const PageInfo& ppgNumberEdit::Info() {
  static const PageInfo info{"ppgNumberEdit", "General", 400 * kPx, 212 * kPx,
                             [](PageSite& site) { return std::make_unique<ppgNumberEdit>(site); }};
  return info;
}

KESTU_REGISTER_PAGE(ppgNumberEdit)

ppgNumberEdit::ppgNumberEdit(PageSite& site) : PreviewPage(site) {
  // Each length with the limit the box holds it to beside it: a larger
  // value is taken but cut to the limit.
  Add("Label", "Label1", 8 * kPx, 8 * kPx, 180 * kPx, 13 * kPx)
      .SetProperty("Caption", "Integer digits:");
  txt_int_max_length_ = &Add("TextBox", "txtIntMaxLength", 8 * kPx, 23 * kPx, 60 * kPx, 21 * kPx);
  Add("Label", "lblIntRange", 74 * kPx, 27 * kPx, 110 * kPx, 13 * kPx)
      .SetProperty("Caption", "(up to 15)");
  Add("Label", "Label2", 8 * kPx, 52 * kPx, 180 * kPx, 13 * kPx)
      .SetProperty("Caption", "Decimal digits:");
  txt_dec_max_length_ = &Add("TextBox", "txtDecMaxLength", 8 * kPx, 67 * kPx, 60 * kPx, 21 * kPx);
  Add("Label", "lblDecRange", 74 * kPx, 71 * kPx, 110 * kPx, 13 * kPx)
      .SetProperty("Caption", "(up to 5)");
  Add("Label", "Label3", 8 * kPx, 96 * kPx, 180 * kPx, 13 * kPx)
      .SetProperty("Caption", "Number format:");
  format_.list = &AddList("cboNumberFormat", kFormats, 8 * kPx, 111 * kPx, 180 * kPx, 21 * kPx);
  flags_ = AddFlags(kFlags, 204 * kPx, 8 * kPx, 188 * kPx, 20 * kPx);

  UserControl& frame = Add("Frame", "fraPreview", 8 * kPx, 142 * kPx, 384 * kPx, 62 * kPx);
  frame.SetProperty("Caption", " Preview ");
  // Tall enough for the shadow's band below the face.
  SetPreview(Add("KestuNumberEdit", "prvNumber", 10 * kPx, 22 * kPx, 260 * kPx, 26 * kPx, &frame));
}

void ppgNumberEdit::Fill(UserControl& box) {
  txt_int_max_length_->SetProperty("Text", box.GetProperty("IntMaxLength").ToString());
  txt_dec_max_length_->SetProperty("Text", box.GetProperty("DecMaxLength").ToString());
  format_.Show(box.GetProperty("NumberFormat").ToInteger());
  ShowFlags(flags_, box);
}

// The order is fixed: the flags, which every box takes, then the format,
// then the decimal and the integer lengths, each the leading number of its
// text; a length past 16 bits overflows, and what came before it stays
// assigned.
void ppgNumberEdit::WriteSettings(UserControl& box, bool tolerant) {
  const auto put = [&](const char* property, const Variant& value) {
    Assign(box, property, value, tolerant);
  };
  for (const FlagBox& flag : flags_) put(flag.property, Variant::Boolean(IsChecked(*flag.box)));
  put("NumberFormat", format_.chosen);
  put("DecMaxLength", Val(txt_dec_max_length_->GetProperty("Text").ToString()));
  put("IntMaxLength", Val(txt_int_max_length_->GetProperty("Text").ToString()));
}

// A sample that fills the lengths as the preview holds them, after its
// own limits, negative when negatives are allowed.
void ppgNumberEdit::ShowSample() {
  UserControl& preview = Preview();
  const int integers = static_cast<int>(preview.GetProperty("IntMaxLength").ToInteger());
  const int decimals = static_cast<int>(preview.GetProperty("DecMaxLength").ToInteger());
  const bool negative = preview.GetProperty("AllowNegative").ToBool();
  preview.SetProperty("Text", SampleNumber(integers, decimals, negative));
}

}  // namespace kestu
