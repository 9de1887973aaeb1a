#pragma once
// The masked edit box's property page, titled "General": the mask, the
// length, the text style with its fill character, the default value and
// the flags of the first selected box, with a live preview: a masked box
// of the page's own showing the mask, the style and the default value as
// the page's settings stand, before they are applied.
#include <cstdint>
#include <vector>

#include "kestu/proppages/PreviewPage.h"

namespace kestu {

class ppgTextEdit final : public PreviewPage {
 public:
  static const PageInfo& Info();
  explicit ppgTextEdit(PageSite& site);

 private:
  void Fill(UserControl& box) override;
  void WriteSettings(UserControl& box, bool tolerant) override;
  void ShowSample() override;
  void Edited(UserControl& child) override;

  UserControl* txt_mask_;
  UserControl* txt_max_length_;
  UserControl* txt_fill_char_;
  UserControl* cbo_text_style_;
  UserControl* txt_default_value_;
  std::vector<FlagBox> flags_;
  // The page's own choice, kept from the list's clicks: a box loaded with
  // a style the list does not name keeps it until another is chosen.
  int16_t chosen_style_ = 0;
};

}  // namespace kestu
