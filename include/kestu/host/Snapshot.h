#pragma once
// What a form or a control looks like on the screen, as pixels: the
// picture a window shows and the one tests and `png` save.

#include <optional>
#include <vector>

#include "kestu/host/FormDesigner.h"
#include "kestu/raster/Raster.h"

namespace kestu {

class Host;
class Form;
class HostedControl;

// The caret's cell in pixels of `form` when it is drawn on the form's
// picture (it is shown, lit, and its window is the form or a visible
// control of it), clipped to that window.
std::optional<PixelRect> CaretCellOnForm(const Host& host, const Form& form, bool caret_lit);

// What a form's picture is made of, in paint order: the form's background
// (its colour, or a backdrop picture of the form's size), the raster of
// each visible control at its place in tab order, then the caret's cell,
// inverted, then the marks of the form's designer when it has one. A picture is composed a row at a
// time, so that a window can compose only the rows that changed, straight into what it shows. It
// points into the controls' rasters: compose before anything draws again.
class FormPicture {
 public:
  // A window leaves the caret out in the dark half of its blink. A
  // `backdrop` whose size is not the form's is not used.
  FormPicture(const Host& host, const Form& form, bool caret_lit = true,
              const Raster* backdrop = nullptr);

  int Width() const { return width_; }
  int Height() const { return height_; }
  // Writes row `y` (0 <= y < Height()) of the picture into `out`, which
  // holds Width() pixels.
  void ComposeRow(int y, Rgb* out) const;

 private:
  // A control's raster, already clipped to the form.
  struct Layer {
    const Rgb* pixels;  // the raster's first row
    int stride;         // the raster's width
    int left;           // where the raster's column 0 lands on the form
    int top;
    PixelRect visible;  // the part of the form it covers
  };

  // Columns [left, right) of a row.
  struct Span {
    int left;
    int right;
  };
  // The marks' pixels on row `y`, clipped to the picture.
  void PaintMarks(int y, Rgb* out) const;
  // Calls `paint(left, right)` for each part of [left, right) that nothing
  // painted before on this row covers, then counts it as covered.
  template <typename Paint>
  void PaintUncovered(int left, int right, Paint&& paint) const;

  int width_;
  int height_;
  Rgb background_;
  const Rgb* backdrop_ = nullptr;
  std::vector<Layer> layers_;
  std::optional<PixelRect> caret_;
  std::vector<DesignMark> marks_;
  mutable std::vector<Span> covered_;  // the row being composed
};

// Draws `form` into `out` (resized to the form's client area): see
// FormPicture.
void RenderForm(const Host& host, const Form& form, Raster& out, bool caret_lit = true,
                const Raster* backdrop = nullptr);
Raster RenderForm(const Host& host, const Form& form);

// One control's raster, with the caret when the control shows it.
Raster RenderControl(const Host& host, const HostedControl& control);

}  // namespace kestu
