// How the property pages and the property dialog look: each page opened on
// a control of its class with a few settings away from the defaults, and
// the dialog on a command button with its first page changed.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/PropertyPage.h"
#include "kestu/host/Host.h"
#include "kestu/host/PageHost.h"
#include "kestu/host/PropertyDialog.h"
#include "kestu/host/Snapshot.h"
#include "support/Golden.h"

namespace kestu {
namespace {

struct PageLook {
  const char* page;
  const char* control_class;
  std::vector<std::pair<const char*, Variant>> settings;
};

HostedControl& NewControl(Host& host, const char* class_name) {
  return host.NewControl(host.CreateForm("Form1"), *ControlRegistry::Instance().Find(class_name),
                         "selected");
}

TEST(PropertyPages, EachPageLooksAsDesigned) {
  const std::vector<PageLook> looks = {
      {"ppgButtons",
       "KestuActiveCommand",
       {{"Caption", Variant("&Save")}, {"Margin", Variant(int16_t{4})}, {"PictSize", Variant(1)}}},
      {"ppgNumberEdit",
       "KestuNumberEdit",
       {{"AllowNegative", Variant::Boolean(true)}, {"DecMaxLength", Variant(int16_t{2})}}},
      {"ppgTextEdit", "KestuTextEdit", {{"Mask", Variant("(##) ####-####")}}},
      {"ppgSobre", "KestuPanel3D", {}},
  };
  for (const PageLook& look : looks) {
    SCOPED_TRACE(look.page);
    Host host;
    HostedControl& selected = NewControl(host, look.control_class);
    for (const auto& [name, value] : look.settings) selected.Control().SetProperty(name, value);
    const PageInfo& info = *PageRegistry::Instance().Find(look.page);
    Form& form = host.CreateForm(info.name, info.width, info.height);
    PageHost page(host, info, form, {&selected});
    page.SelectionChanged();
    test::ExpectMatchesGolden(RenderForm(host, form), std::string("page_") + look.page);
  }
}

// Opened on a button, "Flat Button" clicked: Apply is enabled, OK is the
// default, the first field has the focus.
TEST(PropertyPages, DialogShowsTheChangedPage) {
  Host host;
  HostedControl& selected = NewControl(host, "KestuActiveCommand");
  PropertyDialog dialog(host, {&selected});
  dialog.Window().FindControl("chkFlat")->Control().SetProperty("Value", Variant(int16_t{1}));
  test::ExpectMatchesGolden(RenderForm(host, dialog.Window()), "property_dialog");
}

}  // namespace
}  // namespace kestu
