#pragma once
// The number box's property page, titled "General": the integer and
// decimal lengths (with the limits the box holds them to), the number
// format and the flags of the first selected box, with a live preview: a
// number box of the page's own showing a sample that fills the lengths,
// as the page's settings stand, before they are applied.
#include <cstdint>
#include <vector>

#include "kestu/proppages/PreviewPage.h"

namespace kestu {

class ppgNumberEdit final : public PreviewPage {
 public:
  static const PageInfo& Info();
  explicit ppgNumberEdit(PageSite& site);

 private:
  void Fill(UserControl& box) override;
  void WriteSettings(UserControl& box, bool tolerant) override;
  void ShowSample() override;
  void Edited(UserControl& child) override { format_.Take(child); }

  UserControl* txt_int_max_length_;
  UserControl* txt_dec_max_length_;
  std::vector<FlagBox> flags_;
  ListChoice format_;
};

}  // namespace kestu
