// The masked box's public face as the container sees it: its properties
// with their help strings, what a new box starts with and what a saved box
// missing a key reads, its methods, events and ccTextStyle.

#include "kestu/textedit/KestuTextEdit.h"

#include "kestu/foundation/HelpText.h"
#include "kestu/foundation/PropertyBag.h"

namespace kestu {

const EditBoxEvents& TextEditEvents() {
  static const EditBoxEvents infos = EditBoxEvents::With(
      "Occurs when an edit by the user changes the text. [Ocorre quando uma edição do usuário "
      "altera o texto.]");
  return infos;
}

namespace {

using P = KestuTextEdit;

MethodInfo IsValidCharMethod() {
  MethodInfo m;
  m.name = "IsValidChar";
  m.params = {{"Char", "String", VarType::String, true},
              {"position", "Integer", VarType::Integer, true}};
  m.return_type_name = "Boolean";
  m.help =
      "Tests a character against the mask at a position, converting it in place. [Testa um "
      "caractere contra a máscara numa posição, convertendo-o no lugar.]";
  m.invoke = [](UserControl& c, std::span<Variant> args) {
    std::string character = args[0].ToString();
    int16_t position = args[1].ToInteger();
    const bool valid = static_cast<P&>(c).IsValidChar(character, position);
    args[0] = Variant(character);
    args[1] = Variant(position);
    return Variant::Boolean(valid);
  };
  return m;
}

MethodInfo SetPositionMethod() {
  MethodInfo m;
  m.name = "SetPosition";
  m.params = {{"position", "Integer", VarType::Integer, false}};
  m.help = "Moves the caret. [Move o cursor.]";
  m.invoke = [](UserControl& c, std::span<Variant> args) {
    static_cast<P&>(c).SetPosition(args[0].ToInteger());
    return Variant();
  };
  return m;
}

MethodInfo SetSelectedTextMethod() {
  MethodInfo m;
  m.name = "SetSelectedText";
  m.params = {{"iStart", "Integer", VarType::Integer, false},
              {"iLength", "Integer", VarType::Integer, false}};
  m.help = "Selects part of the text. [Seleciona parte do texto.]";
  m.invoke = [](UserControl& c, std::span<Variant> args) {
    static_cast<P&>(c).SetSelectedText(args[0].ToInteger(), args[1].ToInteger());
    return Variant();
  };
  return m;
}

}  // namespace

ClassInfo& KestuTextEdit::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuTextEdit";
    c.help = Help("A text box that checks each character against an input mask.",
                  "Uma caixa de texto que confere cada caractere com uma máscara de entrada.");
    c.default_width = 1815;
    c.default_height = 315;
    c.create = [] { return std::make_unique<KestuTextEdit>(); };
    // Saved in the order of the ranks, "dcDataValue" first. Where a new
    // box and a saved one missing the key differ (ForeColor, MaxLength,
    // AutoSelect, Text), that is deliberate.
    constexpr OnSet kShows = OnSet::RedrawThenNotify;
    c.properties = {
        Field<P>("Border3D", "Boolean", &P::border_3d_,
                 Help("Returns/sets whether the box has a 3D border.",
                      "Retorna/define se a caixa tem borda 3D."),
                 kShows)
            .Saved(2)
            .Defaults(true),
        Field<P>("Shadow", "Boolean", &P::shadow_,
                 Help("Returns/sets whether the box casts a shadow.",
                      "Retorna/define se a caixa projeta sombra."),
                 kShows)
            .Saved(3)
            .Defaults(false),
        Field<P>("ShadowColor", "OLE_COLOR", &P::shadow_color_,
                 Help("Returns/sets the color of the shadow.", "Retorna/define a cor da sombra."),
                 kShows)
            .Saved(4)
            .Defaults(0),
        Field<P>("BackColor", "OLE_COLOR", &P::back_color_,
                 Help("Returns/sets the background color of the box.",
                      "Retorna/define a cor de fundo da caixa."),
                 kShows)
            .Saved(5)
            .Defaults(syscolor::kWindowBackground),
        Field<P>("ForeColor", "OLE_COLOR", &P::fore_color_,
                 Help("Returns/sets the color of the text.", "Retorna/define a cor do texto."),
                 kShows)
            .Saved(6)
            .StartsAs(syscolor::kButtonText)
            .ReadsAs(syscolor::kWindowText),
        Field<P>(
            "SelectColor", "OLE_COLOR", &P::select_color_,
            Help("Returns/sets the color of the selection.", "Retorna/define a cor da seleção."),
            kShows)
            .Saved(7)
            .Defaults(syscolor::kHighlight),
        // A new box's text is its name: see UserControl_InitProperties.
        Property<P>("Text", "Variant", &P::Text, &P::SetText,
                    Help("Returns/sets the text.", "Retorna/define o texto."))
            .Saved(&P::text_, 8)
            .ReadsAs(U""),
        Property<P>("Mask", "String", &P::Mask, &P::SetMask,
                    Help("Returns/sets the input mask.", "Retorna/define a máscara de entrada."))
            .Saved(&P::mask_, 9)
            .Defaults(U""),
        Field<P>("MaxLength", "Integer", &P::max_length_,
                 Help("Returns/sets the longest text.", "Retorna/define o maior texto."), kShows)
            .Saved(10)
            .StartsAs(30)
            .ReadsAs(10),
        Field<P>("IncludeLiterals", "Boolean", &P::include_literals_,
                 Help("Returns/sets whether Text includes the mask's literals.",
                      "Retorna/define se Text inclui os literais da máscara."),
                 OnSet::Notify)
            .Saved(11)
            .Key("IncludeLit")  // the key is short, the notification names it in full
            .Defaults(true),
        Property<P>("TextStyle", "ccTextStyle", &P::TextStyle, &P::SetTextStyle,
                    Help("Returns/sets the case or the left padding of the text.",
                         "Retorna/define a caixa ou o preenchimento à esquerda do texto."))
            .Saved(&P::text_style_, 12)
            .Defaults(ccNormal),
        Property<P>("FillChar", "String", &P::FillChar, &P::SetFillChar,
                    Help("Returns/sets the character that pads the text on the left.",
                         "Retorna/define o caractere que preenche o texto à esquerda."))
            .Saved(&P::fill_char_, 13)
            .Defaults(U""),
        Property<P>("Enabled", "Boolean", &P::Enabled, &P::SetEnabled,
                    Help("Returns/sets whether the box responds to the user.",
                         "Retorna/define se a caixa responde ao usuário."))
            .Saved(&P::enabled_, 14)
            .Defaults(true),
        // A new box's font, and a missing one, is the container's.
        Property<P>("Font", "StdFont", &P::Font, &P::SetFont,
                    Help("Returns/sets the font of the text.", "Retorna/define a fonte do texto."))
            .Saved(&P::font_, 15),
        Field<P>("Selection3D", "Boolean", &P::selection_3d_,
                 Help("Returns/sets whether the selection is drawn in 3D.",
                      "Retorna/define se a seleção é desenhada em 3D."),
                 OnSet::Notify)
            .Saved(16)
            .Defaults(false),
        Field<P>("AutoSelect", "Boolean", &P::auto_select_,
                 Help("Returns/sets whether the text is selected when the box gets the focus.",
                      "Retorna/define se o texto é selecionado quando a caixa recebe o foco."),
                 OnSet::Notify)
            .Saved(17)
            .StartsAs(true)
            .ReadsAs(false),
        Field<P>("DefaultValue", "String", &P::default_value_,
                 Help("Returns/sets the text an empty box takes when it loses the focus.",
                      "Retorna/define o texto que uma caixa vazia recebe ao perder o foco."),
                 OnSet::Notify)
            .Saved(19)
            .Defaults(U""),
        Field<P>("Locked", "Boolean", &P::locked_,
                 Help("Returns/sets whether the text can be edited.",
                      "Retorna/define se o texto pode ser editado."),
                 OnSet::Notify)
            .Saved(20)
            .Defaults(false),
        Field<P>("DisabledColor", "OLE_COLOR", &P::disabled_color_,
                 Help("Returns/sets the color of the text when the box is disabled.",
                      "Retorna/define a cor do texto quando a caixa está desabilitada."),
                 kShows)
            .Saved(21)
            .Defaults(syscolor::kGrayText),
        Field<P>("LockedColor", "OLE_COLOR", &P::locked_color_,
                 Help("Returns/sets the color of the text when the box is locked.",
                      "Retorna/define a cor do texto quando a caixa está travada."),
                 kShows)
            .Saved(22)
            .Defaults(syscolor::kButtonText),
        Field<P>("TopText", "Integer", &P::top_text_, "", OnSet::Notify),
        Property<P>("LeftText", "Integer", &P::LeftText, &P::SetLeftText, ""),
        Property<P>("hDC", "Long", &P::hDC, nullptr,
                    Help("Returns the device context of the box.",
                         "Retorna o contexto de dispositivo da caixa.")),
        Property<P>(
            "hwnd", "Long", &P::hwnd, nullptr,
            Help("Returns the window handle of the box.", "Retorna o handle da janela da caixa.")),
        Property<P>("SelStart", "Integer", &P::SelStart, nullptr,
                    Help("Returns the start of the selection.", "Retorna o início da seleção.")),
        Property<P>("CursorPos", "Integer", &P::CursorPos, nullptr,
                    Help("Returns the caret's position.", "Retorna a posição do cursor.")),
        Property<P>(
            "SelLength", "Integer", &P::SelLength, nullptr,
            Help("Returns the length of the selection.", "Retorna o comprimento da seleção.")),
        Property<P>("IsEmpty", "Boolean", &P::IsEmpty, nullptr,
                    Help("Returns whether the text holds only spaces and literals.",
                         "Retorna se o texto só tem espaços e literais.")),
        Property<P>("TextWithoutMask", "String", &P::TextWithoutMask, nullptr,
                    Help("Returns the text without the mask's literals.",
                         "Retorna o texto sem os literais da máscara.")),
        // Write-only: the assigned text is typed over the selection.
        Property<P>("SelText", "String", nullptr, &P::SetSelText,
                    Help("Types a text over the selection.", "Digita um texto sobre a seleção.")),
        Property<P>("dcDataValue", "Variant", &P::dcDataValue, &P::SetdcDataValue,
                    Help("Returns/sets the bound data value.",
                         "Retorna/define o valor de dados vinculado."))
            .WrittenOnly(1),
    };
    // Kept in the bag only: the box has no such property.
    c.bag_only = {Field<P>("AllowSpaceChar", "Boolean", &P::allow_space_char_, "", OnSet::Notify)
                      .Saved(18)
                      .Defaults(true)};
    c.methods = {
        SetPositionMethod(),
        IsValidCharMethod(),
        SetSelectedTextMethod(),
        Method<P>("SelectAll", &P::SelectAll,
                  Help("Selects the whole text.", "Seleciona o texto inteiro.")),
        Method<P>("XFocus", &P::XFocus, Help("Gives the box the focus.", "Dá o foco à caixa.")),
    };
    c.events = TextEditEvents().InOrder();
    c.enums = {{"ccTextStyle",
                {{"ccNormal", ccNormal},
                 {"ccUpperCase", ccUpperCase},
                 {"ccLowerCase", ccLowerCase},
                 {"ccPadLeft", ccPadLeft}}}};
    c.default_event = "Changed";
    c.redraw = [](UserControl& box) { static_cast<P&>(box).Redraw(); };
    c.property_pages = {"ppgTextEdit"};
    // The toolbox picture: a sunken box with a date mask half typed.
    // clang-format off
    c.toolbox_icon = {
        "................",
        "................",
        "gggggggggggggggw",
        "gkkkkkkkkkkkkklw",
        "gkwwwwwwwwwwwwlw",
        "gkwwwwwwwwwwwwlw",
        "gkwwkwwwwwkwwwlw",
        "gkwkkwwwwwkwwwlw",
        "gkwwkwwwwkwwwwlw",
        "gkwwkwwwkwwwwwlw",
        "gkwkkwkkkwwkkwlw",
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

KESTU_REGISTER_CONTROL(KestuTextEdit)

}  // namespace kestu
