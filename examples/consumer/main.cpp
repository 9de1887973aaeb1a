// Lists the control classes the installed library registers, with their
// properties: the smallest program an application programmer can write.
#include <cstdio>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Integer.h"

int main() {
  for (const kestu::ClassInfo* info : kestu::ControlRegistry::Instance().Classes()) {
    std::printf("%s: %zu properties\n", info->name.c_str(), info->properties.size());
  }
  return kestu::RoundHalfEven(2.5) == 2.0 ? 0 : 1;
}
