#include "kestu/stdcontrols/StdControl.h"

#include <algorithm>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

// Draws in pixels for as long as it lives, then goes back to twips.
class PixelScale {
 public:
  explicit PixelScale(UserControl& control) : control_(control) {
    control_.SetScaleMode(scale::kPixels);
  }
  ~PixelScale() { control_.SetScaleMode(scale::kTwips); }
  PixelScale(const PixelScale&) = delete;
  PixelScale& operator=(const PixelScale&) = delete;

 private:
  UserControl& control_;
};

}  // namespace

// ---- Properties ----

void StdControl::SetCaption(const std::string& caption) {
  caption_ = caption;
  PropertyChanged("Caption");
  Redraw();
}

void StdControl::SetEnabled(bool enabled) {
  enabled_ = enabled;
  // The host hears of it through the window: a disabled control takes no
  // focus, no pointer and no access key.
  KestuControlsAPI::EnableWindow(hWnd(), enabled ? 1 : 0);
  PropertyChanged("Enabled");
  Redraw();
}

void StdControl::SetFont(FontRef font) {
  // Nothing assigned keeps the font drawn with.
  font_ = font;
  if (font_) UserControl::SetFont(font_);
  PropertyChanged("Font");
  Redraw();
}

void StdControl::UserControl_InitProperties() {
  UserControl::UserControl_InitProperties();
  font_ = AmbientFont();
  if (font_) UserControl::SetFont(font_);
  caption_ = AmbientDisplayName();
}

void StdControl::UserControl_ReadProperties(PropertyBag& bag) {
  UserControl::UserControl_ReadProperties(bag);
  // Without a saved font Font stays Nothing, and the surface keeps its own.
  if (font_) UserControl::SetFont(font_);
  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  Redraw();
}

std::string StdControl::AccessKeys() const {
  const std::optional<char32_t> key = AccessKeyOf(caption_);
  if (!key) return {};
  std::string utf8;
  AppendUtf8(*key, utf8);
  return utf8;
}

std::vector<PropertyInfo> StdControl::SharedProperties(bool with_caption) {
  using S = StdControl;
  constexpr OnSet kDraws = OnSet::NotifyThenRedraw;
  std::vector<PropertyInfo> properties = {
      Property<S>("Font", "StdFont", &S::Font, &S::SetFont,
                  "Returns/sets the font of the text. [Retorna/define a fonte do texto.]")
          .Saved(&S::font_),
      Property<S>("Enabled", "Boolean", &S::Enabled, &S::SetEnabled,
                  "Returns/sets whether the control answers the user. [Retorna/define se o "
                  "controle responde ao usuário.]")
          .Saved(&S::enabled_)
          .Defaults(true),
      Field<S>("BackColor", "OLE_COLOR", &S::back_color_,
               "Returns/sets the background color. [Retorna/define a cor de fundo.]", kDraws)
          .Saved()
          .Defaults(syscolor::kButtonFace),
      Field<S>("ForeColor", "OLE_COLOR", &S::fore_color_,
               "Returns/sets the color of the text. [Retorna/define a cor do texto.]", kDraws)
          .Saved()
          .Defaults(syscolor::kButtonText),
  };
  if (with_caption) {
    properties.push_back(
        Property<S>("Caption", "String", &S::Caption, &S::SetCaption,
                    "Returns/sets the text shown; \"&\" marks the access key. [Retorna/define o "
                    "texto exibido; \"&\" marca a tecla de acesso.]")
            .Saved(&S::caption_)
            .ReadsAs(std::string()));
  }
  return properties;
}

void StdControl::CheckRange(int32_t value, int32_t low, int32_t high) {
  if (value < low || value > high) throw RuntimeError(err::kInvalidPropertyValue);
}

std::function<void(const Variant&)> StdControl::RangeCheck(int32_t low, int32_t high) {
  return [low, high](const Variant& value) { CheckRange(value.ToLong(), low, high); };
}

// ---- Drawing ----

void StdControl::Redraw() {
  if (!Site()) return;
  PixelScale pixels(*this);
  UserControl::SetBackColor(back_color_);
  Draw();
}

int StdControl::PixelWidth() const {
  return static_cast<int>(Width()) / std::max(1, ScreenTwipsPerPixelX());
}

int StdControl::PixelHeight() const {
  return static_cast<int>(Height()) / std::max(1, ScreenTwipsPerPixelY());
}

RECT StdControl::MeasureCaption(RECT area, int32_t flags) {
  KestuControlsAPI::DrawTextA(hDC(), caption_, -1, area, flags | dt::kCalcRect);
  return area;
}

void StdControl::DrawCaption(RECT area, int32_t flags) {
  if (enabled_) {
    UserControl::SetForeColor(fore_color_);
  } else {
    RECT engraved{area.Left + 1, area.Top + 1, area.Right + 1, area.Bottom + 1};
    UserControl::SetForeColor(syscolor::k3DHighlight);
    KestuControlsAPI::DrawTextA(hDC(), caption_, -1, engraved, flags);
    UserControl::SetForeColor(syscolor::kButtonShadow);
  }
  KestuControlsAPI::DrawTextA(hDC(), caption_, -1, area, flags);
}

void StdControl::DrawFocusAround(const RECT& text) {
  const RECT around{std::max(0, text.Left - 1), std::max(0, text.Top - 1),
                    std::min(PixelWidth(), text.Right + 1),
                    std::min(PixelHeight(), text.Bottom + 1)};
  KestuControlsAPI::DrawFocusRect(hDC(), around);
}

// ---- The form's tab order ----

std::vector<FormMember> StdControl::FormControls() const {
  if (!Site()) return {};
  return Container().FormControls();
}

bool StdControl::FocusMember(const FormMember& member) {
  if (!member.can_take_focus) return false;
  KestuControlsAPI::SetFocus(member.control->hWnd());
  return true;
}

bool StdControl::FocusNextAfterSelf() {
  const std::vector<FormMember> members = FormControls();
  const auto self = std::find_if(members.begin(), members.end(),
                                 [this](const FormMember& m) { return m.control == this; });
  if (self == members.end()) return false;
  // Round the tab order once, as Tab would go, starting after the label.
  const size_t count = members.size();
  const auto start = static_cast<size_t>(self - members.begin());
  for (size_t step = 1; step < count; ++step) {
    if (FocusMember(members[(start + step) % count])) return true;
  }
  return false;
}

bool StdControl::IsInside(const FormMember& member, const UserControl* container,
                          const std::vector<FormMember>& members) {
  const UserControl* holder = member.container;
  // Containers nest a bounded number of levels deep; the count only guards
  // against a list that loops.
  for (size_t depth = 0; holder && depth <= members.size(); ++depth) {
    if (holder == container) return true;
    const auto entry = std::find_if(members.begin(), members.end(),
                                    [holder](const FormMember& m) { return m.control == holder; });
    holder = entry == members.end() ? nullptr : entry->container;
  }
  return false;
}

void StdControl::DefaultColor(std::vector<PropertyInfo>& properties, std::string_view name,
                              OLE_COLOR color) {
  for (PropertyInfo& p : properties) {
    if (p.name != name) continue;
    p.persist->initial = p.persist->read_default = VariantTraits<OLE_COLOR>::To(color);
  }
}

}  // namespace kestu
