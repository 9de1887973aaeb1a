// kestu-registry: what the library offers a toolbox, a designer or a
// package index: its controls with their default events, property pages
// and help, the manifest as JSON, and the toolbox icons as PNG files. It
// reads the classes' metadata only, so it cannot disagree with them.

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/ToolboxIcon.h"

namespace {

constexpr const char* kUsage =
    "usage: kestu-registry [--all] [--json] [--icons DIR] [--output FILE]\n"
    "Lists the library's toolbox controls, one a line: the class, its default\n"
    "event (\"-\" for none), its property pages (the About page last) and its\n"
    "help.\n"
    "\n"
    "  --all          also the standard dialog controls, which the toolbox\n"
    "                 does not show\n"
    "  --json         prints the manifest instead: the library's name and\n"
    "                 version, and for each control its name, help, default\n"
    "                 size in twips, default event, property pages, icon file\n"
    "                 and icon as 16 rows of character art\n"
    "  --icons DIR    writes each toolbox icon as DIR/CLASS.png (the folder is\n"
    "                 created), and lists nothing unless --json or --output asks\n"
    "  --output FILE  writes the listing or manifest to FILE, whole or not at all\n"
    "\n"
    "Exit status: 0 done, 1 a file not written or a control's icon malformed,\n"
    "2 a command line not understood.\n";

constexpr int kFailed = 1;
constexpr int kUsageError = 2;

struct Options {
  bool all = false;
  bool json = false;
  bool help = false;
  std::optional<std::filesystem::path> icons;
  std::optional<std::filesystem::path> output;
};

// A command line not understood: the message says which word.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    const auto value = [&]() -> std::filesystem::path {
      if (i + 1 >= argc) throw UsageError(std::string(arg) + " needs a value");
      return argv[++i];
    };
    if (arg == "--all") {
      options.all = true;
    } else if (arg == "--json") {
      options.json = true;
    } else if (arg == "--icons") {
      options.icons = value();
    } else if (arg == "--output" || arg == "-o") {
      options.output = value();
    } else if (arg == "-h" || arg == "--help") {
      options.help = true;
    } else {
      throw UsageError(std::string("unknown argument \"") + std::string(arg) + "\"");
    }
  }
  return options;
}

bool InToolbox(const kestu::ClassInfo& info) {
  return !info.toolbox_icon.empty();
}

// The toolbox's controls by name, then (with --all) the others by name:
// the same order on every run, whatever order the classes registered in.
std::vector<const kestu::ClassInfo*> Listed(bool all) {
  std::vector<const kestu::ClassInfo*> classes;
  for (const kestu::ClassInfo* info : kestu::ControlRegistry::Instance().Classes()) {
    if (all || InToolbox(*info)) classes.push_back(info);
  }
  std::sort(classes.begin(), classes.end(), [](const auto* a, const auto* b) {
    if (InToolbox(*a) != InToolbox(*b)) return InToolbox(*a);
    return a->name < b->name;
  });
  return classes;
}

// A malformed icon stops the run before anything is written: a manifest
// never names an icon that could not be drawn.
void CheckIcons(const std::vector<const kestu::ClassInfo*>& classes) {
  for (const kestu::ClassInfo* info : classes) {
    if (!InToolbox(*info)) continue;
    const std::string problem = kestu::ToolboxIconProblem(info->toolbox_icon);
    if (!problem.empty()) {
      throw std::runtime_error(info->name + "'s toolbox icon: " + problem);
    }
  }
}

std::string IconFile(const kestu::ClassInfo& info) {
  return "icons/" + info.name + ".png";
}

std::string Joined(const std::vector<std::string>& words, std::string_view between) {
  std::string joined;
  for (const std::string& word : words) {
    if (!joined.empty()) joined += between;
    joined += word;
  }
  return joined;
}

void WriteListing(const std::vector<const kestu::ClassInfo*>& classes, std::ostream& out) {
  struct Line {
    std::string name, event, pages, help;
  };
  std::vector<Line> lines;
  size_t name_width = 0, event_width = 0, pages_width = 0;
  for (const kestu::ClassInfo* info : classes) {
    Line line{info->name, info->default_event.empty() ? "-" : info->default_event,
              Joined(info->PropertyPagesShown(), ","), info->help};
    name_width = std::max(name_width, line.name.size());
    event_width = std::max(event_width, line.event.size());
    pages_width = std::max(pages_width, line.pages.size());
    lines.push_back(std::move(line));
  }
  for (const Line& line : lines) {
    out << line.name << std::string(name_width - line.name.size() + 2, ' ') << line.event
        << std::string(event_width - line.event.size() + 2, ' ') << line.pages
        << std::string(pages_width - line.pages.size() + 2, ' ') << line.help << "\n";
  }
}

void WriteManifest(const std::vector<const kestu::ClassInfo*>& classes, std::ostream& out) {
  nlohmann::ordered_json controls = nlohmann::ordered_json::array();
  for (const kestu::ClassInfo* info : classes) {
    nlohmann::ordered_json control;
    control["name"] = info->name;
    control["help"] = info->help;
    control["default_size"] = {
        {"width", info->default_width}, {"height", info->default_height}, {"units", "twips"}};
    control["default_event"] = info->default_event;
    control["property_pages"] = info->PropertyPagesShown();
    control["toolbox"] = InToolbox(*info);
    if (InToolbox(*info)) {
      control["icon_file"] = IconFile(*info);
      control["icon"] = info->toolbox_icon;
    }
    controls.push_back(std::move(control));
  }
  nlohmann::ordered_json manifest;
  manifest["library"] = "kestu";
  manifest["version"] = KESTU_VERSION;
  manifest["controls"] = std::move(controls);
  out << manifest.dump(2) << "\n";
}

// Written beside the file first and renamed over it, so a reader (or a
// build interrupted half way) never meets half a file.
void WriteFileWhole(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::path partial = path;
  partial += ".partial";
  {
    errno = 0;
    std::ofstream file(partial, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
      const std::string why = errno != 0 ? std::strerror(errno) : "write failed";
      std::error_code ignored;
      std::filesystem::remove(partial, ignored);
      throw std::runtime_error("cannot write " + path.string() + ": " + why);
    }
  }
  std::filesystem::rename(partial, path);
}

void WriteIcons(const std::vector<const kestu::ClassInfo*>& classes,
                const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw std::runtime_error("cannot create " + folder.string() + ": " + error.message());
  for (const kestu::ClassInfo* info : classes) {
    if (!InToolbox(*info)) continue;
    const kestu::StdPicture picture = *kestu::ToolboxIconPicture(info->toolbox_icon);
    const std::vector<uint8_t> png =
        kestu::EncodePng(picture.WidthPixels(), picture.HeightPixels(), picture.Pixels());
    WriteFileWhole(folder / (info->name + ".png"),
                   std::string_view(reinterpret_cast<const char*>(png.data()), png.size()));
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Options options = ParseOptions(argc, argv);
    if (options.help) {
      std::cout << kUsage;
      return 0;
    }
    const std::vector<const kestu::ClassInfo*> classes = Listed(options.all);
    CheckIcons(classes);
    if (options.icons) WriteIcons(classes, *options.icons);
    // Icons alone are a build step's job: no listing on its output.
    if (options.icons && !options.json && !options.output) return 0;
    std::ostringstream text;
    if (options.json) {
      WriteManifest(classes, text);
    } else {
      WriteListing(classes, text);
    }
    if (options.output) {
      WriteFileWhole(*options.output, text.view());
    } else {
      std::cout << text.view() << std::flush;
      if (!std::cout) throw std::runtime_error("cannot write to standard output");
    }
    return 0;
  } catch (const UsageError& error) {
    std::cerr << "kestu-registry: " << error.what() << " (see --help)\n";
    return kUsageError;
  } catch (const std::exception& error) {
    std::cerr << "kestu-registry: " << error.what() << "\n";
    return kFailed;
  }
}
