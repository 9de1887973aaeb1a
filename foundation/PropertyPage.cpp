#include "kestu/foundation/PropertyPage.h"

#include <algorithm>

#include "kestu/foundation/ClassInfo.h"
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

std::vector<PropertyPage::FlagBox> PropertyPage::AddFlags(std::span<const FlagSpec> specs, int left,
                                                          int top, int width, int row_height) {
  constexpr int kBoxHeight = 255;  // twips: a check box's height on every page
  std::vector<FlagBox> flags;
  for (const FlagSpec& spec : specs) {
    UserControl& box = Add("CheckBox", spec.name, left, top, width, kBoxHeight);
    box.SetProperty("Caption", spec.caption);
    flags.push_back({&box, spec.property});
    top += row_height;
  }
  return flags;
}

UserControl& PropertyPage::AddList(const std::string& name, std::span<const char* const> items,
                                   int left, int top, int width, int height) {
  UserControl& list = Add("ComboBox", name, left, top, width, height);
  const MethodInfo* add_item = list.Class().FindMethod("AddItem");
  for (const char* item : items) {
    Variant arguments[] = {Variant(item), Variant()};
    add_item->invoke(list, arguments);
  }
  return list;
}

bool PropertyPage::IsChecked(UserControl& box) {
  return box.GetProperty("Value").ToInteger() == 1;
}

void PropertyPage::SetChecked(UserControl& box, bool checked) {
  box.SetProperty("Value", Variant(checked ? int16_t{1} : int16_t{0}));
}

void PropertyPage::ShowFlags(std::span<const FlagBox> flags, UserControl& control) {
  for (const FlagBox& flag : flags)
    SetChecked(*flag.box, control.GetProperty(flag.property).ToBool());
}

bool PropertyPage::Assign(UserControl& control, std::string_view property, const Variant& value,
                          bool tolerant) {
  // Compared as text, as a text box shows a setting: 5 and "5" are one.
  if (control.GetProperty(property).ToString() == value.ToString()) return false;
  return Put(control, property, value, tolerant);
}

bool PropertyPage::Put(UserControl& control, std::string_view property, const Variant& value,
                       bool tolerant) {
  try {
    control.SetProperty(property, value);
  } catch (const RuntimeError&) {
    if (!tolerant) throw;
    return false;
  }
  return true;
}

void PropertyPage::ListChoice::Show(int16_t value) {
  chosen = value;
  const bool listed = value >= 0 && value < list->GetProperty("ListCount").ToInteger();
  list->SetProperty("ListIndex", listed ? value : int16_t{-1});
}

void PropertyPage::ListChoice::Take(const UserControl& child) {
  if (&child != list) return;
  const int16_t index = list->GetProperty("ListIndex").ToInteger();
  if (index >= 0) chosen = index;
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
