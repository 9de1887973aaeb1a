#pragma once
// The library's About page, the last tab of every property dialog: the
// library's name and version and the controls it offers, each with what
// it is for.
#include "kestu/foundation/PropertyPage.h"

namespace kestu {

class ppgSobre final : public PropertyPage {
 public:
  static const PageInfo& Info();
  explicit ppgSobre(PageSite& site);

  // Nothing on the page depends on the selection or can be changed.
  void PropertyPage_SelectionChanged() override {}
  void PropertyPage_ApplyChanges() override {}
};

}  // namespace kestu
