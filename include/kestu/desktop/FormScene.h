#pragma once
// What a form's picture is made of, cheaply: the form's size and colour
// (or backdrop), each visible control's place and the generation of its
// raster, and the caret's cell. Two scenes of the same form say which rows of the picture
// can differ, so a window compares and sends only those rows instead of
// the whole picture.

#include <cstdint>
#include <optional>
#include <vector>

#include "kestu/foundation/Surface.h"
#include "kestu/host/FormDesigner.h"
#include "kestu/raster/Raster.h"

namespace kestu {

class Host;
class Form;

// Rows [first, end) of a picture; empty when first >= end.
struct RowBand {
  int first = 0;
  int end = 0;

  bool Empty() const { return first >= end; }
  // Widens the band to take in rows [top, bottom).
  void Add(int top, int bottom);
  friend bool operator==(const RowBand&, const RowBand&) = default;
};

class FormScene {
 public:
  // An empty scene: every row differs from it.
  FormScene() = default;
  // `form` as FormPicture would compose it now, the caret only when
  // `caret_lit`, over `backdrop` when there is one.
  FormScene(const Host& host, const Form& form, bool caret_lit, const Raster* backdrop = nullptr);

  // The rows of this scene's picture that can differ from `before`'s: all
  // of them when the form's size, colour or backdrop changed or controls came, went,
  // showed, hid or changed order; else the rows a changed control or the
  // caret or a changed mark covered before or covers now. Empty when nothing changed.
  RowBand RowsChangedSince(const FormScene& before) const;

 private:
  struct Layer {
    int32_t hwnd = 0;
    PixelRect placed;   // where its raster lies: moving it moves the picture
    PixelRect visible;  // what of it the form shows: the rows it covers
    uint64_t generation = 0;
  };

  bool SameLayout(const FormScene& before) const;
  void AddRows(RowBand& band, const PixelRect& rect) const;

  int width_ = -1;
  int height_ = -1;
  Rgb background_ = 0;
  const Raster* backdrop_ = nullptr;
  uint64_t backdrop_generation_ = 0;
  std::vector<Layer> layers_;
  std::optional<PixelRect> caret_;  // the caret's cell on the form, when drawn
  std::vector<DesignMark> marks_;   // a designer's, over the controls
};

}  // namespace kestu
