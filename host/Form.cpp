#include "kestu/host/Form.h"
#include "kestu/foundation/Text.h"

#include <algorithm>
#include <array>
#include <limits>

#include "host/Units.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/HostedControl.h"
#include "raster/Clip.h"

namespace kestu {

Form::Form(std::string name, int32_t hwnd, int width_twips, int height_twips, int twips_per_pixel_x,
           int twips_per_pixel_y, FontRef font)
    : name_(std::move(name)),
      hwnd_(hwnd),
      caption_(name_),
      width_twips_(width_twips),
      height_twips_(height_twips),
      twips_per_pixel_x_(twips_per_pixel_x),
      twips_per_pixel_y_(twips_per_pixel_y),
      font_(std::move(font)) {}

Form::~Form() = default;

void Form::Resize(int width_twips, int height_twips) {
  if (width_twips < 0 || height_twips < 0) throw RuntimeError(err::kInvalidPropertyValue, name_);
  CheckSurfaceSize(width_twips, height_twips, twips_per_pixel_x_, twips_per_pixel_y_,
                   "form '" + name_ + "'");
  width_twips_ = width_twips;
  height_twips_ = height_twips;
  DockControls();
}

int Form::WidthPixels() const {
  return TwipsToPixels(width_twips_, twips_per_pixel_x_);
}
int Form::HeightPixels() const {
  return TwipsToPixels(height_twips_, twips_per_pixel_y_);
}

PixelRect Form::ScreenRect() const {
  return {screen_left_, screen_top_, screen_left_ + WidthPixels(), screen_top_ + HeightPixels()};
}

void Form::MoveOnScreen(int left, int top) {
  screen_left_ = left;
  screen_top_ = top;
}

std::span<const OwnProperty<Form>> Form::Properties() {
  using P = OwnProperty<Form>;
  using File = FileValue::Kind;
  constexpr int64_t kTwips = std::numeric_limits<int32_t>::max();
  static const std::array<P, 6> kTable = {{
      {"Caption",
       [](const Form& f) { return Variant(f.caption_); },
       [](Form& f, const Variant& v) { f.caption_ = v.ToString(); },
       {File::String},
       "String",
       "The text in the form's title bar. [O texto na barra de título do formulário.]"},
      {"Width",
       [](const Form& f) { return Variant(static_cast<float>(f.width_twips_)); },
       [](Form& f, const Variant& v) { f.Resize(CLng(v.ToDouble()), f.height_twips_); },
       {File::Integer, 0, kTwips},
       "Single",
       "The form's inside width, in twips. [A largura interna do formulário, em twips.]"},
      {"Height",
       [](const Form& f) { return Variant(static_cast<float>(f.height_twips_)); },
       [](Form& f, const Variant& v) { f.Resize(f.width_twips_, CLng(v.ToDouble())); },
       {File::Integer, 0, kTwips},
       "Single",
       "The form's inside height, in twips. [A altura interna do formulário, em twips.]"},
      {"BackColor",
       [](const Form& f) { return Variant(static_cast<int32_t>(f.back_color_)); },
       [](Form& f, const Variant& v) { f.back_color_ = static_cast<OLE_COLOR>(v.ToLong()); },
       {File::Integer, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()},
       "OLE_COLOR",
       "The form's background colour. [A cor de fundo do formulário.]"},
      {"Font",
       [](const Form& f) { return Variant(f.font_); },
       [](Form& f, const Variant& v) {
         FontRef font = v.ToFont();
         if (!font) throw RuntimeError(err::kInvalidPropertyValue, "Font");
         f.font_ = std::move(font);
       },
       {File::Font},
       "StdFont",
       "The font the form's controls start with. [A fonte com que os controles do formulário "
       "começam.]"},
      {"Modified",
       [](const Form& f) { return Variant::Boolean(f.modified_); },
       nullptr,
       {},
       "Boolean",
       "Whether the form changed since it was loaded or saved. [Se o formulário mudou desde que "
       "foi carregado ou salvo.]"},
  }};
  return kTable;
}

std::optional<std::string_view> Form::PropertyName(std::string_view name) {
  const auto* property = FindOwnProperty(Properties(), name);
  return property ? std::optional(property->name) : std::nullopt;
}

Variant Form::GetProperty(std::string_view name) const {
  return OwnPropertyOrRaise(Properties(), name).get(*this);
}

void Form::SetProperty(std::string_view name, const Variant& value) {
  SetOwnProperty(Properties(), *this, name, value);
}

HostedControl* Form::FindControl(std::string_view name) const {
  for (const auto& control : controls_) {
    if (SameName(control->Name(), name)) return control.get();
  }
  return nullptr;
}

HostedControl& Form::Add(std::unique_ptr<HostedControl> control) {
  stacking_.push_back(control.get());
  controls_.push_back(std::move(control));
  Restacked();
  return *controls_.back();
}

std::unique_ptr<HostedControl> Form::Remove(const HostedControl& control) {
  auto it = std::find_if(controls_.begin(), controls_.end(),
                         [&](const auto& c) { return c.get() == &control; });
  if (it == controls_.end()) return nullptr;
  std::unique_ptr<HostedControl> removed = std::move(*it);
  controls_.erase(it);
  std::erase(stacking_, removed.get());
  Restacked();
  if (active_control_ == removed.get()) active_control_ = nullptr;
  return removed;
}

int Form::TabIndexOf(const HostedControl& control) const {
  for (size_t i = 0; i < controls_.size(); ++i) {
    if (controls_[i].get() == &control) return static_cast<int>(i);
  }
  return -1;
}

const std::vector<HostedControl*>& Form::PaintOrder() const {
  if (paint_order_valid_) return paint_order_;
  paint_order_.clear();
  // Depth first from the form: each control, then what it holds.
  const auto add_children = [this](const HostedControl* container, auto& add) -> void {
    for (HostedControl* control : stacking_) {
      if (control->Container() != container) continue;
      paint_order_.push_back(control);
      if (control->Class().is_container) add(control, add);
    }
  };
  add_children(nullptr, add_children);
  paint_order_valid_ = true;
  return paint_order_;
}

std::vector<HostedControl*> Form::ChildrenOf(const HostedControl* container) const {
  std::vector<HostedControl*> children;
  for (HostedControl* control : stacking_) {
    if (control->Container() == container) children.push_back(control);
  }
  return children;
}

void Form::BringToFront(const HostedControl& control) {
  const auto it = std::find(stacking_.begin(), stacking_.end(), &control);
  if (it == stacking_.end()) return;
  std::rotate(it, it + 1, stacking_.end());
  Restacked();
}

void Form::SendToBack(const HostedControl& control) {
  const auto it = std::find(stacking_.begin(), stacking_.end(), &control);
  if (it == stacking_.end()) return;
  std::rotate(stacking_.begin(), it, it + 1);
  Restacked();
}

HostedControl* Form::ControlAt(int x, int y) const {
  const std::vector<HostedControl*>& order = PaintOrder();
  for (auto it = order.rbegin(); it != order.rend(); ++it) {
    const HostedControl& control = **it;
    if (!control.ShownOnForm()) continue;
    // Its own rectangle first: most controls are ruled out there, before
    // the walk up its containers that finds what clips it.
    if (!Contains(control.PixelBoundsOnForm(), x, y)) continue;
    if (Contains(control.ClipOnForm(), x, y)) return *it;
  }
  return nullptr;
}

void Form::SetTabIndex(const HostedControl& control, int index) {
  if (index < 0) throw RuntimeError(err::kInvalidPropertyValue, "TabIndex");
  const int from = TabIndexOf(control);
  if (from < 0) return;
  const int to = std::min(index, static_cast<int>(controls_.size()) - 1);
  auto moved = std::move(controls_[from]);
  controls_.erase(controls_.begin() + from);
  controls_.insert(controls_.begin() + to, std::move(moved));
  // Docked controls take their strips in tab order, so the order may
  // move them.
  DockControls();
}

void Form::DockControls() {
  // Docking resizes controls, whose Resize may dock again: one pass at a
  // time is enough, the outer pass places everything.
  if (docking_) return;
  docking_ = true;
  struct Done {
    bool& docking;
    ~Done() { docking = false; }  // a Resize that raises ends the pass too
  } done{docking_};
  DockWithin(nullptr, width_twips_, height_twips_);
  // Outer containers first: docking one resizes what it holds. A copy:
  // the procedures that docking runs may change the form.
  const std::vector<HostedControl*> order = PaintOrder();
  for (const HostedControl* control : order) {
    if (control->Class().is_container && TabIndexOf(*control) >= 0) {
      DockWithin(control, control->Bounds().width, control->Bounds().height);
    }
  }
}

void Form::DockWithin(const HostedControl* container, int width_twips, int height_twips) {
  int left = 0, top = 0, right = width_twips, bottom = height_twips;
  for (const auto& control : controls_) {
    if (control->Container() != container) continue;
    const TwipsRect bounds = control->Bounds();
    const int across = std::max(0, right - left);
    const int down = std::max(0, bottom - top);
    // A docked control may change its own thickness in its Resize (a bar
    // sizes its height): the strip it takes is read after docking it.
    switch (control->Align()) {
      case align::kTop:
        control->Dock({left, top, across, bounds.height});
        top += control->Bounds().height;
        break;
      case align::kBottom:
        control->Dock({left, bottom - bounds.height, across, bounds.height});
        bottom -= control->Bounds().height;
        break;
      case align::kLeft:
        control->Dock({left, top, bounds.width, down});
        left += control->Bounds().width;
        break;
      case align::kRight:
        control->Dock({right - bounds.width, top, bounds.width, down});
        right -= control->Bounds().width;
        break;
      default:
        break;
    }
  }
}

}  // namespace kestu
