#include "foundation/FaceRecording.h"

#include <utility>

namespace kestu {

namespace {

// Raster operations whose result does not depend on the pixel beneath.
bool IgnoresTheDestination(RasterOp op) {
  return op == RasterOp::CopyPen || op == RasterOp::NotCopyPen || op == RasterOp::Blackness ||
         op == RasterOp::Whiteness;
}

void Replay(const PixelOp& op, Surface& surface) {
  switch (op.kind) {
    case PixelOp::Kind::Pixel:
      return surface.SetPixel(op.where.left, op.where.top, op.color, op.op);
    case PixelOp::Kind::Fill:
      return surface.FillRect(op.where, op.color, op.op);
    case PixelOp::Kind::Line:
      return surface.DrawLine(op.where.left, op.where.top, op.where.right, op.where.bottom,
                              op.color, op.op);
    case PixelOp::Kind::Text:
      surface.DrawText(op.Font(), op.text, op.where.left, op.where.top, op.color, op.op);
      return;
  }
}

}  // namespace

FaceRecording::~FaceRecording() {
  if (owed_) real_->SettlePending();
}

void FaceRecording::Begin(Surface& real) {
  if (owed_ && &real != real_) real_->SettlePending();
  real_ = &real;
  ops_.clear();
  through_ = false;
}

void FaceRecording::Finish() {
  if (through_) return;
  const bool covers = !ops_.empty() && CoversTheSurface(ops_.front());
  if (!covers) return DrawNow();
  if (owed_) {
    // The face still owed is hidden wholly by this one: it is never drawn.
    std::swap(ops_, drawn_);
    return;
  }
  if (ops_ == drawn_ && real_->Generation() == drawn_stamp_) return;
  std::swap(ops_, drawn_);
  owed_ = true;
  real_->Defer(*this);
}

void FaceRecording::DrawNow() {
  ReplayRecorded();
  std::swap(ops_, drawn_);
  drawn_stamp_ = 0;
}

void FaceRecording::ReplayRecorded() const {
  real_->SettlePending();  // a face owed goes beneath, even when none was recorded
  for (const PixelOp& op : ops_) Replay(op, *real_);
}

void FaceRecording::Settle() {
  owed_ = false;
  for (const PixelOp& op : drawn_) Replay(op, *real_);
  drawn_stamp_ = real_->Generation();
}

void FaceRecording::Abandon() {
  owed_ = false;
  drawn_stamp_ = 0;
}

bool FaceRecording::CoversTheSurface(const PixelOp& first) const {
  const PixelRect& r = first.where;
  return first.kind == PixelOp::Kind::Fill && IgnoresTheDestination(first.op) && r.left <= 0 &&
         r.top <= 0 && r.right >= real_->Width() && r.bottom >= real_->Height();
}

void FaceRecording::Record(PixelOp op) {
  if (through_) return Replay(op, *real_);
  ops_.push_back(std::move(op));
}

void FaceRecording::GoThrough() const {
  if (through_) return;
  ReplayRecorded();
  ops_.clear();
  drawn_stamp_ = 0;
  through_ = true;
}

void FaceRecording::Resize(int width, int height, Rgb fill) {
  GoThrough();
  real_->Resize(width, height, fill);
}

Rgb FaceRecording::GetPixel(int x, int y) const {
  GoThrough();
  return real_->GetPixel(x, y);
}

void FaceRecording::SetPixel(int x, int y, Rgb color, RasterOp op) {
  Record({.kind = PixelOp::Kind::Pixel, .where = {x, y, x, y}, .color = color, .op = op});
}

void FaceRecording::FillRect(const PixelRect& rect, Rgb color, RasterOp op) {
  Record({.kind = PixelOp::Kind::Fill, .where = rect, .color = color, .op = op});
}

void FaceRecording::DrawLine(int x1, int y1, int x2, int y2, Rgb color, RasterOp op) {
  Record({.kind = PixelOp::Kind::Line, .where = {x1, y1, x2, y2}, .color = color, .op = op});
}

void FaceRecording::DrawPicture(const StdPicture& picture, int x, int y, int width, int height,
                                RasterOp op) {
  GoThrough();
  real_->DrawPicture(picture, x, y, width, height, op);
}

TextExtent FaceRecording::MeasureText(const FontSpec& font, std::string_view utf8) {
  return real_->MeasureText(font, utf8);
}

int FaceRecording::DrawText(const FontSpec& font, std::string_view utf8, int x, int y, Rgb color,
                            RasterOp op) {
  Record({.kind = PixelOp::Kind::Text,
          .where = {x, y, x, y},
          .color = color,
          .op = op,
          .font_name = std::string(font.name),
          .font_size = font.pixel_size,
          .bold = font.bold,
          .italic = font.italic,
          .underline = font.underline,
          .strikethrough = font.strikethrough,
          .text = std::string(utf8)});
  return MeasureText(font, utf8).width;
}

}  // namespace kestu
