#include "kestu/host/TipWindow.h"

#include <algorithm>
#include <string>
#include <utility>

#include "kestu/foundation/OleColor.h"
#include "kestu/host/Host.h"
#include "kestu/host/ToolWindow.h"

namespace kestu {

namespace {

// The system's tooltip colours: black text on pale yellow, a black frame.
constexpr OLE_COLOR kTipText = 0x80000017;
constexpr OLE_COLOR kTipBackground = 0x80000018;

// The tip's font, the host's default form font, rendered at the screen's
// pixels per inch as a form's text is.
FontSpec TipFont(const Host& host) {
  const StdFont& font = *host.DefaultFont();
  const double pixels_per_inch = 1440.0 / host.TwipsPerPixelY();
  return FontSpec{.name = font.Name,
                  .pixel_size = font.Size * pixels_per_inch / 72.0,
                  .bold = font.Bold,
                  .italic = font.Italic};
}

}  // namespace

PixelRect TipWindow::PlaceByCursor(int x, int y, int width, int height, const PixelRect& screen) {
  int left = x + kCursorOffsetX;
  int top = y + kCursorOffsetY;
  if (left + width > screen.right) left = screen.right - width;
  // Above the cursor rather than under it: a tip under the pointer would
  // go the moment it came.
  if (top + height > screen.bottom) top = y - kGapAboveCursor - height;
  left = std::max(left, screen.left);
  top = std::max(top, screen.top);
  return {left, top, left + width, top + height};
}

void TipWindow::Show(std::string_view text) {
  if (!allowed_) return;
  if (window_ && window_->Text() != text) Hide();
  ToolWindow& window = window_ ? *window_ : Load();
  window.SetText(std::string(text));
  Draw(window);
  const POINTAPI cursor = host_.CursorPos();
  window.SetScreenRect(PlaceByCursor(cursor.x, cursor.y, window.Picture().Width(),
                                     window.Picture().Height(), host_.ScreenBounds()));
  host_.ShowToolWindow(window, true);
}

void TipWindow::Hide() {
  if (!window_) return;
  host_.DestroyToolWindow(*std::exchange(window_, nullptr));
}

ToolWindow& TipWindow::Load() {
  window_ = &host_.CreateToolWindow();
  window_->on_mouse_over = [this] { Hide(); };
  return *window_;
}

void TipWindow::Draw(ToolWindow& window) {
  Raster& picture = window.Picture();
  const FontSpec font = TipFont(host_);
  const TextExtent extent = picture.MeasureText(font, window.Text());
  const int width = extent.width + 2 * kMargin;
  const int height = extent.height + 2 * kMargin;
  const Rgb background = ResolveColor(kTipBackground);
  const Rgb ink = ResolveColor(kTipText);
  picture.Resize(width, height, background);
  picture.FillRect({0, 0, width, height}, background, RasterOp::CopyPen);
  picture.FillRect({0, 0, width, 1}, ink, RasterOp::CopyPen);
  picture.FillRect({0, height - 1, width, height}, ink, RasterOp::CopyPen);
  picture.FillRect({0, 0, 1, height}, ink, RasterOp::CopyPen);
  picture.FillRect({width - 1, 0, width, height}, ink, RasterOp::CopyPen);
  picture.DrawText(font, window.Text(), kMargin, kMargin, ink, RasterOp::CopyPen);
}

}  // namespace kestu
