#include "kestu/proppages/ppgButtons.h"

#include <algorithm>

#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

namespace {

// Layout, in pixels of 15 twips: a text column on the left, the flags on
// the right, the two option frames below them.
constexpr int kPx = 15;

// The index of `child` in `array`, or -1.
template <size_t N>
int IndexIn(const std::array<UserControl*, N>& array, const UserControl& child) {
  auto it = std::find(array.begin(), array.end(), &child);
  return it == array.end() ? -1 : static_cast<int>(it - array.begin());
}

}  // namespace

const PageInfo& ppgButtons::Info() {
  static const PageInfo info{"ppgButtons", "General", 380 * kPx, 184 * kPx,
                             [](PageSite& site) { return std::make_unique<ppgButtons>(site); }};
  return info;
}

KESTU_REGISTER_PAGE(ppgButtons)

ppgButtons::ppgButtons(PageSite& site) : PropertyPage(site) {
  Add("Label", "Label1", 8 * kPx, 8 * kPx, 170 * kPx, 13 * kPx).SetProperty("Caption", "Caption");
  txt_caption_ = &Add("TextBox", "txtCaption", 8 * kPx, 23 * kPx, 170 * kPx, 21 * kPx);
  txt_caption_->SetProperty("Text", "Text1");
  Add("Label", "Label3", 8 * kPx, 52 * kPx, 80 * kPx, 13 * kPx).SetProperty("Caption", "Margin:");
  txt_margin_ = &Add("TextBox", "txtMargin", 8 * kPx, 67 * kPx, 80 * kPx, 21 * kPx);
  Add("Label", "Label4", 98 * kPx, 52 * kPx, 80 * kPx, 13 * kPx)
      .SetProperty("Caption", "Distance:");
  txt_distance_ = &Add("TextBox", "txtDistance", 98 * kPx, 67 * kPx, 80 * kPx, 21 * kPx);

  static constexpr FlagSpec kChecks[] = {
      {"chkEnabled", "Enabled", "Enabled"},
      {"chkFlat", "Flat Button", "Style"},
      {"chkActiveBorder", "Active Border", "ActiveBorder"},
      {"chkFocusedUnderline", "FocusedUnderline", "FocusedUnderline"},
      {"chkFocusedBold", "FocusedBold", "FocusedBold"}};
  const std::vector<FlagBox> checks = AddFlags(kChecks, 196 * kPx, 8 * kPx, 176 * kPx, 20 * kPx);
  chk_enabled_ = checks[0].box;
  chk_flat_ = checks[1].box;
  chk_active_border_ = checks[2].box;
  chk_focused_underline_ = checks[3].box;
  chk_focused_bold_ = checks[4].box;

  UserControl& position_frame = Add("Frame", "Frame2", 8 * kPx, 112 * kPx, 176 * kPx, 62 * kPx);
  position_frame.SetProperty("Caption", " Picture Position ");
  static constexpr const char* kPositions[] = {"Top", "Bottom", "Left", "Right"};
  for (int i = 0; i < 4; ++i) {
    opt_position_[i] = &Add("OptionButton", "optPosition", i, (10 + 80 * (i / 2)) * kPx,
                            (18 + 20 * (i % 2)) * kPx, 70 * kPx, 17 * kPx, &position_frame);
    opt_position_[i]->SetProperty("Caption", kPositions[i]);
  }
  UserControl& size_frame = Add("Frame", "Frame3", 196 * kPx, 112 * kPx, 176 * kPx, 62 * kPx);
  size_frame.SetProperty("Caption", " Picture Size ");
  static constexpr const char* kSizes[] = {"16x16 pixels", "32x32 pixels"};
  for (int i = 0; i < 2; ++i) {
    opt_size_[i] = &Add("OptionButton", "optSize", i, 10 * kPx, (18 + 20 * i) * kPx, 150 * kPx,
                        17 * kPx, &size_frame);
    opt_size_[i]->SetProperty("Caption", kSizes[i]);
  }
}

// Always from the first selected control only.
void ppgButtons::PropertyPage_SelectionChanged() {
  UserControl& button = SelectedControls(0);
  txt_caption_->SetProperty("Text", button.GetProperty("Caption"));
  const FlagBox flags[] = {{chk_enabled_, "Enabled"},
                           {chk_active_border_, "ActiveBorder"},
                           {chk_focused_underline_, "FocusedUnderline"},
                           {chk_focused_bold_, "FocusedBold"}};
  ShowFlags(flags, button);
  SetChecked(*chk_flat_, button.GetProperty("Style").ToInteger() == 1);
  txt_distance_->SetProperty("Text", button.GetProperty("Distance").ToString());
  txt_margin_->SetProperty("Text", button.GetProperty("Margin").ToString());
  chosen_size_ = static_cast<int16_t>(button.GetProperty("PictSize").ToInteger());
  chosen_position_ = static_cast<int16_t>(button.GetProperty("PictPosition").ToInteger());
  if (chosen_size_ >= 0 && chosen_size_ < 2)
    opt_size_[chosen_size_]->SetProperty("Value", Variant::Boolean(true));
  if (chosen_position_ >= 0 && chosen_position_ < 4) {
    opt_position_[chosen_position_]->SetProperty("Value", Variant::Boolean(true));
  }
}

// Only the first selected button changes, whatever else is selected: the
// page was made for one button at a time, and it is kept that way.
void ppgButtons::PropertyPage_ApplyChanges() {
  UserControl& button = SelectedControls(0);
  button.SetProperty("Enabled", Variant::Boolean(IsChecked(*chk_enabled_)));
  button.SetProperty("ActiveBorder", Variant::Boolean(IsChecked(*chk_active_border_)));
  button.SetProperty("Style", Variant(IsChecked(*chk_flat_) ? int16_t{1} : int16_t{0}));
  button.SetProperty("FocusedUnderline", Variant::Boolean(IsChecked(*chk_focused_underline_)));
  button.SetProperty("FocusedBold", Variant::Boolean(IsChecked(*chk_focused_bold_)));
  // The leading number of the text; past 16 bits the assignment overflows.
  button.SetProperty("Distance", Val(txt_distance_->GetProperty("Text").ToString()));
  button.SetProperty("Margin", Val(txt_margin_->GetProperty("Text").ToString()));
  button.SetProperty("Caption", txt_caption_->GetProperty("Text"));
  button.SetProperty("PictPosition", chosen_position_);
  button.SetProperty("PictSize", chosen_size_);
}

void ppgButtons::ChildEvent(UserControl& child, const EventInfo& event) {
  if (event.name != "Change" && event.name != "Click") return;
  if (const int position = IndexIn(opt_position_, child); position >= 0) {
    chosen_position_ = static_cast<int16_t>(position);
  } else if (const int size = IndexIn(opt_size_, child); size >= 0) {
    chosen_size_ = static_cast<int16_t>(size);
  }
  SetChanged(true);
}

}  // namespace kestu
