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
  void Edited(UserControl& child) override { style_.Take(child); }

  UserControl* txt_mask_;
  UserControl* txt_max_length_;
  UserControl* txt_fill_char_;
  UserControl* txt_default_value_;
  std::vector<FlagBox> flags_;
  ListChoice style_;
};

}  // namespace kestu
