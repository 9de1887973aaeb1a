#pragma once
// Names of forms, controls, properties and events compare without regard
// to case, as the host's late binding does.

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>

namespace kestu {

inline bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) ==
                  std::tolower(static_cast<unsigned char>(y));
         });
}

// The entry of `names` that `name` stands for, as the list spells it.
template <typename Names>
std::optional<std::string_view> KnownName(const Names& names, std::string_view name) {
  for (std::string_view known : names) {
    if (SameName(known, name)) return known;
  }
  return std::nullopt;
}

}  // namespace kestu
