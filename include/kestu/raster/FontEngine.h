#pragma once
// Finds, opens and keeps the fonts the raster draws with. A family name is
// mapped to a file once; a file is opened once per size; a style is
// rendered once per character. Used from the user-interface thread only.

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>

#include "kestu/foundation/Surface.h"
#include "kestu/raster/Font.h"

namespace kestu {

// Where a family's face for one style comes from.
struct FontFile {
  std::filesystem::path path;  // empty when no font could be found at all
  int index = 0;               // face inside a collection
  SyntheticStyle synthetic;
  friend bool operator==(const FontFile&, const FontFile&) = default;
};

class FontEngine {
 public:
  static FontEngine& Instance();

  FontEngine(const FontEngine&) = delete;
  FontEngine& operator=(const FontEngine&) = delete;
  ~FontEngine();

  // The font that draws `spec`. The reference stays valid for the life of
  // the engine.
  Font& FontFor(const FontSpec& spec);

  // The file that draws `family` in a style. The usual desktop interface
  // families go to Liberation Sans; a family nothing matches falls back to
  // an installed sans font.
  FontFile FileFor(std::string_view family, bool bold, bool italic);

  // Makes `family` draw from `file` in every style (bold and italic
  // synthesised), bypassing the system's font matching, so drawings made
  // with it are the same on every machine with that file. Throws error 53
  // when the file does not exist.
  void RegisterFamily(std::string_view family, const std::filesystem::path& file);

 private:
  FontEngine();

  struct Backend;  // fontconfig and FreeType
  using SpecKey = std::tuple<std::string, long, bool, bool>;
  // Finds a SpecKey from a request holding the family as a string_view,
  // so a warm look-up copies no string. Both sides compare as views.
  struct SpecKeyLess {
    using is_transparent = void;
    template <typename A, typename B>
    bool operator()(const A& a, const B& b) const {
      return AsView(a) < AsView(b);
    }
    template <typename K>
    static std::tuple<std::string_view, long, bool, bool> AsView(const K& key) {
      return {std::get<0>(key), std::get<1>(key), std::get<2>(key), std::get<3>(key)};
    }
  };
  using FontKey = std::tuple<std::filesystem::path, int, long, bool, bool>;

  FontFile MatchSystemFont(const std::string& family, bool bold, bool italic);
  void Remember(const SpecKey& spec, Font* font);

  std::unique_ptr<Backend> backend_;
  std::map<std::string, std::filesystem::path> registered_;  // folded family -> file
  std::map<std::tuple<std::string, bool, bool>, FontFile> files_;
  std::map<FontKey, std::unique_ptr<Font>> fonts_;
  std::map<SpecKey, Font*, SpecKeyLess> by_spec_;
  // The request answered last: a face asks for one font again and again.
  SpecKey last_spec_;
  Font* last_font_ = nullptr;
};

}  // namespace kestu
