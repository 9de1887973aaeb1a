#pragma once
// Stands in for a control's surface while the control redraws its face:
// the pixel operations are written down instead of done. A face that
// begins by covering the whole surface shows afterwards only what those
// operations draw, so
// - when they are exactly the ones that made the pixels the surface still
//   holds, doing them again would change nothing and they are left undone;
// - otherwise the surface is left owing them until its pixels are next
//   needed, and a face drawn before then hides the one owed, which is never
//   drawn at all: a copier's bar that nobody watches costs no pixel work.
// Everything else (sizes, measuring) is the real surface's.

#include <cstdint>
#include <string>
#include <vector>

#include "kestu/foundation/Surface.h"

namespace kestu {

// One pixel operation as a surface received it (a font by value).
struct PixelOp {
  enum class Kind { Pixel, Fill, Line, Text };
  Kind kind = Kind::Fill;
  PixelRect where;  // Pixel: left, top; Line: the two ends; Text: left, top
  Rgb color = 0;
  RasterOp op = RasterOp::CopyPen;
  std::string font_name;
  double font_size = 0;
  bool bold = false, italic = false, underline = false, strikethrough = false;
  std::string text;

  FontSpec Font() const { return {font_name, font_size, bold, italic, underline, strikethrough}; }
  friend bool operator==(const PixelOp&, const PixelOp&) = default;
};

class FaceRecording final : public Surface, private PendingPixels {
 public:
  FaceRecording() = default;
  // Lays down a face still owed: the surface may outlive its control.
  ~FaceRecording();
  FaceRecording(const FaceRecording&) = delete;
  FaceRecording& operator=(const FaceRecording&) = delete;

  // Starts writing down a face bound for `real`.
  void Begin(Surface& real);
  // Brings the real surface to what was drawn: the operations written
  // down are done, unless the face is known to show their result already.
  void Finish();

  int Width() const override { return real_->Width(); }
  int Height() const override { return real_->Height(); }
  uint64_t Generation() const override { return real_->Generation(); }
  void Resize(int width, int height, Rgb fill) override;
  Rgb GetPixel(int x, int y) const override;
  void SetPixel(int x, int y, Rgb color, RasterOp op) override;
  void FillRect(const PixelRect& rect, Rgb color, RasterOp op) override;
  void DrawLine(int x1, int y1, int x2, int y2, Rgb color, RasterOp op) override;
  void DrawPicture(const StdPicture& picture, int x, int y, int width, int height,
                   RasterOp op) override;
  TextExtent MeasureText(const FontSpec& font, std::string_view utf8) override;
  int DrawText(const FontSpec& font, std::string_view utf8, int x, int y, Rgb color,
               RasterOp op) override;

 private:
  void Settle() override;
  void Abandon() override;

  void Record(PixelOp op);
  // Draws the face recorded, after any face still owed.
  void DrawNow();
  void ReplayRecorded() const;
  // Does what was written down and draws straight through from now on:
  // for what cannot be compared cheaply, or needs the pixels drawn so far.
  void GoThrough() const;
  bool CoversTheSurface(const PixelOp& first) const;

  Surface* real_ = nullptr;
  // This face's operations; both lists keep their room from face to face.
  mutable std::vector<PixelOp> ops_;
  std::vector<PixelOp> drawn_;        // the operations of the face last drawn or owed
  mutable uint64_t drawn_stamp_ = 0;  // its pixels' stamp after; 0: none to compare
  mutable bool through_ = false;
  bool owed_ = false;  // drawn_ is owed to the surface, not yet on its pixels
};

}  // namespace kestu
