// kestu-run: opens a form file, or the built-in gallery of every control,
// in a real window; or renders it to PNG where there is no display.

#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "apps/ToolMain.h"
#include "apps/kestu-run/Gallery.h"
#include "kestu/desktop/SdlDesktop.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/host/PropertyDialog.h"
#include "kestu/host/Snapshot.h"
#include "kestu/script/TraceWriter.h"

namespace {

constexpr const char* kUsage =
    "usage: kestu-run [FORM.json] [--trace] [--png FILE] [--properties CONTROL]\n"
    "Opens FORM.json, or the gallery of every control when none is given, in a\n"
    "window. --trace prints the trace kestu-script prints; --png FILE renders the\n"
    "form to FILE without opening a window. --properties CONTROL also opens the\n"
    "property dialog of that control of the form, as a designer would: its pages\n"
    "change the control when applied. Without a display the form is rendered to\n"
    "kestu-run.png instead.\n";

constexpr const char* kHeadlessPng = "kestu-run.png";

struct Options {
  std::optional<std::filesystem::path> form_file;
  std::optional<std::filesystem::path> png;
  std::optional<std::string> properties;
  bool trace = false;
  bool help = false;
};

std::optional<Options> ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (arg == "--trace") {
      options.trace = true;
    } else if (arg == "--png" && i + 1 < argc) {
      options.png = argv[++i];
    } else if (arg == "--properties" && i + 1 < argc) {
      options.properties = argv[++i];
    } else if (arg == "-h" || arg == "--help") {
      options.help = true;
    } else if (!arg.starts_with("-") && !options.form_file) {
      options.form_file = arg;
    } else {
      return std::nullopt;
    }
  }
  return options;
}

// The form to show: the file's, or the gallery with its captions.
struct Shown {
  kestu::Form* form = nullptr;
  std::optional<kestu::Gallery> gallery;
};

kestu::FormBackdrop BackdropFor(const Shown& shown) {
  if (!shown.gallery) return {};
  return [&gallery = *shown.gallery](const kestu::Form& form) {
    return &form == &gallery.GetForm() ? &gallery.Backdrop() : nullptr;
  };
}

void RenderPng(const kestu::Host& host, const Shown& shown, const std::filesystem::path& path) {
  kestu::Raster picture(0, 0);
  kestu::RenderForm(host, *shown.form, picture, true,
                    shown.gallery ? &shown.gallery->Backdrop() : nullptr);
  picture.SavePng(path);
}

// The property dialog of the form's control `name`, when one is asked for.
std::unique_ptr<kestu::PropertyDialog> OpenDialog(kestu::Host& host, const Shown& shown,
                                                  const std::optional<std::string>& name) {
  if (!name) return nullptr;
  kestu::HostedControl* control = shown.form->FindControl(*name);
  if (!control) {
    throw std::invalid_argument("--properties: the form " + shown.form->Name() +
                                " has no control '" + *name + "'");
  }
  return std::make_unique<kestu::PropertyDialog>(host, std::vector<kestu::HostedControl*>{control});
}

int Run(const Options& options) {
  kestu::Host host;
  // Each trace line is flushed as it is written: a test reads it live.
  std::cout << std::unitbuf;
  kestu::TraceWriter trace(std::cout);
  if (options.trace) host.AddObserver(&trace);

  Shown shown;
  if (options.form_file) {
    shown.form = &kestu::LoadFormFile(host, *options.form_file);
  } else {
    shown.gallery.emplace(host);
    shown.form = &shown.gallery->GetForm();
  }
  if (options.png) {
    RenderPng(host, shown, *options.png);
    return 0;
  }
  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    const std::filesystem::path png = std::filesystem::absolute(kHeadlessPng);
    RenderPng(host, shown, png);
    std::cerr << "kestu-run: no display (" << *problem << "); the form is rendered to "
              << png.string() << "\n";
    return 0;
  }
  std::unique_ptr<kestu::PropertyDialog> dialog = OpenDialog(host, shown, options.properties);
  kestu::SdlDesktop desktop(host);
  desktop.SetBackdrop(BackdropFor(shown));
  // OK and Cancel end the dialog inside their own click; it goes between turns.
  desktop.Run([&dialog] {
    if (dialog && dialog->Done()) dialog.reset();
  });
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return kestu::ToolMain("kestu-run", kUsage, ParseOptions(argc, argv), Run);
}
