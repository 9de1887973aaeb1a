#include "kestu/host/HostedControl.h"
#include "kestu/foundation/Text.h"

#include <array>
#include <limits>
#include <utility>
#include <vector>

#include "host/Units.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "raster/Clip.h"

namespace kestu {

namespace {

int TwipsFrom(const Variant& value) {
  return CLng(value.ToDouble());
}

}  // namespace

std::span<const OwnProperty<HostedControl>> HostedControl::ExtenderProperties() {
  using P = OwnProperty<HostedControl>;
  using File = FileValue::Kind;
  constexpr int64_t kTwips = std::numeric_limits<int32_t>::max();
  // A docked control is placed again when it moves: its edge wins.
  static const std::array<P, 11> kTable = {{
      {"Name",
       [](const HostedControl& c) { return Variant(c.name_); },
       nullptr,
       {},
       "String",
       "The name the form's code knows the control by. [O nome pelo qual o código do formulário "
       "conhece o controle.]"},
      {"Left",
       [](const HostedControl& c) { return Variant(static_cast<float>(c.left_)); },
       [](HostedControl& c, const Variant& v) {
         c.Move(TwipsFrom(v), c.top_);
         if (c.align_ != align::kNone) c.form_->DockControls();
       },
       {File::Integer, -kTwips, kTwips},
       "Single",
       "Distance from the container's left edge, in twips. [Distância da borda esquerda do "
       "contêiner, em twips.]"},
      {"Top",
       [](const HostedControl& c) { return Variant(static_cast<float>(c.top_)); },
       [](HostedControl& c, const Variant& v) {
         c.Move(c.left_, TwipsFrom(v));
         if (c.align_ != align::kNone) c.form_->DockControls();
       },
       {File::Integer, -kTwips, kTwips},
       "Single",
       "Distance from the container's top edge, in twips. [Distância da borda superior do "
       "contêiner, em twips.]"},
      {"Width",
       [](const HostedControl& c) { return Variant(static_cast<float>(c.width_)); },
       [](HostedControl& c, const Variant& v) { c.RequestSize(TwipsFrom(v), c.height_); },
       {File::Integer, 0, kTwips},
       "Single",
       "Width, in twips. [Largura, em twips.]"},
      {"Height",
       [](const HostedControl& c) { return Variant(static_cast<float>(c.height_)); },
       [](HostedControl& c, const Variant& v) { c.RequestSize(c.width_, TwipsFrom(v)); },
       {File::Integer, 0, kTwips},
       "Single",
       "Height, in twips. [Altura, em twips.]"},
      {"Visible",
       [](const HostedControl& c) { return Variant::Boolean(c.visible_); },
       [](HostedControl& c, const Variant& v) { c.visible_ = v.ToBool(); },
       {File::Boolean},
       "Boolean",
       "Whether the control shows when the form runs. [Se o controle aparece quando o formulário "
       "roda.]"},
      {"ToolTipText",
       [](const HostedControl& c) { return Variant(c.tool_tip_text_); },
       [](HostedControl& c, const Variant& v) { c.tool_tip_text_ = v.ToString(); },
       {File::String},
       "String",
       "The tip shown when the pointer rests on the control. [A dica mostrada quando o ponteiro "
       "para sobre o controle.]"},
      {"Align",
       [](const HostedControl& c) { return Variant(c.align_); },
       [](HostedControl& c, const Variant& v) { c.SetAlign(v.ToInteger()); },
       {File::Integer, align::kNone, align::kRight},
       "Integer",
       "The edge of its container the control is docked to: 0 none, 1 top, 2 bottom, 3 left, 4 "
       "right. [A borda do contêiner onde o controle se encaixa.]"},
      {"TabIndex",
       [](const HostedControl& c) { return Variant(static_cast<int16_t>(c.form_->TabIndexOf(c))); },
       [](HostedControl& c, const Variant& v) { c.form_->SetTabIndex(c, v.ToInteger()); },
       {File::Integer, 0, INT16_MAX},
       "Integer",
       "The control's place in the order Tab moves the focus. [A posição do controle na ordem em "
       "que Tab move o foco.]"},
      {"Default",
       [](const HostedControl& c) { return Variant::Boolean(c.default_); },
       [](HostedControl& c, const Variant& v) { c.SetDefault(v.ToBool()); },
       {File::Boolean},
       "Boolean",
       "Whether Enter presses this button. [Se Enter pressiona este botão.]"},
      {"Cancel",
       [](const HostedControl& c) { return Variant::Boolean(c.cancel_); },
       [](HostedControl& c, const Variant& v) { c.SetCancel(v.ToBool()); },
       {File::Boolean},
       "Boolean",
       "Whether Escape presses this button. [Se Esc pressiona este botão.]"},
  }};
  return kTable;
}

std::optional<std::string_view> HostedControl::ExtenderName(std::string_view name) {
  const auto* property = FindOwnProperty(ExtenderProperties(), name);
  return property ? std::optional(property->name) : std::nullopt;
}

std::optional<std::string_view> HostedControl::AmbientName(std::string_view name) {
  static constexpr std::array<std::string_view, 4> kNames = {"UserMode", "DisplayAsDefault", "Font",
                                                             "DisplayName"};
  return KnownName(kNames, name);
}

HostedControl::HostedControl(Host& host, Form& form, const ClassInfo& info, std::string name,
                             const TwipsRect& rect, AmbientValues ambient, HostedControl* container)
    : host_(host),
      form_(&form),
      container_(container),
      class_(info),
      name_(std::move(name)),
      twips_per_pixel_x_(host.TwipsPerPixelX()),
      twips_per_pixel_y_(host.TwipsPerPixelY()),
      hwnd_(host.NewHandle()),
      hdc_(host.NewHandle()),
      raster_(TwipsToPixels(rect.width, twips_per_pixel_x_),
              TwipsToPixels(rect.height, twips_per_pixel_y_), ResolveColor(syscolor::kButtonFace)),
      left_(rect.left),
      top_(rect.top),
      width_(rect.width),
      height_(rect.height),
      ambient_(std::move(ambient)) {
  host_.RegisterWindow(hwnd_, {.control = this});
  host_.RegisterDeviceContext(hdc_, this);
  control_ = class_.create();
  control_->AttachSite(this);
}

HostedControl::~HostedControl() {
  control_.reset();
  host_.ForgetHandle(hwnd_);
  host_.ForgetHandle(hdc_);
}

void HostedControl::Move(int left_twips, int top_twips) {
  left_ = left_twips;
  top_ = top_twips;
}

void HostedControl::Dock(const TwipsRect& rect) {
  Move(rect.left, rect.top);
  ApplySize(rect.width, rect.height);
}

PixelRect HostedControl::PixelBoundsOnForm() const {
  // The place is on the form's pixel grid; the size is the control's own
  // (they differ only when the screen changed between the two).
  const PixelRect origin = container_ ? container_->PixelBoundsOnForm() : PixelRect{};
  const int left = Saturate(int64_t{origin.left} + TwipsToPixels(left_, form_->TwipsPerPixelX()));
  const int top = Saturate(int64_t{origin.top} + TwipsToPixels(top_, form_->TwipsPerPixelY()));
  return {left, top, Saturate(int64_t{left} + raster_.Width()),
          Saturate(int64_t{top} + raster_.Height())};
}

PixelRect HostedControl::ClipOnForm() const {
  if (!container_) return {0, 0, form_->WidthPixels(), form_->HeightPixels()};
  return Intersect(container_->ClipOnForm(), container_->PixelBoundsOnForm());
}

PixelRect HostedControl::VisibleOnForm() const {
  return Intersect(PixelBoundsOnForm(), ClipOnForm());
}

void HostedControl::SetAmbient(std::string_view name, const Variant& value) {
  const auto property = AmbientName(name);
  if (!property) throw RuntimeError(err::kNotSupported, std::string(name));
  if (*property == "UserMode") {
    ambient_.user_mode = value.ToBool();
  } else if (*property == "DisplayAsDefault") {
    ambient_.display_as_default = value.ToBool();
  } else if (*property == "Font") {
    ambient_.font = value.ToFont();
  } else {
    ambient_.display_name = value.ToString();
  }
  control_->UserControl_AmbientChanged(std::string(*property));
}

int HostedControl::ScreenTwipsPerPixelX() const {
  return host_.TwipsPerPixelX();
}
int HostedControl::ScreenTwipsPerPixelY() const {
  return host_.TwipsPerPixelY();
}

FontRef HostedControl::AmbientFont() const {
  return ambient_.font ? ambient_.font : form_->Font();
}

Variant HostedControl::GetExtender(std::string_view name) const {
  return OwnPropertyOrRaise(ExtenderProperties(), name).get(*this);
}

void HostedControl::SetExtender(std::string_view name, const Variant& value) {
  SetOwnProperty(ExtenderProperties(), *this, name, value);
}

void HostedControl::SetDefault(bool is_default) {
  if (is_default) {
    for (const auto& control : form_->Controls()) control->default_ = false;
  }
  default_ = is_default;
  ShowDefaultOnForm();
}

void HostedControl::SetCancel(bool is_cancel) {
  if (is_cancel) {
    for (const auto& control : form_->Controls()) control->cancel_ = false;
  }
  cancel_ = is_cancel;
}

void HostedControl::ShowDefaultOnForm() {
  std::vector<std::pair<std::weak_ptr<int>, HostedControl*>> changed;
  for (const auto& control : form_->Controls()) {
    if (control->ambient_.display_as_default == control->default_) continue;
    control->ambient_.display_as_default = control->default_;
    // The one that lost the look hears first, so it is drawn plain before
    // the new default is drawn with it.
    auto entry = std::make_pair(control->Lifetime(), control.get());
    if (control->default_) {
      changed.push_back(entry);
    } else {
      changed.insert(changed.begin(), entry);
    }
  }
  // A form still being built from its file tells no one: its controls
  // read the ambient when they are first drawn.
  if (!host_.Holds(*form_)) return;
  for (auto& [alive, control] : changed) {
    if (!alive.expired()) control->control_->UserControl_AmbientChanged("DisplayAsDefault");
  }
}

void HostedControl::SetAlign(int16_t value) {
  if (value < align::kNone || value > align::kRight) {
    throw RuntimeError(err::kInvalidPropertyValue, "Align");
  }
  align_ = value;
  form_->DockControls();
}

void HostedControl::RequestSize(int width_twips, int height_twips) {
  if (width_twips < 0 || height_twips < 0) {
    throw RuntimeError(err::kInvalidPropertyValue, width_twips < 0 ? "Width" : "Height");
  }
  CheckSurfaceSize(width_twips, height_twips, twips_per_pixel_x_, twips_per_pixel_y_,
                   "control '" + name_ + "'");
  // A docked control keeps the length its edge gives it; only its
  // thickness is its own.
  if (align_ == align::kTop || align_ == align::kBottom) width_twips = width_;
  if (align_ == align::kLeft || align_ == align::kRight) height_twips = height_;
  ApplySize(width_twips, height_twips);
  if (align_ != align::kNone) form_->DockControls();
}

void HostedControl::ApplySize(int width_twips, int height_twips) {
  if (width_twips == width_ && height_twips == height_) return;
  width_ = width_twips;
  height_ = height_twips;
  raster_.Resize(TwipsToPixels(width_, twips_per_pixel_x_),
                 TwipsToPixels(height_, twips_per_pixel_y_), ResolveColor(control_->BackColor()));
  // The controls docked inside a container follow its new size.
  if (class_.is_container) form_->DockControls();
  // Re-entrant on purpose: a control that sets its own size inside its
  // Resize procedure gets a nested Resize, as in the host it was made for.
  control_->UserControl_Resize();
}

void HostedControl::PropertyChanged(std::string_view name) {
  form_->SetModified(true);
  host_.Notify([&](HostObserver& o) { o.OnPropertyChanged(*this, name); });
}

void HostedControl::OnEvent(UserControl& /*control*/, const EventInfo& event,
                            std::span<EventArgument> arguments) {
  host_.Notify([&](HostObserver& o) { o.OnEvent(*this, event, arguments); });
}

void HostedControl::OnDraw(const DrawCall& call) {
  host_.Notify([&](HostObserver& o) { o.OnDraw(*this, call); });
}

std::optional<int> HostedControl::PopupMenu(std::span<const MenuItem> items) {
  return host_.ShowPopupMenu(*this, items);
}

void HostedControl::Beep() {
  host_.Beep();
}

std::string HostedControl::ClipboardGetText() {
  return host_.ClipboardText();
}

void HostedControl::ClipboardSetText(std::string_view text) {
  host_.SetClipboardText(std::string(text));
}

void HostedControl::ShowTip(std::string_view text) {
  host_.Tip().Show(text);
}

void HostedControl::HideTip() {
  host_.Tip().Hide();
}

void HostedControl::SetTipsAllowed(bool allowed) {
  host_.Tip().SetAllowed(allowed);
}

int32_t HostedControl::FormHwnd() const {
  return form_->hWnd();
}

UserControl* HostedControl::FormActiveControl() const {
  HostedControl* active = form_->ActiveControl();
  return active ? &active->Control() : nullptr;
}

std::vector<FormMember> HostedControl::FormControls() const {
  std::vector<FormMember> members;
  for (const auto& control : form_->Controls()) {
    const HostedControl* holder = control->Container();
    members.push_back(
        {&control->Control(), holder ? &holder->Control() : nullptr, control->CanTakeFocus()});
  }
  return members;
}

bool HostedControl::CanTakeFocus() const {
  return ShownOnForm() && EnabledOnForm() && control_->CanGetFocus();
}

}  // namespace kestu
