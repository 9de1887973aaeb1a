// The box's public face as the container sees it: the class's metadata
// (properties with their help strings, methods, events, eNumberFormat) and
// the events' descriptions, kept apart from the behaviour in
// KestuNumberEdit.cpp.

#include "kestu/numberedit/KestuNumberEdit.h"

#include "numberedit/NumberText.h"

namespace kestu {

namespace {

const EditBoxEvents& Events() {
  static const EditBoxEvents infos = EditBoxEvents::With(
      "Occurs when a typed digit, Backspace or Delete changes the number. [Ocorre quando um "
      "dígito, Backspace ou Delete altera o número.]");
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
    // Ranks give the order of the saved keys. A key a saved box lacks reads
    // as the field stands, which on loading is the blank box (False, 0,
    // ""), not a new box's values: a bag without "IntMaxLength" loads 0.
    // Deliberate; every key is always written. Only the last two colours
    // read as a new box's.
    constexpr OnSet kShows = OnSet::RedrawThenNotify;
    c.properties = {
        Field<P>("Border3D", "Boolean", &P::border_3d_,
                 "Returns/sets whether the box has a 3D border. [Retorna/define se a caixa tem "
                 "borda 3D.]",
                 kShows)
            .Saved(2)
            .StartsAs(true),
        Field<P>("Shadow", "Boolean", &P::shadow_,
                 "Returns/sets whether the box casts a shadow. [Retorna/define se a caixa "
                 "projeta sombra.]",
                 kShows)
            .Saved(3)
            .StartsAs(false),
        Field<P>("ShadowColor", "OLE_COLOR", &P::shadow_color_,
                 "Returns/sets the color of the shadow. [Retorna/define a cor da sombra.]", kShows)
            .Saved(4)
            .StartsAs(0),
        Field<P>("BackColor", "OLE_COLOR", &P::back_color_,
                 "Returns/sets the background color of the box. [Retorna/define a cor de fundo "
                 "da caixa.]",
                 kShows)
            .Saved(5)
            .StartsAs(syscolor::kWindowBackground),
        Field<P>("ForeColor", "OLE_COLOR", &P::fore_color_,
                 "Returns/sets the color of a positive number. [Retorna/define a cor de um "
                 "número positivo.]",
                 kShows)
            .Saved(6)
            .StartsAs(syscolor::kWindowText),
        Field<P>("NegativeColor", "OLE_COLOR", &P::negative_color_,
                 "Returns/sets the color of a negative number. [Retorna/define a cor de um "
                 "número negativo.]",
                 kShows)
            .Saved(7)
            .StartsAs(RGB(255, 0, 0)),
        Field<P>("LockedColor", "OLE_COLOR", &P::locked_color_,
                 "Returns/sets the color of the number when the box is locked. [Retorna/define "
                 "a cor do número quando a caixa está travada.]",
                 kShows)
            .Saved(20)
            .Defaults(syscolor::kButtonText),
        Field<P>("DisabledColor", "OLE_COLOR", &P::disabled_color_,
                 "Returns/sets the color of the number when the box is disabled. "
                 "[Retorna/define a cor do número quando a caixa está desabilitada.]",
                 kShows)
            .Saved(19)
            .Defaults(syscolor::kGrayText),
        Property<P>("Text", "Variant", &P::Text, &P::SetText,
                    "Returns/sets the number as text. [Retorna/define o número como texto.]")
            .Saved(&P::text_, 8)
            .StartsAs(U"")
            // Past 32767 characters: error 6, and nothing is stored.
            .Checked([](const Variant& text) { NumberText::Length(DecodeUtf8(text.ToString())); }),
        Property<P>("Value", "Double", &P::Value, &P::SetValue,
                    "Returns/sets the numeric value. [Retorna/define o valor numérico.]"),
        Property<P>("IntMaxLength", "Integer", &P::IntMaxLength, &P::SetIntMaxLength,
                    "Returns/sets the maximum number of integer digits. [Retorna/define o "
                    "número máximo de dígitos inteiros.]")
            .Saved(&P::int_max_length_, 14)
            .StartsAs(5),
        Property<P>("DecMaxLength", "Integer", &P::DecMaxLength, &P::SetDecMaxLength,
                    "Returns/sets the number of decimal digits. [Retorna/define o número de "
                    "dígitos decimais.]")
            .Saved(&P::dec_max_length_, 13)
            .StartsAs(0),
        // The font a new box starts with is the container's: see
        // UserControl_InitProperties.
        Property<P>("Font", "StdFont", &P::Font, &P::SetFont,
                    "Returns/sets the font of the number. [Retorna/define a fonte do número.]")
            .Saved(&P::font_, 10)
            .ReadAt(1),
        Property<P>("Enabled", "Boolean", &P::Enabled, &P::SetEnabled,
                    "Returns/sets whether the box responds to the user. [Retorna/define se a "
                    "caixa responde ao usuário.]")
            .Saved(&P::enabled_, 9)
            .StartsAs(true),
        Field<P>("Selection3D", "Boolean", &P::selection_3d_,
                 "Returns/sets whether a selected number is drawn in 3D. [Retorna/define se o "
                 "número selecionado é desenhado em 3D.]",
                 OnSet::Notify)
            .Saved(11)
            .StartsAs(false),
        Field<P>("AutoSelect", "Boolean", &P::auto_select_,
                 "Returns/sets whether the number is selected when the box gets the focus. "
                 "[Retorna/define se o número é selecionado quando a caixa recebe o foco.]",
                 OnSet::Notify)
            .Saved(12)
            .StartsAs(true),
        Field<P>("AllowNegative", "Boolean", &P::allow_negative_,
                 "Returns/sets whether negative numbers are allowed. [Retorna/define se números "
                 "negativos são permitidos.]",
                 kShows)
            .Saved(15)
            .StartsAs(true),
        Field<P>("ThSeparator", "Boolean", &P::th_separator_,
                 "Returns/sets whether thousands separators are shown. [Retorna/define se os "
                 "separadores de milhar são exibidos.]",
                 kShows)
            .Saved(16)
            .StartsAs(true),
        Property<P>("NumberFormat", "eNumberFormat", &P::NumberFormat, &P::SetNumberFormat,
                    "Returns/sets the number format. [Retorna/define o formato do número.]")
            .Saved(&P::number_format_, 17)
            .StartsAs(BrazilFormat),
        Field<P>("Locked", "Boolean", &P::locked_,
                 "Returns/sets whether the number can be edited. [Retorna/define se o número "
                 "pode ser editado.]",
                 OnSet::Notify)
            .Saved(18)
            .StartsAs(false),
        Property<P>("hDC", "Long", &P::hDC, nullptr,
                    "Returns the device context of the box. [Retorna o contexto de dispositivo "
                    "da caixa.]"),
        Property<P>("hwnd", "Long", &P::hwnd, nullptr,
                    "Returns the window handle of the box. [Retorna o handle da janela da "
                    "caixa.]"),
        Property<P>("dcDataValue", "Variant", &P::dcDataValue, &P::SetdcDataValue,
                    "Returns/sets the bound data value. [Retorna/define o valor de dados "
                    "vinculado.]")
            .WrittenOnly(1),
    };
    c.redraw = [](UserControl& box) { box.UserControl_Show(); };
    c.methods = {
        Method<P>("SelectAll", &P::SelectAll,
                  "Selects the whole number. [Seleciona o número inteiro.]"),
        Method<P>("XFocus", &P::XFocus, "Gives the box the focus. [Dá o foco à caixa.]"),
    };
    c.events = Events().InOrder();
    c.enums = {{"eNumberFormat", {{"BrazilFormat", BrazilFormat}, {"USFormat", USFormat}}}};
    c.default_event = "Changed";
    c.property_pages = {"ppgNumberEdit"};
    // The toolbox picture: a sunken box with a number in it, right-aligned as the box shows
    // numbers.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "................",
        "gggggggggggggggw",
        "gkkkkkkkkkkkkklw",
        "gkwwwwwwwwwwwwlw",
        "gkwwwwwwwwwwwwlw",
        "gkwwkwkkwwkkwwlw",
        "gkwkkwwwkwwwkwlw",
        "gkwwkwwkwwwkwwlw",
        "gkwwkwkwwwwwkwlw",
        "gkwkkwkkkwkkwwlw",
        "gkwwwwwwwwwwwwlw",
        "gllllllllllllllw",
        "wwwwwwwwwwwwwwww",
        "................",
        "................",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuNumberEdit)

KestuNumberEdit::KestuNumberEdit() : EditBox(Events()) {}

}  // namespace kestu
