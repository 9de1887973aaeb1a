// Fuzzes the user's input path: a form holding one control of every class,
// some inside a panel, and any sequence of keys, text, pointer presses,
// moves and releases, Tab and access keys. Run-time errors are the
// controls' to raise; nothing may crash.

#include <cstdint>
#include <cstring>
#include <string>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"

namespace {

// One control of each class, the odd ones inside the first container.
kestu::Form& BuildForm(kestu::Host& host) {
  kestu::Form& form = host.CreateForm("F", 6000, 4500);
  kestu::HostedControl* container = nullptr;
  int index = 0;
  for (const kestu::ClassInfo* info : kestu::ControlRegistry::Instance().Classes()) {
    const kestu::TwipsRect rect{150 + (index % 3) * 1800, 150 + (index / 3) * 600, 1500, 450};
    std::string name = "c";
    name += std::to_string(index++);
    host.RunReportingErrors([&] {
      kestu::HostedControl* placed =
          &host.NewControl(form, *info, name, rect, index % 2 == 0 ? container : nullptr);
      if (!container && info->is_container) container = placed;
    });
  }
  return form;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kestu::Host host;
  host.SetWarningStream(nullptr);
  kestu::Form& form = BuildForm(host);
  kestu::UserInput& user = host.User();
  // Six bytes a step: what, then two 16-bit numbers.
  for (size_t at = 0; at + 6 <= size; at += 6) {
    const uint8_t what = data[at];
    int16_t a = 0, b = 0;
    std::memcpy(&a, data + at + 2, 2);
    std::memcpy(&b, data + at + 4, 2);
    const auto shift = static_cast<int16_t>(data[at + 1] & 7);
    const auto button = static_cast<int16_t>(1 << (data[at + 1] % 3));
    host.RunReportingErrors([&] {
      switch (what % 9) {
        case 0:
          user.KeyDown(form, a, shift);
          break;
        case 1:
          user.KeyUp(form, a, shift);
          break;
        case 2:
          user.Press(form, a, shift);
          break;
        case 3: {
          const char text[2] = {static_cast<char>(a), static_cast<char>(b)};
          user.Text(form, std::string_view(text, 2));
          break;
        }
        case 4:
          user.PointerDown(form, a, b, button, shift);
          break;
        case 5:
          user.PointerUp(form, a, b, button, shift);
          break;
        case 6:
          user.PointerMove(form, a, b, shift);
          break;
        case 7:
          user.MoveFocus(form, (shift & 1) != 0);
          break;
        case 8:
          host.Tick(1 + (a & 3));
          break;
      }
    });
  }
  return 0;
}
