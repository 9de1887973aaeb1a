#include "kestu/host/Snapshot.h"

#include <algorithm>

#include "kestu/host/Host.h"

namespace kestu {

namespace {

PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

// Inverts the caret's cell, clipped to its window at `window` (pixels of
// `out`), as the system draws a solid caret.
void DrawCaret(const Caret& caret, const PixelRect& window, Raster& out) {
  const PixelRect cell{window.left + caret.x, window.top + caret.y,
                       window.left + caret.x + caret.width, window.top + caret.y + caret.height};
  const PixelRect clipped = Intersect(cell, window);
  if (clipped.left < clipped.right && clipped.top < clipped.bottom) {
    out.FillRect(clipped, 0, RasterOp::Invert);
  }
}

}  // namespace

void RenderForm(const Host& host, const Form& form, Raster& out, bool caret_lit) {
  const Rgb background = ResolveColor(form.BackColor());
  if (out.Width() != form.WidthPixels() || out.Height() != form.HeightPixels()) {
    out.Resize(form.WidthPixels(), form.HeightPixels(), background);
  }
  out.FillRect({0, 0, out.Width(), out.Height()}, background, RasterOp::CopyPen);
  for (const auto& control : form.Controls()) {
    if (!control->Visible()) continue;
    const PixelRect at = control->PixelBoundsOnForm();
    out.Blit(control->GetRaster(), at.left, at.top);
  }
  const auto& caret = host.GetCaret();
  if (!caret || !caret->shown || !caret_lit) return;
  const Host::WindowRef owner = host.FindWindow(caret->hwnd);
  if (owner.form == &form) {
    DrawCaret(*caret, {0, 0, out.Width(), out.Height()}, out);
  } else if (owner.control && &owner.control->Owner() == &form && owner.control->Visible()) {
    DrawCaret(*caret, owner.control->PixelBoundsOnForm(), out);
  }
}

Raster RenderForm(const Host& host, const Form& form) {
  Raster out(form.WidthPixels(), form.HeightPixels(), ResolveColor(form.BackColor()));
  RenderForm(host, form, out);
  return out;
}

Raster RenderControl(const Host& host, const HostedControl& control) {
  const Raster& raster = control.GetRaster();
  Raster out(raster.Width(), raster.Height());
  out.Blit(raster, 0, 0);
  const auto& caret = host.GetCaret();
  if (caret && caret->shown && caret->hwnd == control.hWnd()) {
    DrawCaret(*caret, {0, 0, out.Width(), out.Height()}, out);
  }
  return out;
}

}  // namespace kestu
