#include "kestu/foundation/ClassInfo.h"

#include <algorithm>

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

}  // namespace

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
