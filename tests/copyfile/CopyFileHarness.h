#pragma once
// One file copier on the headless host, a log of every event it raises
// ("Progress(40)", "Error(53)", ...) and helpers for the files the tests
// copy.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "kestu/copyfile/KestuCopyFile.h"
#include "kestu/host/Host.h"
#include "kestu/raster/FontEngine.h"

namespace kestu::copytest {

class CopyFileHarness : public HostObserver {
 public:
  // A copier of `width` x `height` twips at 15 twips per pixel, placed new
  // on a form of the host at run time or design time.
  explicit CopyFileHarness(bool user_mode = true, int width = 2400, int height = 360) {
    // A family that draws from one known file, so that pictures of the
    // face are the same on every machine.
    FontEngine::Instance().RegisterFamily(
        "Kestu Copier Test Sans",
        "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf");
    host_.AddObserver(this);
    host_.SetUserMode(user_mode);
    Form& form = host_.CreateForm("Form1");
    form.SetFont(MakeFont("Kestu Copier Test Sans", 8.25));
    hosted_ =
        &host_.NewControl(form, KestuCopyFile::Info(), "CopyFile1", TwipsRect{0, 0, width, height});
  }
  ~CopyFileHarness() override { host_.RemoveObserver(this); }

  KestuCopyFile& Copier() { return static_cast<KestuCopyFile&>(hosted_->Control()); }
  Raster& Face() { return hosted_->GetRaster(); }
  std::vector<std::string>& Events() { return events_; }

  // Names the files and copies, returning the events of the copy only.
  std::vector<std::string> Copy(const std::string& source, const std::string& target) {
    events_.clear();
    Copier().SetSourceFile(source);
    Copier().SetNewFile(target);
    Copier().BeginCopyFile();
    return events_;
  }

  void OnEvent(HostedControl&, const EventInfo& event, std::span<EventArgument> args) override {
    std::string line = event.name;
    for (size_t i = 0; i < args.size(); ++i) {
      // The cancel flag as it arrives is not interesting; the value is.
      if (args[i].param->by_ref) continue;
      line += (i == 0 ? "(" : ", ") + args[i].ref.Get().ToString();
    }
    if (!args.empty()) line += ")";
    events_.push_back(line);
  }

 private:
  Host host_;
  HostedControl* hosted_ = nullptr;
  std::vector<std::string> events_;
};

// A fresh folder under the system's temporary folder, removed afterwards.
// Its path has no dot, so volume names cut only where a test puts a dot.
class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kestu_copy_XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// Bytes that repeat only every 251 bytes, so a misplaced block shows.
inline std::string PatternBytes(size_t size, unsigned seed = 7) {
  std::string bytes(size, '\0');
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>((i * 31 + seed) % 251);
  return bytes;
}

// "@path": the name of the volume set whose first volume is path.001.
inline std::string VolumeSet(const std::string& path) {
  std::string name = "@";
  name += path;
  return name;
}

inline void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace kestu::copytest
