// The box's public face as the container sees it: the class's metadata
// (properties with their help strings, methods, events, eNumberFormat) and
// the events' descriptions, kept apart from the behaviour in
// KestuNumberEdit.cpp.

#include "kestu/numberedit/KestuNumberEdit.h"

namespace kestu {

namespace {

struct EventInfos {
  EventInfo click, dbl_click, changed, key_down, key_press, key_up, mouse_down, mouse_move,
      mouse_up;
};

const EventInfos& Events() {
  static const EventInfos infos = [] {
    const std::vector<ParamInfo> key = KeyEventParams();
    const std::vector<ParamInfo> mouse = MouseEventParams();
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
        {"KeyPress", KeyPressEventParams(),
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

}  // namespace kestu
