#pragma once
// The picture buttons' property page, titled "General": the caption, the
// margin and distance, the flags, and the picture's position and size of
// the first selected button. It names no button class: it reaches the
// button through its properties by name, so the command button and the
// toolbar's button share it.
#include <array>
#include <cstdint>

#include "kestu/foundation/PropertyPage.h"

namespace kestu {

class ppgButtons final : public PropertyPage {
 public:
  static const PageInfo& Info();
  explicit ppgButtons(PageSite& site);

  void PropertyPage_SelectionChanged() override;
  void PropertyPage_ApplyChanges() override;
  void ChildEvent(UserControl& child, const EventInfo& event) override;

 private:
  UserControl* txt_caption_;
  UserControl* txt_margin_;
  UserControl* txt_distance_;
  UserControl* chk_enabled_;
  UserControl* chk_flat_;
  UserControl* chk_active_border_;
  UserControl* chk_focused_underline_;
  UserControl* chk_focused_bold_;
  std::array<UserControl*, 4> opt_position_{};
  std::array<UserControl*, 2> opt_size_{};
  // The page's own choices, kept from the option buttons' clicks.
  int16_t chosen_position_ = 0;
  int16_t chosen_size_ = 0;
};

}  // namespace kestu
