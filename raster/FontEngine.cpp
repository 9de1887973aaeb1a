#include "kestu/raster/FontEngine.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <system_error>

#include "kestu/foundation/RuntimeError.h"

namespace kestu {

namespace {

// Forms are laid out against the usual desktop interface fonts. Matching
// alone sends these names to a font of quite other widths; Liberation Sans
// keeps their widths, so captions fit where their authors put them.
constexpr std::array<std::string_view, 5> kMetricAliases{"ms sans serif", "microsoft sans serif",
                                                         "tahoma", "segoe ui", "verdana"};
constexpr const char* kMetricAliasTarget = "Liberation Sans";

// The family that fills in characters the chosen font lacks.
constexpr const char* kCoverageFamily = "DejaVu Sans";

// Where the font packages the build installs put the families the engine
// leans on (the metric alias and the coverage family). Asking for one of
// them opens its file straight away: reading the font configuration costs
// about half a millisecond, a fair part of a short-lived program's start.
// The regular faces, in this order, are also the last resort when font
// matching finds nothing at all.
struct WellKnownFile {
  std::string_view family;  // folded
  bool bold = false;
  bool italic = false;
  const char* path = nullptr;
};
constexpr std::array<WellKnownFile, 8> kWellKnownFiles{{
    {"dejavu sans", false, false, "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"},
    {"dejavu sans", true, false, "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"},
    {"dejavu sans", false, true, "/usr/share/fonts/truetype/dejavu/DejaVuSans-Oblique.ttf"},
    {"dejavu sans", true, true, "/usr/share/fonts/truetype/dejavu/DejaVuSans-BoldOblique.ttf"},
    {"liberation sans", false, false,
     "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf"},
    {"liberation sans", true, false,
     "/usr/share/fonts/truetype/liberation2/LiberationSans-Bold.ttf"},
    {"liberation sans", false, true,
     "/usr/share/fonts/truetype/liberation2/LiberationSans-Italic.ttf"},
    {"liberation sans", true, true,
     "/usr/share/fonts/truetype/liberation2/LiberationSans-BoldItalic.ttf"},
}};

bool Installed(const char* path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

// The usual font folders and their caches, without fontconfig's rules. An
// installed family is found here just as the full configuration finds it,
// since its rules only rename families and tune rendering (which this
// engine does its own way).
constexpr const char* kFontFoldersOnly =
    "<fontconfig>"
    "<dir>/usr/share/fonts</dir><dir>/usr/local/share/fonts</dir>"
    "<dir prefix=\"xdg\">fonts</dir><dir>~/.fonts</dir>"
    "<cachedir>/var/cache/fontconfig</cachedir><cachedir prefix=\"xdg\">fontconfig</cachedir>"
    "</fontconfig>";

constexpr double kDefaultPixelSize = 11.0;
constexpr double kLargestPixelSize = 2048.0;

// Family names compare without regard to ASCII case, as the host's do.
std::string Fold(std::string_view name) {
  std::string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return folded;
}

// The em size as FreeType takes it: 26.6 pixels (a character size at 72
// dots per inch is its size in pixels). FreeType then rounds the size to
// whole pixels for fonts whose hinting needs it.
long SizeF26(double pixel_size) {
  if (!std::isfinite(pixel_size)) pixel_size = kDefaultPixelSize;
  return std::lround(std::clamp(pixel_size, 1.0, kLargestPixelSize) * 64.0);
}

// A regular face with the style synthesised, so text never fails to lay out.
FontFile LastResortFile(bool bold, bool italic) {
  for (const WellKnownFile& known : kWellKnownFiles) {
    if (!known.bold && !known.italic && Installed(known.path)) {
      return {known.path, 0, {bold, italic}};
    }
  }
  return {{}, 0, {}};
}

std::optional<FontFile> WellKnown(const std::string& family, bool bold, bool italic) {
  const std::string folded = Fold(family);
  for (const WellKnownFile& known : kWellKnownFiles) {
    if (known.family == folded && known.bold == bold && known.italic == italic) {
      if (!Installed(known.path)) return std::nullopt;
      return FontFile{known.path, 0, {}};
    }
  }
  return std::nullopt;
}

enum class Exactly { kFamily, kAnyFamily };

// Family names as fontconfig compares them: case and blanks ignored.
std::string FamilyKey(std::string_view name) {
  std::string key = Fold(name);
  std::erase(key, ' ');
  return key;
}

// Whether `match` is an outline font of the family asked for, under any of
// its names.
bool IsOutlineOfFamily(FcPattern* match, const std::string& family) {
  FcBool outline = FcFalse;
  if (FcPatternGetBool(match, FC_OUTLINE, 0, &outline) != FcResultMatch || !outline) return false;
  const std::string wanted = FamilyKey(family);
  FcChar8* name = nullptr;
  for (int i = 0; FcPatternGetString(match, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
    if (FamilyKey(reinterpret_cast<const char*>(name)) == wanted) return true;
  }
  return false;
}

// The best font of `config` for the request; with Exactly::kFamily, only a
// font of that very family counts.
std::optional<FontFile> MatchFont(FcConfig* config, const std::string& family, bool bold,
                                  bool italic, Exactly exactly) {
  FcPattern* pattern = config != nullptr ? FcPatternCreate() : nullptr;
  if (pattern == nullptr) return std::nullopt;
  if (!family.empty()) {
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  }
  FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(config, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  FcPattern* match = FcFontMatch(config, pattern, &result);
  FcPatternDestroy(pattern);
  if (match == nullptr) return std::nullopt;

  FontFile file;
  FcChar8* path = nullptr;
  int index = 0;
  int weight = FC_WEIGHT_REGULAR;
  int slant = FC_SLANT_ROMAN;
  if (FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch) {
    file.path = reinterpret_cast<const char*>(path);
  }
  FcPatternGetInteger(match, FC_INDEX, 0, &index);
  FcPatternGetInteger(match, FC_WEIGHT, 0, &weight);
  FcPatternGetInteger(match, FC_SLANT, 0, &slant);
  const bool wanted = exactly == Exactly::kAnyFamily || IsOutlineOfFamily(match, family);
  FcPatternDestroy(match);
  if (file.path.empty() || !wanted) return std::nullopt;

  // A family without a bold or italic face is emboldened or sheared.
  file.index = index;
  file.synthetic.bold = bold && weight < FC_WEIGHT_DEMIBOLD;
  file.synthetic.oblique = italic && slant == FC_SLANT_ROMAN;
  return file;
}

}  // namespace

// The libraries' side: fontconfig's configuration, loaded once and owned
// here so that it is released with the engine, FreeType's handle, and every
// face opened, one per (file, index, size), kept for the life of the engine.
struct FontEngine::Backend {
  using Key = std::tuple<std::filesystem::path, int, long>;

  FcConfig* folders_only = nullptr;  // both loaded on first need
  bool folders_only_loaded = false;
  FcConfig* system = nullptr;
  bool system_loaded = false;
  FT_Library library = nullptr;
  std::map<Key, FT_Face> open;
  std::filesystem::path coverage_file;

  Backend() {
    if (FT_Init_FreeType(&library) != 0) library = nullptr;
  }
  ~Backend() {
    for (auto& [key, face] : open) {
      if (face != nullptr) FT_Done_Face(face);
    }
    if (library != nullptr) FT_Done_FreeType(library);
    if (folders_only != nullptr) FcConfigDestroy(folders_only);
    if (system != nullptr) FcConfigDestroy(system);
  }

  FcConfig* FoldersOnly() {
    if (!folders_only_loaded) {
      folders_only = LoadFoldersOnly();
      folders_only_loaded = true;
    }
    return folders_only;
  }

  // The system's configuration with all its rules: reading them costs a
  // few milliseconds, so only a request that needs a rule pays for it.
  FcConfig* System() {
    if (!system_loaded) {
      system = FcInitLoadConfigAndFonts();
      system_loaded = true;
    }
    return system;
  }

  static FcConfig* LoadFoldersOnly() {
    FcConfig* config = FcConfigCreate();
    if (config == nullptr) return nullptr;
    if (!FcConfigParseAndLoadFromMemory(config, reinterpret_cast<const FcChar8*>(kFontFoldersOnly),
                                        FcFalse) ||
        !FcConfigBuildFonts(config)) {
      FcConfigDestroy(config);
      return nullptr;
    }
    return config;
  }

  // The face sized to `size` (26.6 pixels); null when the file does not
  // open, remembered so that it is not tried again.
  FT_Face Open(const std::filesystem::path& path, int index, long size) {
    auto [found, added] = open.try_emplace(Key{path, index, size}, nullptr);
    if (!added || library == nullptr) return found->second;
    FT_Face face = nullptr;
    if (FT_New_Face(library, path.c_str(), index, &face) != 0) return nullptr;
    if (FT_Set_Char_Size(face, 0, size, 72, 72) != 0) {
      FT_Done_Face(face);
      return nullptr;
    }
    found->second = face;
    return face;
  }
};

FontEngine& FontEngine::Instance() {
  static FontEngine engine;
  return engine;
}

FontEngine::FontEngine() : backend_(std::make_unique<Backend>()) {
  backend_->coverage_file = MatchSystemFont(kCoverageFamily, false, false).path;
}

FontEngine::~FontEngine() = default;

Font& FontEngine::FontFor(const FontSpec& spec) {
  const long size = SizeF26(spec.pixel_size);
  const auto request = std::make_tuple(spec.name, size, spec.bold, spec.italic);
  if (last_font_ != nullptr && SpecKeyLess::AsView(last_spec_) == request) return *last_font_;
  if (auto known = by_spec_.find(request); known != by_spec_.end()) {
    Remember(known->first, known->second);
    return *known->second;
  }

  const FontFile file = FileFor(spec.name, spec.bold, spec.italic);
  std::unique_ptr<Font>& font =
      fonts_[FontKey{file.path, file.index, size, file.synthetic.bold, file.synthetic.oblique}];
  if (!font) {
    FT_Face face = file.path.empty() ? nullptr : backend_->Open(file.path, file.index, size);
    FT_Face coverage = backend_->coverage_file.empty()
                           ? nullptr
                           : backend_->Open(backend_->coverage_file, 0, size);
    if (coverage == face) coverage = nullptr;
    font = std::make_unique<Font>(face, coverage, file.synthetic, size / 64.0);
  }
  auto [added, _] =
      by_spec_.emplace(SpecKey{std::string(spec.name), size, spec.bold, spec.italic}, font.get());
  Remember(added->first, font.get());
  return *font;
}

void FontEngine::Remember(const SpecKey& spec, Font* font) {
  last_spec_ = spec;
  last_font_ = font;
}

FontFile FontEngine::FileFor(std::string_view family, bool bold, bool italic) {
  std::string folded = Fold(family);
  auto key = std::make_tuple(folded, bold, italic);
  if (auto known = files_.find(key); known != files_.end()) return known->second;

  FontFile file;
  if (auto registered = registered_.find(folded); registered != registered_.end()) {
    file = {registered->second, 0, {bold, italic}};
  } else if (std::find(kMetricAliases.begin(), kMetricAliases.end(), folded) !=
             kMetricAliases.end()) {
    file = MatchSystemFont(kMetricAliasTarget, bold, italic);
  } else {
    file = MatchSystemFont(std::string(family), bold, italic);
  }
  files_.emplace(std::move(key), file);
  return file;
}

void FontEngine::RegisterFamily(std::string_view family, const std::filesystem::path& file) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    throw RuntimeError(err::kFileNotFound, file.string());
  }
  registered_[Fold(family)] = file;
  // Fonts already made stay valid for whoever holds them; only the way
  // names lead to them changes.
  files_.clear();
  by_spec_.clear();
  last_font_ = nullptr;
}

FontFile FontEngine::MatchSystemFont(const std::string& family, bool bold, bool italic) {
  if (auto file = WellKnown(family, bold, italic)) return *file;
  if (!family.empty()) {
    if (auto file = MatchFont(backend_->FoldersOnly(), family, bold, italic, Exactly::kFamily)) {
      return *file;
    }
  }
  if (auto file = MatchFont(backend_->System(), family, bold, italic, Exactly::kAnyFamily)) {
    return *file;
  }
  return LastResortFile(bold, italic);
}

}  // namespace kestu
