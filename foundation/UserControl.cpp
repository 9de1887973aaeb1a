#include "kestu/foundation/UserControl.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "foundation/FaceRecording.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {

namespace {

// The font a control draws with before anyone gave it one.
const StdFont& FallbackFont() {
  static const StdFont font;
  return font;
}

// Twips per unit of a scale mode; `twips_per_pixel` serves the pixel scale.
double TwipsPerUnit(int16_t mode, int twips_per_pixel, bool vertical) {
  switch (mode) {
    case scale::kPoints:
      return 20.0;
    case scale::kPixels:
      return twips_per_pixel;
    case scale::kCharacters:
      return vertical ? 240.0 : 120.0;
    case scale::kInches:
      return 1440.0;
    case scale::kMillimeters:
      return 1440.0 / 25.4;
    case scale::kCentimeters:
      return 1440.0 / 2.54;
    default:
      return 1.0;  // twips, and a user scale that was never defined
  }
}

// Pixels are whole: a coordinate rounds to the nearest one, halves up.
int RoundToPixel(double pixels) {
  return static_cast<int>(std::floor(pixels + 0.5));
}

}  // namespace

UserControl::UserControl() = default;

namespace {

const PropertyInfo& PropertyOf(const UserControl& control, std::string_view name) {
  const PropertyInfo* property = control.Class().FindProperty(name);
  if (!property) throw RuntimeError(err::kNotSupported, std::string(name));
  return *property;
}

}  // namespace

void UserControl::SetProperty(std::string_view name, const Variant& value) {
  const PropertyInfo& property = PropertyOf(*this, name);
  if (!property.CanWrite()) throw RuntimeError(err::kPropertyReadOnly, property.name);
  property.set(*this, value);
}

Variant UserControl::GetProperty(std::string_view name) {
  const PropertyInfo& property = PropertyOf(*this, name);
  if (!property.CanRead()) throw RuntimeError(err::kPropertyWriteOnly, property.name);
  return property.get(*this);
}

void UserControl::UserControl_InitProperties() {
  InitDeclaredProperties(*this);
}

void UserControl::UserControl_ReadProperties(PropertyBag& bag) {
  ReadDeclaredProperties(*this, bag);
}

void UserControl::UserControl_WriteProperties(PropertyBag& bag) {
  WriteDeclaredProperties(*this, bag);
}
UserControl::~UserControl() = default;

void UserControl::AttachSite(ControlSite* site) {
  site_ = site;
  if (!site_) return;
  twips_per_pixel_x_ = std::max(1, site_->ScreenTwipsPerPixelX());
  twips_per_pixel_y_ = std::max(1, site_->ScreenTwipsPerPixelY());
  if (!font_) {
    // The surface starts with the control's own font, not the container's:
    // a control that wants the ambient font takes it when it is first
    // placed (a toolbar button never does), or a saved one when loaded.
    font_ = std::make_shared<StdFont>(FallbackFont());
  }
}

double UserControl::UnitTwipsX() const {
  return TwipsPerUnit(scale_mode_, twips_per_pixel_x_, false);
}
double UserControl::UnitTwipsY() const {
  return TwipsPerUnit(scale_mode_, twips_per_pixel_y_, true);
}

int UserControl::ToPixelX(double units) const {
  return RoundToPixel(units * UnitTwipsX() / twips_per_pixel_x_);
}
int UserControl::ToPixelY(double units) const {
  return RoundToPixel(units * UnitTwipsY() / twips_per_pixel_y_);
}
double UserControl::FromPixelX(double pixels) const {
  return pixels * twips_per_pixel_x_ / UnitTwipsX();
}
double UserControl::FromPixelY(double pixels) const {
  return pixels * twips_per_pixel_y_ / UnitTwipsY();
}

RasterOp UserControl::Op() const {
  return static_cast<RasterOp>(draw_mode_);
}

bool UserControl::RaiseToContainer(const EventInfo& info, std::span<EventArgument> arguments) {
  if (!site_) return true;
  std::weak_ptr<int> alive = lifetime_;
  site_->OnEvent(*this, info, arguments);
  return !alive.expired();
}

// ---- Drawing members ----

UserControl::FaceScope::FaceScope(UserControl& control) : control_(control) {
  if (control_.face_ != nullptr || control_.site_ == nullptr) return;  // already recording
  if (!control_.face_recording_) control_.face_recording_ = std::make_unique<FaceRecording>();
  control_.face_recording_->Begin(control_.site_->GetSurface());
  control_.face_ = control_.face_recording_.get();
  recording_ = true;
}

UserControl::FaceScope::~FaceScope() {
  if (!recording_) return;
  control_.face_ = nullptr;
  control_.face_recording_->Finish();
}

void UserControl::Cls() {
  Observe([&] { return DrawCall{.kind = DrawCall::Kind::Cls}; });
  Surface& surface = GetSurface();
  // Cls always paints the background as it is, whatever DrawMode says.
  surface.FillRect({0, 0, surface.Width(), surface.Height()}, ResolveColor(back_color_),
                   RasterOp::CopyPen);
  current_x_ = 0;
  current_y_ = 0;
}

void UserControl::Line(float x1, float y1, float x2, float y2) {
  Line(x1, y1, x2, y2, fore_color_, LineKind::Plain);
}

void UserControl::Line(float x1, float y1, float x2, float y2, OLE_COLOR color, LineKind kind) {
  static constexpr DrawCall::Kind kKinds[] = {DrawCall::Kind::Line, DrawCall::Kind::Box,
                                              DrawCall::Kind::FilledBox};
  Observe([&] {
    return DrawCall{.kind = kKinds[static_cast<int>(kind)],
                    .x1 = x1,
                    .y1 = y1,
                    .x2 = x2,
                    .y2 = y2,
                    .color = color};
  });
  Surface& surface = GetSurface();
  const Rgb pen = ResolveColor(color);
  const int px1 = ToPixelX(x1), py1 = ToPixelY(y1), px2 = ToPixelX(x2), py2 = ToPixelY(y2);
  current_x_ = x2;
  current_y_ = y2;
  if (kind == LineKind::Plain) {
    surface.DrawLine(px1, py1, px2, py2, pen, Op());
    return;
  }
  // Boxes take both corners in, unlike the plain line.
  const int left = std::min(px1, px2), right = std::max(px1, px2) + 1;
  const int top = std::min(py1, py2), bottom = std::max(py1, py2) + 1;
  if (kind == LineKind::FilledBox) {
    surface.FillRect({left, top, right, bottom}, pen, Op());
    return;
  }
  // Each pixel of the outline is drawn once, so XOR-like pens stay exact.
  surface.FillRect({left, top, right, top + 1}, pen, Op());
  if (bottom - top > 1) surface.FillRect({left, bottom - 1, right, bottom}, pen, Op());
  if (bottom - top > 2) {
    surface.FillRect({left, top + 1, left + 1, bottom - 1}, pen, Op());
    if (right - left > 1) surface.FillRect({right - 1, top + 1, right, bottom - 1}, pen, Op());
  }
}

void UserControl::PSet(float x, float y, OLE_COLOR color) {
  Observe([&] { return DrawCall{.kind = DrawCall::Kind::PSet, .x1 = x, .y1 = y, .color = color}; });
  GetSurface().SetPixel(ToPixelX(x), ToPixelY(y), ResolveColor(color), Op());
  current_x_ = x;
  current_y_ = y;
}

void UserControl::Print(std::string_view text) {
  Observe([&] {
    return DrawCall{.kind = DrawCall::Kind::Print,
                    .x1 = current_x_,
                    .y1 = current_y_,
                    .color = fore_color_,
                    .text = std::string(text)};
  });
  Surface& surface = GetSurface();
  const FontSpec font = RenderFont();
  const int advance = surface.DrawText(font, text, ToPixelX(current_x_), ToPixelY(current_y_),
                                       ResolveColor(fore_color_), Op());
  current_x_ += static_cast<float>(FromPixelX(advance));
}

void UserControl::PaintPicture(const StdPicture& picture, float x, float y,
                               std::optional<float> width, std::optional<float> height) {
  const bool scaled = width.has_value() || height.has_value();
  const int px_width = width ? ToPixelX(*width) : picture.WidthPixels();
  const int px_height = height ? ToPixelY(*height) : picture.HeightPixels();
  Observe([&] {
    return DrawCall{.kind = DrawCall::Kind::PaintPicture,
                    .x1 = x,
                    .y1 = y,
                    .x2 = width.value_or(static_cast<float>(FromPixelX(picture.WidthPixels()))),
                    .y2 = height.value_or(static_cast<float>(FromPixelY(picture.HeightPixels()))),
                    .picture_width = picture.WidthPixels(),
                    .picture_height = picture.HeightPixels(),
                    .scaled = scaled};
  });
  GetSurface().DrawPicture(picture, ToPixelX(x), ToPixelY(y), px_width, px_height, Op());
}

float UserControl::TextWidth(std::string_view text) {
  return static_cast<float>(FromPixelX(GetSurface().MeasureText(RenderFont(), text).width));
}

float UserControl::TextHeight(std::string_view text) {
  return static_cast<float>(FromPixelY(GetSurface().MeasureText(RenderFont(), text).height));
}

void UserControl::Refresh() {
  Observe([&] { return DrawCall{.kind = DrawCall::Kind::Refresh}; });
  if (site_) site_->Refresh();
}

float UserControl::ScaleWidth() const {
  return static_cast<float>(FromPixelX(GetSurface().Width()));
}

float UserControl::ScaleHeight() const {
  return static_cast<float>(FromPixelY(GetSurface().Height()));
}

void UserControl::SetScaleMode(int16_t mode) {
  if (mode < scale::kUser || mode > scale::kCentimeters) {
    throw RuntimeError(err::kInvalidPropertyValue, "ScaleMode");
  }
  Observe([&] { return DrawCall{.kind = DrawCall::Kind::ScaleMode, .value = mode}; });
  scale_mode_ = mode;
}

void UserControl::SetDrawMode(int16_t mode) {
  if (mode < 1 || mode > 16) throw RuntimeError(err::kInvalidPropertyValue, "DrawMode");
  Observe([&] { return DrawCall{.kind = DrawCall::Kind::DrawMode, .value = mode}; });
  draw_mode_ = mode;
}

float UserControl::Width() const {
  return static_cast<float>(site_->WidthTwips());
}
float UserControl::Height() const {
  return static_cast<float>(site_->HeightTwips());
}

void UserControl::SetWidth(float twips) {
  site_->RequestSize(static_cast<int>(std::lround(twips)), site_->HeightTwips());
}

void UserControl::SetHeight(float twips) {
  site_->RequestSize(site_->WidthTwips(), static_cast<int>(std::lround(twips)));
}

void UserControl::SetSize(float width_twips, float height_twips) {
  site_->RequestSize(static_cast<int>(std::lround(width_twips)),
                     static_cast<int>(std::lround(height_twips)));
}

void UserControl::SetFont(FontRef font) {
  font_ = std::move(font);
}

bool UserControl::FontBold() const {
  return font_ && font_->Bold;
}
void UserControl::SetFontBold(bool bold) {
  if (font_) font_->Bold = bold;
}
bool UserControl::FontUnderline() const {
  return font_ && font_->Underline;
}
void UserControl::SetFontUnderline(bool underline) {
  if (font_) font_->Underline = underline;
}

int32_t UserControl::hDC() const {
  return site_ ? site_->hDC() : 0;
}
int32_t UserControl::hWnd() const {
  return site_ ? site_->hWnd() : 0;
}

FontSpec UserControl::RenderFont() const {
  const StdFont& font = font_ ? *font_ : FallbackFont();
  // Points at the screen's pixels per inch: 1440 twips per inch, 72 points.
  const double pixels_per_inch = 1440.0 / twips_per_pixel_y_;
  return FontSpec{.name = font.Name,
                  .pixel_size = font.Size * pixels_per_inch / 72.0,
                  .bold = font.Bold,
                  .italic = font.Italic,
                  .underline = font.Underline,
                  .strikethrough = font.Strikethrough};
}

// ---- Container services ----

int32_t UserControl::HoldingFormWindow(int32_t mdi_form_window) const {
  return site_->FormIsMdiChild() ? mdi_form_window : site_->FormHwnd();
}

bool UserControl::FormStoppedBeingActive(bool& form_active, int32_t mdi_form_window,
                                         bool restore_focus) {
  UserControl* active_control = site_->FormActiveControl();
  if (!active_control) return false;
  const bool form_is_active =
      KestuControlsAPI::GetActiveWindow() == HoldingFormWindow(mdi_form_window);
  if (form_is_active && !form_active) {
    form_active = true;
    if (!restore_focus) return false;
    // The focused control may be any control of the form that offers XFocus.
    if (const MethodInfo* x_focus = active_control->Class().FindMethod("XFocus")) {
      x_focus->invoke(*active_control, {});
    }
    return false;
  }
  if (!form_is_active && form_active) {
    form_active = false;
    return true;
  }
  return false;
}

}  // namespace kestu
