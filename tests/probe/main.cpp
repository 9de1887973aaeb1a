// kestu-script-probe: the scripted host with the test probe among its
// control types, so that scripts under tests/scripts/probe/ can show the
// host's own rules through a control that reports every procedure the
// host calls. Usage: kestu-script-probe SCRIPT.

#include <iostream>

#include "kestu/host/Host.h"
#include "kestu/script/ScriptRunner.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: kestu-script-probe SCRIPT\n";
    return kestu::ScriptRunner::kHostFailure;
  }
  kestu::Host host;
  kestu::ScriptRunner runner(host, std::cout, std::cerr);
  return runner.RunFile(argv[1]);
}
