#pragma once
// Names of forms, controls, properties and events compare without regard
// to case, as the host's late binding does.

#include <algorithm>
#include <cctype>
#include <string_view>

namespace kestu {

inline bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) ==
                  std::tolower(static_cast<unsigned char>(y));
         });
}

}  // namespace kestu
