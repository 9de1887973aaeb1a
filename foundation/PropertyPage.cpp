#include "kestu/foundation/PropertyPage.h"

#include <algorithm>

#include "kestu/foundation/Text.h"

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
