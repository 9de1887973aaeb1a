// kestu-designer: designs form files in real windows. The designer's
// window holds the toolbar, the toolbox and the property grid; the form
// being designed has a window of its own.

#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "apps/ToolMain.h"
#include "designer/Designer.h"
#include "kestu/desktop/SdlDesktop.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/script/TraceWriter.h"

namespace {

constexpr const char* kUsage =
    "usage: kestu-designer [FORM.json] [--trace]\n"
    "Designs FORM.json (a new form saved there when it does not exist yet) in a\n"
    "window: place controls from the toolbox, set their properties in the grid\n"
    "or in their property pages (F4, or a double-click), save with Ctrl+S and\n"
    "try the form with Run (F5). --trace prints the trace kestu-script prints,\n"
    "so that the events of the running form can be followed.\n";

struct Options {
  std::filesystem::path form_file;
  bool trace = false;
  bool help = false;
};

std::optional<Options> ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (arg == "--trace") {
      options.trace = true;
    } else if (arg == "-h" || arg == "--help") {
      options.help = true;
    } else if (!arg.starts_with("-") && options.form_file.empty()) {
      options.form_file = arg;
    } else {
      return std::nullopt;
    }
  }
  return options;
}

int Run(const Options& options) {
  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    std::cerr << "kestu-designer: no display to design on (" << *problem << ")\n";
    return 1;
  }
  kestu::Host host;
  // Each trace line is flushed as it is written: a test reads it live.
  std::cout << std::unitbuf;
  kestu::TraceWriter trace(std::cout);
  if (options.trace) host.AddObserver(&trace);
  kestu::Designer designer(host, options.form_file);
  kestu::SdlDesktop desktop(host);
  // Closing the designer's window or the designed form's is quitting: a
  // modified form is saved or given up first.
  desktop.SetCloseRequest([&designer](kestu::Form& form) {
    const bool designing =
        &form == &designer.Window() || &form == &designer.Document().DesignedForm();
    return designing ? designer.Quit() : true;
  });
  desktop.Run([&designer] { designer.AfterTurn(); });
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return kestu::ToolMain("kestu-designer", kUsage, ParseOptions(argc, argv), Run);
}
