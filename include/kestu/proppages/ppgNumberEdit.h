#pragma once
// The numeric edit box's property page, titled "General": the integer and
// decimal lengths, the number format and the flags of the first selected
// box, with a live preview: a numeric box of the page's own showing a
// sample number with the page's settings as they stand, before they are
// applied.
#include <array>
#include <cstdint>

#include "kestu/foundation/PropertyPage.h"

namespace kestu {

class ppgNumberEdit final : public PropertyPage {
 public:
  static const PageInfo& Info();
  explicit ppgNumberEdit(PageSite& site);

  void PropertyPage_SelectionChanged() override;
  void PropertyPage_ApplyChanges() override;
  void ChildEvent(UserControl& child, const EventInfo& event) override;

 private:
  // A check box and the Boolean property it shows.
  struct FlagBox {
    UserControl* box;
    const char* property;
  };

  // Writes the page's settings to `box` in the apply order. With
  // `tolerant`, a value the box refuses is skipped and the rest still go.
  void WriteSettings(UserControl& box, bool tolerant);
  void UpdatePreview();

  UserControl* txt_int_max_length_;
  UserControl* txt_dec_max_length_;
  UserControl* cbo_number_format_;
  std::array<FlagBox, 6> flags_{};
  UserControl* prv_number_;
  // The page's own choice, kept from the list's clicks: a box loaded with
  // a format the list does not name keeps it until another is chosen.
  int16_t chosen_format_ = 0;
  // Filling the page from the selection redraws the preview once, at the
  // end, rather than once per child.
  bool filling_ = false;
};

}  // namespace kestu
