// kestu-script: runs a script against a headless host and prints its
// trace. The language and the trace are described in docs/kestu-script.md.

#include <cstring>
#include <exception>
#include <iostream>
#include <string>

#include "kestu/host/Host.h"
#include "kestu/script/ScriptRunner.h"

namespace {

constexpr const char* kUsage =
    "usage: kestu-script [SCRIPT]\n"
    "Runs SCRIPT (standard input when absent or \"-\") against a headless host\n"
    "and prints its trace. Exit status: 0 when the script ran to its end, 2 for\n"
    "a line it cannot parse or a name it does not know, 1 for a host failure.\n"
    "\n"
    "Files the script reads (picture(...), load @FILE, openform) are looked for\n"
    "beside the script first, then in the working folder; files it writes\n"
    "(saveform, png) go to the working folder.\n"
    "\n"
    "Beyond the documented commands: `paint NAME` (UserControl_Paint),\n"
    "`remove NAME` (Terminate, then off the form), `get Clipboard`, the form's\n"
    "Caption, Width, Height, BackColor and Font (`set Form1.Width 9000`) and\n"
    "Modified, `dblclick NAME [BUTTON [SHIFT [X Y]]]` as for click, and\n"
    "`call NAME.ZOrder [0|1]` (to the front of its container, or the back),\n"
    "`dialog open NAME [NAME...]` and `dialog close` (the designer's property\n"
    "dialog, its controls PropertyDialog.CHILD), and `png FILE FORM` (a whole\n"
    "form, a property page's).\n"
    "\n"
    "A run-time error is a trace line; where it came from is also written on\n"
    "standard error, and so is a form file's property key no control knows.\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc > 2) {
    std::cerr << kUsage;
    return kestu::ScriptRunner::kHostFailure;
  }
  const std::string script = argc == 2 ? argv[1] : "-";
  if (script == "-h" || script == "--help") {
    std::cout << kUsage;
    return 0;
  }
  try {
    kestu::Host host;
    kestu::ScriptRunner runner(host, std::cout, std::cerr);
    if (script == "-") return runner.Run(std::cin, "<stdin>");
    return runner.RunFile(script);
  } catch (const std::exception& error) {
    std::cout.flush();
    std::cerr << "kestu-script: " << error.what() << "\n";
    return kestu::ScriptRunner::kHostFailure;
  }
}
