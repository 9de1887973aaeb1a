#include "kestu/foundation/ClassInfo.h"

#include <stdexcept>

#include <algorithm>

#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

template <typename Range, typename NameOf>
auto FindByName(const Range& range, std::string_view name, NameOf name_of)
    -> decltype(&*range.begin()) {
  auto it = std::find_if(range.begin(), range.end(),
                         [&](const auto& item) { return SameName(name_of(item), name); });
  return it == range.end() ? nullptr : &*it;
}

// The saved properties of `info`, ordered by the rank `rank_of` gives.
template <typename RankOf>
std::vector<const PropertyInfo*> SavedInOrder(const ClassInfo& info, RankOf rank_of) {
  std::vector<const PropertyInfo*> saved;
  for (const auto* list : {&info.properties, &info.bag_only}) {
    for (const PropertyInfo& property : *list) {
      if (property.persist) saved.push_back(&property);
    }
  }
  std::stable_sort(saved.begin(), saved.end(), [&](const PropertyInfo* a, const PropertyInfo* b) {
    return rank_of(*a->persist) < rank_of(*b->persist);
  });
  return saved;
}

}  // namespace

void ReadDeclaredProperties(UserControl& control, PropertyBag& bag) {
  const auto by_read_rank = [](const PersistInfo& p) { return p.read_rank; };
  std::vector<std::pair<const PersistInfo*, Variant>> values;
  for (const PropertyInfo* property : SavedInOrder(control.Class(), by_read_rank)) {
    const PersistInfo& p = *property->persist;
    if (!p.store) continue;
    Variant value = bag.ReadAs(p.key, p.read_default ? *p.read_default : p.value(control));
    if (p.check) p.check(value);
    values.emplace_back(&p, std::move(value));
  }
  for (const auto& [p, value] : values) p->store(control, value);
}

void WriteDeclaredProperties(UserControl& control, PropertyBag& bag) {
  const auto by_save_rank = [](const PersistInfo& p) { return p.save_rank; };
  for (const PropertyInfo* property : SavedInOrder(control.Class(), by_save_rank)) {
    bag.WriteProperty(property->persist->key, property->persist->value(control));
  }
}

void InitDeclaredProperties(UserControl& control) {
  const auto any_order = [](const PersistInfo&) { return 0; };
  for (const PropertyInfo* property : SavedInOrder(control.Class(), any_order)) {
    if (property->persist->initial) property->persist->store(control, *property->persist->initial);
  }
}

const PropertyInfo* ClassInfo::FindProperty(std::string_view wanted) const {
  return FindByName(properties, wanted, [](const PropertyInfo& p) { return p.name; });
}

const MethodInfo* ClassInfo::FindMethod(std::string_view wanted) const {
  return FindByName(methods, wanted, [](const MethodInfo& m) { return m.name; });
}

const EventInfo* ClassInfo::FindEvent(std::string_view wanted) const {
  auto found = FindByName(events, wanted, [](const EventInfo* e) { return e->name; });
  return found ? *found : nullptr;
}

std::vector<std::string> ClassInfo::PropertyPagesShown() const {
  std::vector<std::string> pages = property_pages;
  pages.emplace_back(kAboutPropertyPage);
  return pages;
}

ControlRegistry& ControlRegistry::Instance() {
  static ControlRegistry registry;
  return registry;
}

void ControlRegistry::Register(const ClassInfo& info) {
  if (!Find(info.name)) classes_.push_back(&info);
}

const ClassInfo* ControlRegistry::Find(std::string_view class_name) const {
  auto found = FindByName(classes_, class_name, [](const ClassInfo* c) { return c->name; });
  return found ? *found : nullptr;
}

const ClassInfo& ControlRegistry::Require(std::string_view class_name, std::string_view who) const {
  const ClassInfo* info = Find(class_name);
  if (!info) {
    throw std::logic_error(std::string(who) + " needs the control class " +
                           std::string(class_name) + ", which is not registered");
  }
  return *info;
}

const std::pair<std::string, int32_t>* ControlRegistry::FindConstant(std::string_view name) const {
  for (const ClassInfo* info : classes_) {
    for (const EnumInfo& e : info->enums) {
      if (auto found = FindByName(e.constants, name, [](const auto& c) { return c.first; })) {
        return found;
      }
    }
  }
  return nullptr;
}

}  // namespace kestu
