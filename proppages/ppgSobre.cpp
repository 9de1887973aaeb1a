#include "kestu/proppages/ppgSobre.h"

#include <algorithm>
#include <string>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

namespace {

constexpr int kPx = 15;

}  // namespace

const PageInfo& ppgSobre::Info() {
  static const PageInfo info{std::string(kAboutPropertyPage), "About", 380 * kPx, 184 * kPx,
                             [](PageSite& site) { return std::make_unique<ppgSobre>(site); }};
  return info;
}

KESTU_REGISTER_PAGE(ppgSobre)

ppgSobre::ppgSobre(PageSite& site) : PropertyPage(site) {
  UserControl& title = Add("Label", "lblTitle", 8 * kPx, 8 * kPx, 364 * kPx, 20 * kPx);
  FontRef title_font = MakeFont("MS Sans Serif", 12);
  title_font->Bold = true;
  title.SetProperty("Font", title_font);
  title.SetProperty("Caption", "Kestu Controls");
  Add("Label", "lblVersion", 8 * kPx, 30 * kPx, 364 * kPx, 13 * kPx)
      .SetProperty("Caption", std::string("Version ") + KESTU_VERSION);
  Add("Label", "lblControls", 8 * kPx, 50 * kPx, 364 * kPx, 13 * kPx)
      .SetProperty("Caption", "Controls in this library:");
  // By name, as kestu-registry lists them; the dialog controls have no
  // toolbox picture and are not the library's offer.
  std::vector<std::string> names;
  for (const ClassInfo* info : ControlRegistry::Instance().Classes()) {
    if (!info->toolbox_icon.empty()) names.push_back(info->name);
  }
  std::sort(names.begin(), names.end());
  for (int row = 0; row < static_cast<int>(names.size()); ++row) {
    // Two columns: the page is as wide as the dialog's other pages.
    Add("Label", "lblControl", row, (16 + 180 * (row % 2)) * kPx, (68 + 16 * (row / 2)) * kPx,
        176 * kPx, 13 * kPx)
        .SetProperty("Caption", names[static_cast<size_t>(row)]);
  }
}

}  // namespace kestu
