// copy-gui: the file copier in a window. "Copy" (or Enter) copies SOURCE
// to TARGET while the bar shows how far it got; "Cancel" (or Escape) stops
// a copy, and closes the window when none is running. A name beginning
// with "@" is a volume set: "@part" splits into part.001, part.002, ...
// of VOLUME_SIZE KB each, or joins such a set.
//
//   copy-gui SOURCE TARGET [VOLUME_SIZE]
//
// One line on standard output says how each copy ended.

#include <charconv>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>

#include "kestu/buttons/KestuActiveCommand.h"
#include "kestu/copyfile/KestuCopyFile.h"
#include "kestu/desktop/SdlDesktop.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"
#include "kestu/textedit/KestuTextEdit.h"

namespace {

constexpr std::string_view kUsage = "usage: copy-gui SOURCE TARGET [VOLUME_SIZE]";

// What ended the copy the loop is running, as the copier's events said.
enum class Ending { None, Done, Failed };

int Run(int argc, char** argv) {
  if (argc < 3 || argc > 4) {
    std::cerr << kUsage << "\n";
    return 2;
  }
  const std::string source = argv[1];
  const std::string target = argv[2];
  int32_t volume_kb = 1400;
  if (argc == 4) {
    const std::string_view text = argv[3];
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), volume_kb);
    if (fault != std::errc() || end != text.data() + text.size() || volume_kb < 1) {
      std::cerr << "copy-gui: VOLUME_SIZE must be a whole number of KB, not '" << text << "'\n";
      return 2;
    }
  }
  // The copier opens files the way the host's runtime does: a missing
  // source is created empty (and the copy then fails), and a target is
  // written over without being shortened. Both are checked here first, so
  // that the program never leaves such files behind.
  const std::string first_source =
      source.starts_with('@') ? kestu::KestuCopyFile::FirstVolumeName(source) : source;
  if (!std::filesystem::is_regular_file(first_source)) {
    std::cerr << "copy-gui: no file '" << first_source << "' to copy\n";
    return 1;
  }
  if (!target.starts_with('@') && std::filesystem::exists(target)) {
    std::cerr << "copy-gui: '" << target << "' exists; give a new name\n";
    return 1;
  }
  if (const auto problem = kestu::SdlDesktop::DisplayProblem()) {
    std::cerr << "copy-gui: no display to open a window on (" << *problem << ")\n";
    return 1;
  }

  kestu::Host host;
  kestu::Form& form = host.CreateForm("Copy", 5400, 2100);
  form.SetCaption("Copy");

  // There is no label control: a disabled, flat text box in the form's
  // colour serves as one, and Tab passes it by.
  auto& names =
      host.New<kestu::KestuTextEdit>(form, "names", kestu::TwipsRect{240, 240, 4920, 315});
  names.SetProperty("MaxLength", int16_t{255});
  names.SetText(source + "  to  " + target);
  names.SetProperty("Border3D", kestu::Variant::Boolean(false));
  // Colours are OLE_COLOR values, which the metadata takes as Longs.
  names.SetProperty("BackColor", static_cast<int32_t>(kestu::syscolor::kButtonFace));
  names.SetProperty("DisabledColor", static_cast<int32_t>(kestu::syscolor::kButtonText));
  names.SetEnabled(false);

  auto& copier =
      host.New<kestu::KestuCopyFile>(form, "copier", kestu::TwipsRect{240, 660, 4920, 360});
  copier.SetSourceFile(source);
  copier.SetNewFile(target);
  copier.SetProperty("VolumeSize", volume_kb);

  auto& copy =
      host.New<kestu::KestuActiveCommand>(form, "copy", kestu::TwipsRect{2400, 1320, 1215, 435});
  copy.SetCaption("&Copy");
  auto& cancel =
      host.New<kestu::KestuActiveCommand>(form, "cancel", kestu::TwipsRect{3945, 1320, 1215, 435});
  cancel.SetCaption("Cancel");
  // Enter presses Copy and Escape presses Cancel, wherever the focus is.
  host.FindControl("copy", &form)->SetDefault(true);
  host.FindControl("cancel", &form)->SetCancel(true);

  kestu::SdlDesktop desktop(host);

  // The buttons only ask; the loop below acts. A copy runs inside
  // BeginCopyFile, and the Progress handler turns the loop while it does,
  // so the copy must not start inside a Click handler: that runs in the
  // middle of the loop's own handling of a mouse release or a key.
  bool start_asked = false;
  bool cancel_asked = false;
  bool close_asked = false;
  bool copying = false;
  bool window_closed = false;
  bool turning = false;
  int16_t last_percent = 0;
  Ending ending = Ending::None;
  int16_t error_number = 0;
  std::string announced;  // the volume the copier named last
  const bool joining = source.starts_with('@') && !target.starts_with('@');

  copy.Click.Connect([&] { start_asked = true; });
  cancel.Click.Connect([&] {
    if (copying) {
      cancel_asked = true;
    } else {
      close_asked = true;
    }
  });

  // The copier raises Progress after every block with a Cancel flag by
  // reference: setting it stops the copy before the next block. Turning
  // the loop here once is what lets the bar show and the user press
  // Cancel while the copy runs.
  copier.Progress.Connect([&](int16_t percent, int16_t& cancel_flag) {
    // The copier also raises Progress when it draws its face (shown,
    // repainted): only a running copy turns the loop, and never twice over.
    if (!copying || turning) return;
    last_percent = percent;
    turning = true;
    const bool open = desktop.RunOnce(0);
    turning = false;
    if (!open) {
      // The window was closed: the form and its copier are gone, and
      // with them the flag. The copier notices and stops by itself.
      window_closed = true;
      return;
    }
    if (cancel_asked) cancel_flag = 1;
  });
  // Between volumes too.
  copier.NextVolume.Connect([&](const std::string& name, int16_t& cancel_flag) {
    announced = name;
    if (cancel_asked) cancel_flag = 1;
  });
  copier.Done.Connect([&] { ending = Ending::Done; });
  copier.Error.Connect([&](int16_t number) {
    // A join has no Done: it reads volumes until the next one is missing,
    // and ends with error 53 for that name. That is the set's end, unless
    // the name is there and could not be read.
    if (number == kestu::err::kFileNotFound && source.starts_with('@') &&
        !std::filesystem::exists(announced)) {
      ending = Ending::Done;
      return;
    }
    ending = Ending::Failed;
    error_number = number;
  });

  copy.XFocus();
  while (desktop.RunOnce(std::numeric_limits<int>::max())) {
    if (close_asked) {
      host.CloseForm(form);
      break;
    }
    if (!start_asked) continue;
    start_asked = false;
    cancel_asked = false;
    ending = Ending::None;
    last_percent = 0;
    announced.clear();
    copy.SetEnabled(false);
    copying = true;
    copier.BeginCopyFile();
    copying = false;
    // A join's bar starts again at each volume: say which one it was at.
    const std::string at = std::to_string(last_percent) + "%" + (joining ? " of " + announced : "");
    if (window_closed) {
      std::cout << "cancelled at " << at << ": the window was closed" << std::endl;
      break;
    }
    copy.SetEnabled(true);
    switch (ending) {
      case Ending::Done:
        std::cout << "done: " << source << " copied to " << target << std::endl;
        break;
      case Ending::Failed:
        std::cout << "failed: error " << error_number << " " << kestu::ErrorMessage(error_number);
        // The copier counts in 32 bits, percentages included.
        if (error_number == kestu::err::kOverflow) {
          std::cout << " (the copier takes files of up to 21,474,836 bytes)";
        }
        std::cout << std::endl;
        break;
      case Ending::None:
        // Cancelled: no event follows, and what was written stays.
        std::cout << "cancelled at " << at << ": " << target << " is incomplete" << std::endl;
        break;
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "copy-gui: " << e.what() << "\n";
    return 1;
  }
}
