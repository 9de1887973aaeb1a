#include "kestu/textedit/TextBox.h"

#include <limits>

#include "kestu/foundation/HelpText.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"

namespace kestu {

namespace {

// The masked box's nine events, Changed renamed Change as the plain box
// calls it.
const EditBoxEvents& TextBoxEvents() {
  static const EditBoxEvents events = [] {
    EditBoxEvents e = EditBoxEvents::With(
        "Occurs when the text changes, by the user or by the program. [Ocorre quando o texto "
        "muda, pelo usuário ou pelo programa.]");
    e.changed.name = "Change";
    return e;
  }();
  return events;
}

}  // namespace

ClassInfo& TextBox::Info() {
  static ClassInfo info = [] {
    using T = TextBox;
    ClassInfo c;
    c.name = "TextBox";
    c.help = Help("A box where the user types one line of text.",
                  "Uma caixa onde o usuário digita uma linha de texto.");
    c.default_width = 1215;
    c.default_height = 315;
    c.create = [] { return std::make_unique<TextBox>(); };
    constexpr OnSet kShows = OnSet::RedrawThenNotify;
    c.properties = {
        Property<T>("Font", "StdFont", &T::Font, &T::SetFont,
                    Help("Returns/sets the font of the text.", "Retorna/define a fonte do texto."))
            .Saved(&T::font_),
        Property<T>("Enabled", "Boolean", &T::Enabled, &T::SetEnabled,
                    Help("Returns/sets whether the box responds to the user.",
                         "Retorna/define se a caixa responde ao usuário."))
            .Saved(&T::enabled_)
            .Defaults(true),
        Field<T>("BackColor", "OLE_COLOR", &T::back_color_,
                 Help("Returns/sets the background color of the box.",
                      "Retorna/define a cor de fundo da caixa."),
                 kShows)
            .Saved()
            .Defaults(syscolor::kWindowBackground),
        Property<T>("ForeColor", "OLE_COLOR", &T::ForeColor, &T::SetForeColor,
                    Help("Returns/sets the color of the text.", "Retorna/define a cor do texto."))
            .Saved(&T::fore_color_)
            .Defaults(syscolor::kWindowText),
        // A new box's text is its name, as the masked box's.
        Property<T>("Text", "String", &T::Text, &T::SetText,
                    Help("Returns/sets the text.", "Retorna/define o texto."))
            .Saved(&T::text_)
            .ReadsAs(U""),
        Property<T>("MaxLength", "Integer", &T::MaxLength, &T::SetMaxLength,
                    Help("Returns/sets the longest text the user can type; 0 for no limit.",
                         "Retorna/define o maior texto que o usuário digita; 0 sem limite."))
            .Saved(&T::limit_)
            .Defaults(0)
            .Checked([](const Variant& v) {
              if (v.ToLong() < 0) throw RuntimeError(err::kInvalidPropertyValue);
            }),
        Field<T>("Locked", "Boolean", &T::locked_,
                 Help("Returns/sets whether the text can be edited.",
                      "Retorna/define se o texto pode ser editado."),
                 OnSet::Notify)
            .Saved()
            .Defaults(false),
        Property<T>("SelStart", "Integer", &T::SelStart, &T::SetSelStart,
                    Help("Returns/sets the start of the selection.",
                         "Retorna/define o início da seleção.")),
        Property<T>("SelLength", "Integer", &T::SelLength, &T::SetSelLength,
                    Help("Returns/sets the length of the selection.",
                         "Retorna/define o comprimento da seleção.")),
        Property<T>(
            "SelText", "String", &T::SelText, &T::SetSelText,
            Help("Returns/replaces the selected text.", "Retorna/substitui o texto selecionado.")),
    };
    c.methods = {Method<T>("SelectAll", &T::SelectAll,
                           Help("Selects the whole text.", "Seleciona o texto inteiro."))};
    c.events = TextBoxEvents().InOrder();
    c.default_event = "Change";
    c.redraw = [](UserControl& box) { static_cast<T&>(box).Redraw(); };
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(TextBox)

TextBox::TextBox() : KestuTextEdit(TextBoxEvents()) {
  // What the masked box offers as properties the plain box keeps fixed:
  // a sunken frame, the highlight selection, spaces allowed, locked text
  // in the text colour, grey text when disabled.
  border_3d_ = true;
  select_color_ = syscolor::kHighlight;
  allow_space_char_ = true;
  include_literals_ = true;
  disabled_color_ = syscolor::kGrayText;
  ApplyLimit();
}

std::string TextBox::Text() const {
  return EncodeUtf8(StoredText());
}

template <typename Edit>
void TextBox::EditFromProgram(Edit&& edit) {
  const std::u32string before = StoredText();
  std::forward<Edit>(edit)();
  if (StoredText() != before) static_cast<void>(RaiseEvent(Changed));
}

void TextBox::SetText(const std::string& text) {
  EditFromProgram([&] { KestuTextEdit::SetText(Variant(text)); });
}

void TextBox::SetMaxLength(int16_t limit) {
  if (limit < 0) throw RuntimeError(err::kInvalidPropertyValue);
  limit_ = limit;
  ApplyLimit();
  PropertyChanged("MaxLength");
}

void TextBox::ApplyLimit() {
  max_length_ = limit_ == 0 ? std::numeric_limits<int16_t>::max() : limit_;
}

void TextBox::SetForeColor(OLE_COLOR color) {
  fore_color_ = locked_color_ = color;
  Redraw();
  PropertyChanged("ForeColor");
}

void TextBox::SetSelStart(int16_t start) {
  if (start < 0) throw RuntimeError(err::kInvalidPropertyValue);
  SetSelectedText(start, 0);
}

void TextBox::SetSelLength(int16_t length) {
  if (length < 0) throw RuntimeError(err::kInvalidPropertyValue);
  SetSelectedText(SelStart(), length);
}

std::string TextBox::SelText() const {
  return EncodeUtf8(
      StoredText().substr(static_cast<size_t>(SelStart()), static_cast<size_t>(SelLength())));
}

void TextBox::SetSelText(const std::string& text) {
  EditFromProgram([&] {
    // An empty text still takes the selection away.
    if (text.empty() && HasSelection()) EraseSelection(false);
    KestuTextEdit::SetSelText(text);
  });
}

void TextBox::UserControl_InitProperties() {
  KestuTextEdit::UserControl_InitProperties();
  FollowProperties();
}

void TextBox::UserControl_ReadProperties(PropertyBag& bag) {
  KestuTextEdit::UserControl_ReadProperties(bag);
  FollowProperties();
}

void TextBox::FollowProperties() {
  locked_color_ = fore_color_;
  ApplyLimit();
}

}  // namespace kestu
