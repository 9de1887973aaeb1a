#include "kestu/foundation/PropertyPage.h"

#include <algorithm>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

void PropertyPage::SetChanged(bool changed) {
  if (changed == changed_) return;
  changed_ = changed;
  site_.ChangedChanged(changed);
}

UserControl& PropertyPage::Add(std::string_view class_name, const std::string& name, int left,
                               int top, int width, int height, UserControl* container) {
  return site_.AddChild(class_name, name, left, top, width, height, container);
}

UserControl& PropertyPage::Add(std::string_view class_name, const std::string& name, int index,
                               int left, int top, int width, int height, UserControl* container) {
  return Add(class_name, name + "(" + std::to_string(index) + ")", left, top, width, height,
             container);
}

bool PropertyPage::Assign(UserControl& control, std::string_view property, const Variant& value,
                          bool tolerant) {
  // Compared as text, as a text box shows a setting: 5 and "5" are one.
  if (control.GetProperty(property).ToString() == value.ToString()) return false;
  try {
    control.SetProperty(property, value);
  } catch (const RuntimeError&) {
    if (!tolerant) throw;
    return false;
  }
  return true;
}

PageRegistry& PageRegistry::Instance() {
  static PageRegistry registry;
  return registry;
}

void PageRegistry::Register(const PageInfo& info) {
  pages_.push_back(&info);
}

const PageInfo* PageRegistry::Find(std::string_view name) const {
  auto it = std::find_if(pages_.begin(), pages_.end(),
                         [&](const PageInfo* page) { return SameName(page->name, name); });
  return it == pages_.end() ? nullptr : *it;
}

}  // namespace kestu
