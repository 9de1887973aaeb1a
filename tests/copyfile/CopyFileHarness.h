#pragma once
// An in-process container for one file copier: a software raster as its
// face, a log of every event it raises ("Progress(40)", "Error(53)", ...)
// and helpers for the files the tests copy.

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "kestu/copyfile/KestuCopyFile.h"
#include "kestu/foundation/ControlSite.h"
#include "kestu/raster/FontEngine.h"
#include "kestu/raster/Raster.h"

namespace kestu::copytest {

// A family that draws from one known file, so that pictures of the face
// are the same on every machine.
inline constexpr const char* kTestFamily = "Kestu Copier Test Sans";

inline void RegisterTestFont() {
  static const bool registered = [] {
    FontEngine::Instance().RegisterFamily(
        kTestFamily, "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf");
    return true;
  }();
  (void)registered;
}

class CopyFileHarness : public ControlSite {
 public:
  // A copier of `width` x `height` twips at 15 twips per pixel, created new
  // (Initialize, InitProperties, Resize, Show) at run time or design time.
  explicit CopyFileHarness(bool user_mode = true, int width = 2400, int height = 360)
      : user_mode_(user_mode), width_(width), height_(height), raster_(width / 15, height / 15) {
    RegisterTestFont();
    control_.AttachSite(this);
    control_.UserControl_Initialize();
    control_.UserControl_InitProperties();
    control_.UserControl_Resize();
    control_.UserControl_Show();
  }

  KestuCopyFile& Copier() { return control_; }
  Raster& Face() { return raster_; }
  std::vector<std::string>& Events() { return events_; }

  // Names the files and copies, returning the events of the copy only.
  std::vector<std::string> Copy(const std::string& source, const std::string& target) {
    events_.clear();
    control_.SetSourceFile(source);
    control_.SetNewFile(target);
    control_.BeginCopyFile();
    return events_;
  }

  // ---- ControlSite ----
  Surface& GetSurface() override { return raster_; }
  int ScreenTwipsPerPixelX() const override { return 15; }
  int ScreenTwipsPerPixelY() const override { return 15; }
  bool AmbientUserMode() const override { return user_mode_; }
  FontRef AmbientFont() const override { return MakeFont(kTestFamily, 8.25); }
  std::string AmbientDisplayName() const override { return "CopyFile1"; }
  bool AmbientDisplayAsDefault() const override { return false; }
  Variant GetExtender(std::string_view) const override { return {}; }
  void SetExtender(std::string_view, const Variant&) override {}
  int WidthTwips() const override { return width_; }
  int HeightTwips() const override { return height_; }
  void RequestSize(int width, int height) override {
    width_ = width;
    height_ = height;
  }
  void PropertyChanged(std::string_view name) override {
    events_.push_back("notify " + std::string(name));
  }
  void OnEvent(UserControl&, const EventInfo& event, std::span<EventArgument> args) override {
    std::string line = event.name;
    for (size_t i = 0; i < args.size(); ++i) {
      // The cancel flag as it arrives is not interesting; the value is.
      if (args[i].param->by_ref) continue;
      line += (i == 0 ? "(" : ", ") + args[i].ref.Get().ToString();
    }
    if (!args.empty()) line += ")";
    events_.push_back(line);
  }
  void Refresh() override {}
  std::optional<int> PopupMenu(std::span<const MenuItem>) override { return std::nullopt; }
  void DoEvents() override {}
  void Beep() override {}
  std::string ClipboardGetText() override { return {}; }
  void ClipboardSetText(std::string_view) override {}
  int32_t hWnd() const override { return 0; }
  int32_t hDC() const override { return 0; }
  int32_t FormHwnd() const override { return 0; }
  UserControl* FormActiveControl() const override { return nullptr; }

 private:
  bool user_mode_;
  int width_;
  int height_;
  Raster raster_;
  KestuCopyFile control_;
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
