#include "kestu/stdcontrols/Label.h"

namespace kestu {

ClassInfo& Label::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "Label";
    c.help =
        "Text the user cannot change, such as the name of the box after it. [Texto que o "
        "usuário não altera, como o nome da caixa que vem depois.]";
    c.default_width = 1215;
    c.default_height = 255;
    c.create = [] { return std::make_unique<Label>(); };
    using L = Label;
    c.properties = SharedProperties(true);
    c.properties.push_back(
        Property<L>("Alignment", "lblAlignment", &L::Alignment, &L::SetAlignment,
                    "Returns/sets how the caption is aligned: lblLeft, lblRight or lblCenter. "
                    "[Retorna/define o alinhamento do texto: lblLeft, lblRight ou lblCenter.]")
            .Saved(&L::alignment_)
            .Defaults(lblLeft)
            .Checked(RangeCheck(lblLeft, lblCenter)));
    c.properties.push_back(
        Field<L>("WordWrap", "Boolean", &L::word_wrap_,
                 "Returns/sets whether the caption wraps at the label's width. [Retorna/define "
                 "se o texto quebra na largura do rótulo.]",
                 OnSet::NotifyThenRedraw)
            .Saved()
            .Defaults(false));
    c.properties.push_back(
        Field<L>("BackStyle", "lblBackStyle", &L::back_style_,
                 "Returns/sets whether the back colour is painted (lblOpaque) or what lies "
                 "under the label shows (lblTransparent). [Retorna/define se a cor de fundo "
                 "é pintada (lblOpaque) ou se o que está sob o rótulo aparece "
                 "(lblTransparent).]",
                 OnSet::NotifyThenRedraw)
            .Saved()
            .Defaults(lblOpaque));
    c.redraw = [](UserControl& label) { static_cast<L&>(label).Redraw(); };
    c.events = PassiveEvents();
    c.enums = {
        {"lblAlignment", {{"lblLeft", lblLeft}, {"lblRight", lblRight}, {"lblCenter", lblCenter}}},
        {"lblBackStyle", {{"lblTransparent", lblTransparent}, {"lblOpaque", lblOpaque}}}};
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(Label)

void Label::SetAlignment(int16_t alignment) {
  CheckRange(alignment, lblLeft, lblCenter);
  alignment_ = alignment;
  PropertyChanged("Alignment");
  Redraw();
}

void Label::Draw() {
  // Transparent: the caption goes over whatever the surface holds.
  if (back_style_ != lblTransparent) Cls();
  int32_t flags = word_wrap_ ? dt::kWordBreak : 0;
  if (alignment_ == lblRight) flags |= dt::kRight;
  if (alignment_ == lblCenter) flags |= dt::kCenter;
  DrawCaption(RECT{0, 0, PixelWidth(), PixelHeight()}, flags);
}

}  // namespace kestu
