#pragma once
// The masked edit box's property page, titled "General": the mask, the
// length, the text style with its fill character, the default value and
// the flags of the first selected box, with a live preview: a masked box
// of the page's own showing the mask, the style and the default value as
// the page's settings stand, before they are applied.
#include <array>
#include <cstdint>

#include "kestu/foundation/PropertyPage.h"

namespace kestu {

class ppgTextEdit final : public PropertyPage {
 public:
  static const PageInfo& Info();
  explicit ppgTextEdit(PageSite& site);

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

  UserControl* txt_mask_;
  UserControl* txt_max_length_;
  UserControl* txt_fill_char_;
  UserControl* cbo_text_style_;
  UserControl* txt_default_value_;
  std::array<FlagBox, 5> flags_{};
  UserControl* prv_text_;
  // The page's own choice, kept from the list's clicks: a box loaded with
  // a style the list does not name keeps it until another is chosen.
  int16_t chosen_style_ = 0;
  // Filling the page from the selection redraws the preview once, at the
  // end, rather than once per child.
  bool filling_ = false;
};

}  // namespace kestu
