#pragma once
// A property's, method's or event's help string as the controls write it:
// the English text, then the Portuguese in brackets.

#include <string>

namespace kestu {

inline std::string Help(const char* english, const char* portuguese) {
  return std::string(english).append(" [").append(portuguese).append("]");
}

}  // namespace kestu
