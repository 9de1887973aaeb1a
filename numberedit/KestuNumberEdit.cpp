#include "kestu/numberedit/KestuNumberEdit.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "kestu/foundation/Bevel.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/PropertyBag.h"
#include "numberedit/NumberText.h"

namespace kestu {

namespace {

// Key codes and characters the box reacts to.
constexpr int16_t kKeyBackspace = 8;
constexpr int16_t kKeyEscape = 27;
constexpr int16_t kKeyEnd = 35;
constexpr int16_t kKeyHome = 36;
constexpr int16_t kKeyLeft = 37;
constexpr int16_t kKeyUp = 38;
constexpr int16_t kKeyRight = 39;
constexpr int16_t kKeyDown = 40;
constexpr int16_t kKeyInsert = 45;
constexpr int16_t kKeyDelete = 46;
constexpr int16_t kShiftOnly = 1;
constexpr int16_t kCtrlOnly = 2;
constexpr int16_t kRightButton = 2;

struct EventInfos {
  EventInfo click, dbl_click, changed, key_down, key_press, key_up, mouse_down, mouse_move,
      mouse_up;
};

ParamInfo IntegerRef(const char* name) {
  return {name, "Integer", VarType::Integer, true};
}
ParamInfo SingleRef(const char* name) {
  return {name, "Single", VarType::Single, true};
}

const EventInfos& Events() {
  static const EventInfos infos = [] {
    const std::vector<ParamInfo> key = {IntegerRef("KeyCode"), IntegerRef("Shift")};
    const std::vector<ParamInfo> mouse = {IntegerRef("Button"), IntegerRef("Shift"), SingleRef("x"),
                                          SingleRef("y")};
    return EventInfos{
        {"Click",
         {},
         "Occurs when the user clicks the box. [Ocorre quando o usuário clica na caixa.]"},
        {"DblClick",
         {},
         "Occurs when the user double-clicks the box. [Ocorre quando o usuário clica duas vezes "
         "na caixa.]"},
        {"Changed",
         {},
         "Occurs when a typed digit, Backspace or Delete changes the number. [Ocorre quando um "
         "dígito, Backspace ou Delete altera o número.]"},
        {"KeyDown", key,
         "Occurs when the user presses a key while the box has the focus. [Ocorre quando o "
         "usuário pressiona uma tecla com o foco na caixa.]"},
        {"KeyPress",
         {IntegerRef("KeyAscii")},
         "Occurs when the user presses and releases a character key. [Ocorre quando o usuário "
         "pressiona e solta uma tecla de caractere.]"},
        {"KeyUp", key,
         "Occurs when the user releases a key while the box has the focus. [Ocorre quando o "
         "usuário solta uma tecla com o foco na caixa.]"},
        {"MouseDown", mouse,
         "Occurs when the user presses a mouse button over the box. [Ocorre quando o usuário "
         "pressiona um botão do mouse sobre a caixa.]"},
        {"MouseMove", mouse,
         "Occurs when the user moves the mouse over the box. [Ocorre quando o usuário move o "
         "mouse sobre a caixa.]"},
        {"MouseUp", mouse,
         "Occurs when the user releases a mouse button over the box. [Ocorre quando o usuário "
         "solta um botão do mouse sobre a caixa.]"},
    };
  }();
  return infos;
}

std::u32string_view Trimmed(std::u32string_view text) {
  while (!text.empty() && text.front() == U' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == U' ') text.remove_suffix(1);
  return text;
}

bool StartsWithMinus(std::u32string_view text) {
  return !text.empty() && text.front() == U'-';
}

// A pasted character as the key code the host would pass: its UTF-16
// units, each as a 16-bit integer.
std::vector<int16_t> KeyCodesOf(char32_t c) {
  if (c <= 0xFFFF) return {static_cast<int16_t>(static_cast<uint16_t>(c))};
  const char32_t v = c - 0x10000;
  return {static_cast<int16_t>(static_cast<uint16_t>(0xD800 + (v >> 10))),
          static_cast<int16_t>(static_cast<uint16_t>(0xDC00 + (v & 0x3FF)))};
}

// An OLE_COLOR (0x00BBGGRR) with the bits of a resolved pixel (0x00RRGGBB).
OLE_COLOR AsOleColor(Rgb rgb) {
  return RGB(static_cast<uint8_t>(rgb >> 16), static_cast<uint8_t>(rgb >> 8),
             static_cast<uint8_t>(rgb));
}

}  // namespace

ClassInfo& KestuNumberEdit::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuNumberEdit";
    c.help =
        "A numeric edit box with integer and decimal length limits and thousands separators. "
        "[Uma caixa de edição numérica com limites de dígitos inteiros e decimais e separadores "
        "de milhar.]";
    c.default_width = 1215;
    c.default_height = 315;
    c.create = [] { return std::make_unique<KestuNumberEdit>(); };
    using P = KestuNumberEdit;
    c.properties = {
        Property<P>("Border3D", "Boolean", &P::Border3D, &P::SetBorder3D,
                    "Returns/sets whether the box has a 3D border. [Retorna/define se a caixa "
                    "tem borda 3D.]"),
        Property<P>("Shadow", "Boolean", &P::Shadow, &P::SetShadow,
                    "Returns/sets whether the box casts a shadow. [Retorna/define se a caixa "
                    "projeta sombra.]"),
        Property<P>("ShadowColor", "OLE_COLOR", &P::ShadowColor, &P::SetShadowColor,
                    "Returns/sets the color of the shadow. [Retorna/define a cor da sombra.]"),
        Property<P>("BackColor", "OLE_COLOR", &P::BackColor, &P::SetBackColor,
                    "Returns/sets the background color of the box. [Retorna/define a cor de "
                    "fundo da caixa.]"),
        Property<P>("ForeColor", "OLE_COLOR", &P::ForeColor, &P::SetForeColor,
                    "Returns/sets the color of a positive number. [Retorna/define a cor de um "
                    "número positivo.]"),
        Property<P>("NegativeColor", "OLE_COLOR", &P::NegativeColor, &P::SetNegativeColor,
                    "Returns/sets the color of a negative number. [Retorna/define a cor de um "
                    "número negativo.]"),
        Property<P>("LockedColor", "OLE_COLOR", &P::LockedColor, &P::SetLockedColor,
                    "Returns/sets the color of the number when the box is locked. "
                    "[Retorna/define a cor do número quando a caixa está travada.]"),
        Property<P>("DisabledColor", "OLE_COLOR", &P::DisabledColor, &P::SetDisabledColor,
                    "Returns/sets the color of the number when the box is disabled. "
                    "[Retorna/define a cor do número quando a caixa está desabilitada.]"),
        Property<P>("Text", "Variant", &P::Text, &P::SetText,
                    "Returns/sets the number as text. [Retorna/define o número como texto.]"),
        Property<P>("Value", "Double", &P::Value, &P::SetValue,
                    "Returns/sets the numeric value. [Retorna/define o valor numérico.]"),
        Property<P>("IntMaxLength", "Integer", &P::IntMaxLength, &P::SetIntMaxLength,
                    "Returns/sets the maximum number of integer digits. [Retorna/define o "
                    "número máximo de dígitos inteiros.]"),
        Property<P>("DecMaxLength", "Integer", &P::DecMaxLength, &P::SetDecMaxLength,
                    "Returns/sets the number of decimal digits. [Retorna/define o número de "
                    "dígitos decimais.]"),
        Property<P>("Font", "StdFont", &P::Font, &P::SetFont,
                    "Returns/sets the font of the number. [Retorna/define a fonte do número.]"),
        Property<P>("Enabled", "Boolean", &P::Enabled, &P::SetEnabled,
                    "Returns/sets whether the box responds to the user. [Retorna/define se a "
                    "caixa responde ao usuário.]"),
        Property<P>("Selection3D", "Boolean", &P::Selection3D, &P::SetSelection3D,
                    "Returns/sets whether a selected number is drawn in 3D. [Retorna/define se "
                    "o número selecionado é desenhado em 3D.]"),
        Property<P>("AutoSelect", "Boolean", &P::AutoSelect, &P::SetAutoSelect,
                    "Returns/sets whether the number is selected when the box gets the focus. "
                    "[Retorna/define se o número é selecionado quando a caixa recebe o foco.]"),
        Property<P>("AllowNegative", "Boolean", &P::AllowNegative, &P::SetAllowNegative,
                    "Returns/sets whether negative numbers are allowed. [Retorna/define se "
                    "números negativos são permitidos.]"),
        Property<P>("ThSeparator", "Boolean", &P::ThSeparator, &P::SetThSeparator,
                    "Returns/sets whether thousands separators are shown. [Retorna/define se "
                    "os separadores de milhar são exibidos.]"),
        Property<P>("NumberFormat", "eNumberFormat", &P::NumberFormat, &P::SetNumberFormat,
                    "Returns/sets the number format. [Retorna/define o formato do número.]"),
        Property<P>("Locked", "Boolean", &P::Locked, &P::SetLocked,
                    "Returns/sets whether the number can be edited. [Retorna/define se o número "
                    "pode ser editado.]"),
        Property<P>("hDC", "Long", &P::hDC, nullptr,
                    "Returns the device context of the box. [Retorna o contexto de dispositivo "
                    "da caixa.]"),
        Property<P>("hwnd", "Long", &P::hwnd, nullptr,
                    "Returns the window handle of the box. [Retorna o handle da janela da "
                    "caixa.]"),
        Property<P>("dcDataValue", "Variant", &P::dcDataValue, &P::SetdcDataValue,
                    "Returns/sets the bound data value. [Retorna/define o valor de dados "
                    "vinculado.]"),
    };
    for (PropertyInfo& property : c.properties) {
      if (property.name == "Value" || property.name == "hDC" || property.name == "hwnd") {
        property.persisted = false;
      }
    }
    c.methods = {
        Method<P>("SelectAll", &P::SelectAll,
                  "Selects the whole number. [Seleciona o número inteiro.]"),
        Method<P>("XFocus", &P::XFocus, "Gives the box the focus. [Dá o foco à caixa.]"),
    };
    const EventInfos& e = Events();
    c.events = {&e.click,  &e.dbl_click,  &e.changed,    &e.key_down, &e.key_press,
                &e.key_up, &e.mouse_down, &e.mouse_move, &e.mouse_up};
    c.enums = {{"eNumberFormat", {{"BrazilFormat", BrazilFormat}, {"USFormat", USFormat}}}};
    c.default_event = "Changed";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuNumberEdit)

KestuNumberEdit::KestuNumberEdit()
    : Click(Events().click),
      DblClick(Events().dbl_click),
      Changed(Events().changed),
      KeyDown(Events().key_down),
      KeyPress(Events().key_press),
      KeyUp(Events().key_up),
      MouseDown(Events().mouse_down),
      MouseMove(Events().mouse_move),
      MouseUp(Events().mouse_up),
      menu_{{{"&Recortar"}, {"&Copiar"}, {"Co&lar"}, {"&Excluir"}, {"-"}, {"&Selecionar Tudo"}}} {}

NumberText KestuNumberEdit::Rules() const {
  return NumberText(thousands_, decimal_, dec_max_length_);
}

// ---- Properties ----

void KestuNumberEdit::SetBorder3D(bool on) {
  border_3d_ = on;
  UserControl_Show();
  PropertyChanged("Border3D");
}

void KestuNumberEdit::SetShadow(bool on) {
  shadow_ = on;
  UserControl_Show();
  PropertyChanged("Shadow");
}

void KestuNumberEdit::SetShadowColor(OLE_COLOR color) {
  shadow_color_ = color;
  UserControl_Show();
  PropertyChanged("ShadowColor");
}

void KestuNumberEdit::SetBackColor(OLE_COLOR color) {
  back_color_ = color;
  UserControl_Show();
  PropertyChanged("BackColor");
}

void KestuNumberEdit::SetForeColor(OLE_COLOR color) {
  fore_color_ = color;
  UserControl_Show();
  PropertyChanged("ForeColor");
}

void KestuNumberEdit::SetNegativeColor(OLE_COLOR color) {
  negative_color_ = color;
  UserControl_Show();
  PropertyChanged("NegativeColor");
}

void KestuNumberEdit::SetLockedColor(OLE_COLOR color) {
  locked_color_ = color;
  UserControl_Show();
  PropertyChanged("LockedColor");
}

void KestuNumberEdit::SetDisabledColor(OLE_COLOR color) {
  disabled_color_ = color;
  UserControl_Show();
  PropertyChanged("DisabledColor");
}

Variant KestuNumberEdit::Text() const {
  return Variant(ToUtf8(text_));
}

void KestuNumberEdit::StoreCanonical(const std::string& canonical) {
  text_ = Rules().FromCanonical(ToUtf32(canonical));
}

void KestuNumberEdit::SetText(const Variant& text) {
  StoreCanonical(text.ToString());
  PropertyChanged("Text");
  UserControl_Show();
}

double KestuNumberEdit::Value() {
  // Reading the value redraws the box and so normalises its text; callers
  // have always seen this side effect, so it stays.
  UserControl_Show();
  return Rules().ValueOf(text_);
}

void KestuNumberEdit::SetValue(double value) {
  text_ = Rules().FromCanonical(NumberText::Canonical(value));
  PropertyChanged("Text");
  UserControl_Show();
}

void KestuNumberEdit::SetIntMaxLength(int16_t length) {
  int_max_length_ = length >= 16 ? int16_t{15} : length;
  UserControl_Show();
  PropertyChanged("IntMaxLength");
}

void KestuNumberEdit::SetDecMaxLength(int16_t length) {
  // The text is not re-padded here; the redraw's normalisation pads it.
  dec_max_length_ = length >= 6 ? int16_t{5} : length;
  UserControl_Show();
  PropertyChanged("DecMaxLength");
}

void KestuNumberEdit::SetFont(FontRef font) {
  font_ = std::move(font);
  UserControl::SetFont(font_);
  UserControl_Show();
  PropertyChanged("Font");
}

void KestuNumberEdit::SetEnabled(bool on) {
  enabled_ = on;
  KestuControlsAPI::EnableWindow(hWnd(), on ? 1 : 0);
  LostFocusRoutine();
  UserControl_Show();
  PropertyChanged("Enabled");
}

void KestuNumberEdit::SetSelection3D(bool on) {
  selection_3d_ = on;
  PropertyChanged("Selection3D");
}

void KestuNumberEdit::SetAutoSelect(bool on) {
  auto_select_ = on;
  PropertyChanged("AutoSelect");
}

void KestuNumberEdit::SetAllowNegative(bool on) {
  allow_negative_ = on;
  UserControl_Show();
  PropertyChanged("AllowNegative");
}

void KestuNumberEdit::SetThSeparator(bool on) {
  th_separator_ = on;
  UserControl_Show();
  PropertyChanged("ThSeparator");
}

void KestuNumberEdit::SetNumberFormat(int16_t format) {
  // The stored text keeps the separator it was typed with until it is set
  // again: "12,5" reads as 12 in the other format. Deliberate.
  number_format_ = format;
  NumberText::ApplyFormat(number_format_, thousands_, decimal_);
  UserControl_Show();
  PropertyChanged("NumberFormat");
}

void KestuNumberEdit::SetLocked(bool on) {
  locked_ = on;
  PropertyChanged("Locked");
}

Variant KestuNumberEdit::dcDataValue() const {
  return Variant(Rules().ValueOf(text_));
}

void KestuNumberEdit::SetdcDataValue(const Variant& value) {
  StoreCanonical(value.ToString());
  UserControl_Show();
}

// ---- Methods ----

void KestuNumberEdit::SelectAll() {
  whole_selected_ = true;
  Draw(false);
}

void KestuNumberEdit::XFocus() {
  GotFocusRoutine();
  KestuControlsAPI::SetFocus(hWnd());
}

// ---- Lifecycle ----

void KestuNumberEdit::UserControl_Initialize() {
  pixel_x_ = Int16::From(ScreenTwipsPerPixelX());
  pixel_y_ = Int16::From(ScreenTwipsPerPixelY());
  whole_selected_ = false;
  form_active_ = true;
}

void KestuNumberEdit::UserControl_InitProperties() {
  font_ = AmbientFont();
  if (font_) UserControl::SetFont(font_);
  border_3d_ = true;
  shadow_ = false;
  shadow_color_ = 0;
  back_color_ = syscolor::kWindowBackground;
  fore_color_ = syscolor::kWindowText;
  negative_color_ = RGB(255, 0, 0);
  locked_color_ = syscolor::kButtonText;
  disabled_color_ = syscolor::kGrayText;
  text_.clear();
  int_max_length_ = 5;
  dec_max_length_ = 0;
  enabled_ = true;
  selection_3d_ = false;
  auto_select_ = true;
  allow_negative_ = true;
  th_separator_ = true;
  number_format_ = BrazilFormat;
  locked_ = false;
  NumberText::ApplyFormat(number_format_, thousands_, decimal_);
}

void KestuNumberEdit::UserControl_ReadProperties(PropertyBag& bag) {
  // Every key but the last two defaults to the field as it stands, which on
  // loading is the blank box (False, 0, ""), not the new box's defaults: a
  // bag without "IntMaxLength" loads 0. Deliberate; every key is always
  // written. Everything is read before anything is stored, so a bad bag
  // leaves the box as it was.
  auto read_bool = [&bag](const char* key, bool current) {
    return bag.ReadAs(key, Variant::Boolean(current)).ToBool();
  };
  auto read_color = [&bag](const char* key, OLE_COLOR current) {
    return static_cast<OLE_COLOR>(bag.ReadAs(key, Variant(static_cast<int32_t>(current))).ToLong());
  };
  auto read_integer = [&bag](const char* key, int16_t current) {
    return bag.ReadAs(key, Variant(current)).ToInteger();
  };
  const FontRef font = bag.ReadAs("Font", Variant(font_)).ToFont();
  const bool border_3d = read_bool("Border3D", border_3d_);
  const bool shadow = read_bool("Shadow", shadow_);
  const OLE_COLOR shadow_color = read_color("ShadowColor", shadow_color_);
  const OLE_COLOR back_color = read_color("BackColor", back_color_);
  const OLE_COLOR fore_color = read_color("ForeColor", fore_color_);
  const OLE_COLOR negative_color = read_color("NegativeColor", negative_color_);
  const std::string text = bag.ReadAs("Text", Variant(ToUtf8(text_))).ToString();
  const bool enabled = read_bool("Enabled", enabled_);
  const bool selection_3d = read_bool("Selection3D", selection_3d_);
  const bool auto_select = read_bool("AutoSelect", auto_select_);
  const int16_t dec_max_length = read_integer("DecMaxLength", dec_max_length_);
  const int16_t int_max_length = read_integer("IntMaxLength", int_max_length_);
  const bool allow_negative = read_bool("AllowNegative", allow_negative_);
  const bool th_separator = read_bool("ThSeparator", th_separator_);
  const int16_t number_format = read_integer("NumberFormat", number_format_);
  const bool locked = read_bool("Locked", locked_);
  const OLE_COLOR disabled_color = read_color("DisabledColor", syscolor::kGrayText);
  const OLE_COLOR locked_color = read_color("LockedColor", syscolor::kButtonText);
  std::u32string stored_text = ToUtf32(text);
  NumberText::Length(stored_text);

  font_ = font;
  border_3d_ = border_3d;
  shadow_ = shadow;
  shadow_color_ = shadow_color;
  back_color_ = back_color;
  fore_color_ = fore_color;
  negative_color_ = negative_color;
  text_ = std::move(stored_text);  // as read: the redraw below normalises it
  enabled_ = enabled;
  selection_3d_ = selection_3d;
  auto_select_ = auto_select;
  dec_max_length_ = dec_max_length;
  int_max_length_ = int_max_length;
  allow_negative_ = allow_negative;
  th_separator_ = th_separator;
  number_format_ = number_format;
  locked_ = locked;
  disabled_color_ = disabled_color;
  locked_color_ = locked_color;

  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  if (font_) UserControl::SetFont(font_);
  NumberText::ApplyFormat(number_format_, thousands_, decimal_);
  UserControl_Show();
}

void KestuNumberEdit::UserControl_WriteProperties(PropertyBag& bag) {
  auto color = [](OLE_COLOR c) { return Variant(static_cast<int32_t>(c)); };
  bag.WriteProperty("dcDataValue", Variant(Rules().ValueOf(text_)));
  bag.WriteProperty("Border3D", Variant::Boolean(border_3d_));
  bag.WriteProperty("Shadow", Variant::Boolean(shadow_));
  bag.WriteProperty("ShadowColor", color(shadow_color_));
  bag.WriteProperty("BackColor", color(back_color_));
  bag.WriteProperty("ForeColor", color(fore_color_));
  bag.WriteProperty("NegativeColor", color(negative_color_));
  bag.WriteProperty("Text", Variant(ToUtf8(text_)));
  bag.WriteProperty("Enabled", Variant::Boolean(enabled_));
  bag.WriteProperty("Font", Variant(font_));
  bag.WriteProperty("Selection3D", Variant::Boolean(selection_3d_));
  bag.WriteProperty("AutoSelect", Variant::Boolean(auto_select_));
  bag.WriteProperty("DecMaxLength", Variant(dec_max_length_));
  bag.WriteProperty("IntMaxLength", Variant(int_max_length_));
  bag.WriteProperty("AllowNegative", Variant::Boolean(allow_negative_));
  bag.WriteProperty("ThSeparator", Variant::Boolean(th_separator_));
  bag.WriteProperty("NumberFormat", Variant(number_format_));
  bag.WriteProperty("Locked", Variant::Boolean(locked_));
  bag.WriteProperty("DisabledColor", color(disabled_color_));
  bag.WriteProperty("LockedColor", color(locked_color_));
}

void KestuNumberEdit::UserControl_Show() {
  form_window_ = KestuControlsAPI::GetActiveWindow();
  if (AmbientUserMode()) {
    Draw(true);
    return;
  }
  // At design time the box shows how wide its largest number is, and
  // keeps its own text untouched.
  std::u32string sample = allow_negative_ ? U"-" : U"";
  sample.append(static_cast<size_t>(std::max<int16_t>(int_max_length_, 0)), U'9');
  if (dec_max_length_ > 0) {
    sample += Rules().DecimalSeparator();
    sample.append(static_cast<size_t>(dec_max_length_), U'9');
  }
  std::swap(text_, sample);
  try {
    Draw(false);
  } catch (...) {
    std::swap(text_, sample);
    throw;
  }
  std::swap(text_, sample);
}

void KestuNumberEdit::UserControl_Terminate() {
  KestuControlsAPI::HideCaret(hWnd());
  KestuControlsAPI::DestroyCaret();
}

void KestuNumberEdit::GotFocusRoutine() {
  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  has_focus_ = true;
  if (AmbientUserMode()) {
    const int16_t caret_height = CInt(TextHeight("M") / pixel_y_.value());
    KestuControlsAPI::CreateCaret(hWnd(), 0, 1, caret_height);
  }
  Draw(false);
  text_at_focus_ = text_;
  if (auto_select_) SelectAll();
}

void KestuNumberEdit::LostFocusRoutine() {
  if (AmbientUserMode()) KestuControlsAPI::HideCaret(hWnd());
  has_focus_ = false;
  Draw(false);
}

void KestuNumberEdit::PeriodicCheck() {
  UserControl* active_control = Container().FormActiveControl();
  if (!active_control || !enabled_) return;
  const int32_t form_window = Container().FormIsMdiChild() ? form_window_ : Container().FormHwnd();
  const bool form_is_active = KestuControlsAPI::GetActiveWindow() == form_window;
  if (form_is_active && !form_active_) {
    form_active_ = true;
    // The focused control gets its caret and selection back; it may be any
    // control of the form that offers XFocus.
    if (const MethodInfo* x_focus = active_control->Class().FindMethod("XFocus")) {
      x_focus->invoke(*active_control, {});
    }
  } else if (!form_is_active && form_active_) {
    form_active_ = false;
    LostFocusRoutine();
  }
}

// ---- Keyboard ----

void KestuNumberEdit::ClearIfSelected() {
  if (!whole_selected_) return;
  text_.clear();
  whole_selected_ = false;
}

void KestuNumberEdit::RaiseChanged() {
  DoEvents();
  if (!RaiseEvent(Changed)) return;
  DoEvents();
}

void KestuNumberEdit::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  if (locked_) return;
  if (shift == kCtrlOnly && key_code == kKeyInsert) {
    // The menu item's state is the one its last showing left.
    if (menu_[kCopy].enabled) Menu_Click(kCopy);
    return;
  }
  if (shift != 0 && shift != kShiftOnly) return;
  if ((key_code == kKeyHome || key_code == kKeyEnd) && shift == kShiftOnly) {
    SelectAll();
  } else if (key_code == kKeyInsert) {
    if (shift == kShiftOnly && menu_[kPaste].enabled) Menu_Click(kPaste);
  } else if (key_code == kKeyDelete || key_code == kKeyBackspace) {
    RemoveLastCharacter();
  } else if (key_code == kKeyHome || key_code == kKeyEnd || key_code == kKeyLeft ||
             key_code == kKeyRight || key_code == kKeyUp || key_code == kKeyDown) {
    whole_selected_ = false;
    Draw(false);
  }
}

void KestuNumberEdit::RemoveLastCharacter() {
  // Both Delete and Backspace take the last character, wherever the user
  // believes the caret to be: editing is calculator-style.
  PropertyChanged("dcDataValue");
  ClearIfSelected();
  if (NumberText::Length(text_) >= 2) {
    text_.pop_back();
  } else {
    text_.clear();
  }
  Draw(false);
  RaiseChanged();
}

void KestuNumberEdit::UserControl_KeyPress(int16_t& key_ascii) {
  if (!RaiseEvent(KeyPress, key_ascii)) return;
  if (locked_) return;
  const auto key = static_cast<char32_t>(static_cast<uint16_t>(key_ascii));
  switch (key_ascii) {
    case kKeyEscape:
      // Back to the text at focus; no Changed, by design of the box.
      text_ = text_at_focus_;
      SelectAll();
      return;
    case kKeyBackspace:
      return;  // KeyDown took it
    case '+':
    case '-':
      if (allow_negative_) {
        SetSign(key == U'-');
      } else {
        Beep();
      }
      return;
    default:
      break;
  }
  if ((key == U'.' || key == U',') && dec_max_length_ > 0) {
    if (AcceptDecimalKey()) return;
    Beep();  // and the digit rule below refuses it once more
  }
  if (key >= U'0' && key <= U'9') {
    AcceptDigit(key);
  } else {
    Beep();
  }
}

void KestuNumberEdit::SetSign(bool negative) {
  // "-" sets the sign and "+" clears it; neither toggles, and neither
  // raises Changed.
  ClearIfSelected();
  if (negative && !StartsWithMinus(text_)) text_.insert(0, 1, U'-');
  if (!negative && StartsWithMinus(text_)) text_.erase(0, 1);
  Draw(false);
}

bool KestuNumberEdit::AcceptDecimalKey() {
  if (Rules().FindDecimal(text_) != std::u32string::npos) return false;
  ClearIfSelected();
  if (Trimmed(text_).empty()) text_.assign(1, U'0');
  text_ += Rules().DecimalSeparator();
  Draw(false);
  return true;
}

void KestuNumberEdit::AcceptDigit(char32_t digit) {
  if (whole_selected_) {
    ClearIfSelected();
    Draw(false);
  }
  const size_t separator = Rules().FindDecimal(text_);
  const Int16 length = NumberText::Length(text_);
  if (separator != std::u32string::npos &&
      length - Int16::From(static_cast<int64_t>(separator)) > dec_max_length_) {
    Beep();  // the decimals are full
    return;
  }
  const std::u32string_view trimmed = Trimmed(text_);
  if (digit == U'0' && (trimmed == U"0" || trimmed == U"-0")) {
    Beep();  // no leading zeros
    return;
  }
  if (digit != U'0' && text_ == U"0") text_.clear();
  if (digit != U'0' && text_ == U"-0") text_.pop_back();
  if (separator == std::u32string::npos) {
    const Int16 limit =
        StartsWithMinus(text_) ? Int16(int_max_length_) + Int16(1) : Int16(int_max_length_);
    if (NumberText::Length(text_) >= limit) {
      Beep();  // the integer part is full
      return;
    }
  }
  PropertyChanged("dcDataValue");
  ClearIfSelected();
  text_ += digit;
  Draw(false);
  RaiseChanged();
}

void KestuNumberEdit::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyUp, key_code, shift)) return;
}

// ---- Mouse and context menu ----

void KestuNumberEdit::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
}

void KestuNumberEdit::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseMove, button, shift, x, y)) return;
}

void KestuNumberEdit::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseUp, button, shift, x, y)) return;
  if (button != kRightButton || !AmbientUserMode()) return;
  UpdateMenu();
  if (const std::optional<int> chosen = PopupMenu(menu_)) Menu_Click(*chosen);
}

void KestuNumberEdit::UserControl_Click() {
  if (!RaiseEvent(Click)) return;
}

void KestuNumberEdit::UserControl_DblClick() {
  if (!RaiseEvent(DblClick)) return;
  SelectAll();
  Draw(false);
}

void KestuNumberEdit::UpdateMenu() {
  menu_[kCut].enabled = whole_selected_;
  menu_[kCopy].enabled = whole_selected_;
  menu_[kPaste].enabled = !ClipboardGetText().empty();
  menu_[kDelete].enabled = !Trimmed(text_).empty();
  menu_[kSelectAll].enabled = !whole_selected_;
}

void KestuNumberEdit::Menu_Click(int index) {
  switch (index) {
    case kCut:
      Cut();
      break;
    case kCopy:
      Copy();
      break;
    case kPaste:
      Paste();
      break;
    case kDelete: {
      int16_t key_code = kKeyDelete;
      int16_t shift = 0;
      UserControl_KeyDown(key_code, shift);
      break;
    }
    case kSelectAll:
      SelectAll();
      break;
    default:
      break;
  }
}

std::string KestuNumberEdit::InvariantValue() const {
  return NumberText::Invariant(Rules().ValueOf(text_));
}

void KestuNumberEdit::Cut() {
  // Cut empties the box even when it is locked: only the keys check Locked.
  ClipboardSetText(InvariantValue());
  text_.clear();
  Draw(false);
}

void KestuNumberEdit::Copy() {
  ClipboardSetText(InvariantValue());
  Draw(false);
  SelectAll();
}

void KestuNumberEdit::Paste() {
  // Every character goes through the key rules, so a paste is exactly what
  // typing it would give: "1.234,5" with two decimals leaves "1,23".
  const std::u32string pasted = ToUtf32(ClipboardGetText());
  // A locked box keeps its text: the keys below stop at once.
  if (!locked_) text_.clear();
  for (char32_t c : pasted) {
    for (int16_t key_ascii : KeyCodesOf(c)) UserControl_KeyPress(key_ascii);
  }
}

// ---- Drawing ----

OLE_COLOR KestuNumberEdit::TextColor() const {
  if (!enabled_) return disabled_color_;
  if (locked_) return locked_color_;
  if (StartsWithMinus(text_)) return negative_color_;
  return fore_color_;
}

void KestuNumberEdit::Draw(bool normalise_first) {
  const NumberText rules = Rules();
  if (normalise_first) text_ = rules.Normalise(text_);
  const std::string display = ToUtf8(rules.Display(text_, th_separator_));

  // Work in whole pixels so that the face, the text and the caret line up.
  const int width_px = static_cast<int>(std::lround(ScaleWidth() / pixel_x_.value()));
  const int height_px = static_cast<int>(std::lround(ScaleHeight() / pixel_y_.value()));
  const int shadow_px = shadow_ ? 5 : 0;
  const int face_right_px = width_px - 1 - shadow_px;
  const int face_bottom_px = height_px - 1 - shadow_px;
  DrawBackground(PixelsX(face_right_px), PixelsY(face_bottom_px));

  // Right-aligned, 3 pixels in from the face's right edge, centred in
  // height: the number grows to the left as digits are typed at its end.
  const int text_width_px = static_cast<int>(std::lround(TextWidth(display) / pixel_x_.value()));
  const int line_height_px = static_cast<int>(std::lround(TextHeight("M") / pixel_y_.value()));
  const int text_end_px = face_right_px - 3;
  const int text_left_px = text_end_px - text_width_px;
  const int text_top_px = (face_bottom_px + 1 - line_height_px) / 2;
  const bool selected = whole_selected_ && has_focus_ && AmbientUserMode();
  if (selected && selection_3d_) {
    DrawSelectionPlate(PixelsX(text_left_px - 2), PixelsY(text_top_px - 1),
                       PixelsX(text_end_px + 1), PixelsY(text_top_px + line_height_px));
  }
  UserControl::SetForeColor(TextColor());
  SetCurrentX(PixelsX(text_left_px));
  SetCurrentY(PixelsY(text_top_px));
  Print(display);
  if (selected && !selection_3d_) {
    InvertSelection(PixelsX(text_left_px - 1), PixelsY(text_top_px), PixelsX(text_end_px),
                    PixelsY(text_top_px + line_height_px - 1));
  }
  DrawBorder(PixelsX(face_right_px), PixelsY(face_bottom_px));
  if (has_focus_ && AmbientUserMode()) PlaceCaret(text_end_px, text_top_px);
}

void KestuNumberEdit::DrawBackground(float face_right, float face_bottom) {
  if (shadow_) {
    // The corners the shadow leaves free take the usual form colour.
    UserControl::SetBackColor(syscolor::kButtonFace);
    Cls();
    Line(PixelsX(5), PixelsY(5), ScaleWidth(), ScaleHeight(), shadow_color_, LineKind::FilledBox);
  }
  Line(0, 0, face_right, face_bottom, back_color_, LineKind::FilledBox);
}

void KestuNumberEdit::DrawBorder(float face_right, float face_bottom) {
  if (!border_3d_) {
    Line(0, 0, face_right, face_bottom, syscolor::kButtonShadow, LineKind::Box);
    return;
  }
  // Sunken: two bevels, dark above and to the left, light below and right.
  const float px = PixelsX(1);
  const float py = PixelsY(1);
  Bevel(*this, 0, 0, face_right, face_bottom, syscolor::kButtonShadow, syscolor::k3DHighlight, px);
  Bevel(*this, px, py, face_right - px, face_bottom - py, syscolor::k3DDarkShadow,
        syscolor::k3DLight, px);
}

void KestuNumberEdit::DrawSelectionPlate(float left, float top, float right, float bottom) {
  // A raised plate in the button face colour under the number.
  Line(left, top, right, bottom, syscolor::kButtonFace, LineKind::FilledBox);
  Bevel(*this, left, top, right, bottom, syscolor::k3DHighlight, syscolor::kButtonShadow,
        PixelsX(1));
}

void KestuNumberEdit::InvertSelection(float left, float top, float right, float bottom) {
  // XOR with (face ^ highlight): the face turns exactly the highlight
  // colour and the text takes the matching contrast colour.
  const Rgb pen = ResolveColor(back_color_) ^ ResolveColor(syscolor::kHighlight);
  SetDrawMode(static_cast<int16_t>(RasterOp::XorPen));
  Line(left, top, right, bottom, AsOleColor(pen), LineKind::FilledBox);
  SetDrawMode(static_cast<int16_t>(RasterOp::CopyPen));
}

void KestuNumberEdit::PlaceCaret(int x_px, int y_px) {
  KestuControlsAPI::SetCaretPos(x_px, y_px);
  KestuControlsAPI::ShowCaret(hWnd());
}

}  // namespace kestu
