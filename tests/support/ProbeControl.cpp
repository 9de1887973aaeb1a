#include "support/ProbeControl.h"

#include "kestu/foundation/Integer.h"
#include "kestu/foundation/PropertyBag.h"

namespace kestu {

namespace {

ParamInfo Param(const char* name, const char* type_name, VarType type, bool by_ref) {
  return ParamInfo{name, type_name, type, by_ref};
}

struct ProbeEvents {
  EventInfo called, key_down, key_press, key_up, mouse_down, mouse_move, mouse_up, click, dbl_click,
      colored, menu;
};

const ProbeEvents& Events() {
  static const ProbeEvents events = [] {
    const std::vector<ParamInfo> key = KeyEventParams();
    const std::vector<ParamInfo> mouse = MouseEventParams();
    return ProbeEvents{
        {"Called", {Param("Procedure", "String", VarType::String, false)}, "A procedure ran."},
        {"KeyDown", key, ""},
        {"KeyPress", KeyPressEventParams(), ""},
        {"KeyUp", key, ""},
        {"MouseDown", mouse, ""},
        {"MouseMove", mouse, ""},
        {"MouseUp", mouse, ""},
        {"Click", {}, ""},
        {"DblClick", {}, ""},
        {"Colored", {Param("Color", "OLE_COLOR", VarType::Long, true)}, ""},
        {"Menu", {Param("Index", "Integer", VarType::Integer, false)}, ""},
    };
  }();
  return events;
}

template <typename F>
MethodInfo Returning(std::string name, std::string type_name, F body) {
  MethodInfo info;
  info.name = std::move(name);
  info.return_type_name = std::move(type_name);
  info.invoke = [body](UserControl& c, std::span<Variant>) {
    return body(static_cast<ProbeControl&>(c));
  };
  return info;
}

// A method of one argument of `type_name`, given as the Variant passed.
template <typename F>
MethodInfo Taking(std::string name, const char* type_name, VarType type, F body) {
  MethodInfo info;
  info.name = std::move(name);
  info.params = {Param("Value", type_name, type, false)};
  info.invoke = [body](UserControl& c, std::span<Variant> args) {
    body(static_cast<ProbeControl&>(c), args[0]);
    return Variant();
  };
  return info;
}

}  // namespace

ClassInfo& ProbeControl::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuProbe";
    c.help = "A control that reports what its host calls.";
    c.create = [] { return std::make_unique<ProbeControl>(); };
    using P = ProbeControl;
    c.properties = {
        Property<P>("Caption", "String", &P::Caption, &P::SetCaption, "The caption."),
        Property<P>("Number", "Integer", &P::Number, &P::SetNumber, "A 16-bit number."),
        Property<P>("Color", "OLE_COLOR", &P::Color, &P::SetColor, "A colour."),
        Property<P>("Ratio", "Double", &P::Ratio, &P::SetRatio, "A real."),
        Property<P>("Data", "Variant", &P::Data, &P::SetData, "Any value."),
        Property<P>("MinWidth", "Long", &P::MinWidth, &P::SetMinWidth, "Smallest width."),
        Property<P>("LastKey", "Integer", &P::LastKey, nullptr, "The last KeyAscii used."),
        Property<P>("hWnd", "Long", &P::Window, nullptr, "The window."),
        Property<P>("AmbientDefault", "Boolean", &P::AmbientDefault, nullptr,
                    "The ambient DisplayAsDefault."),
        Property<P>("HoverTip", "String", &P::HoverTip, &P::SetHoverTip, "A tip at every move."),
    };
    c.methods = {
        Method<P>("ShowCaret", &P::ShowCaret, ""),
        Method<P>("HideCaret", &P::HideCaret, ""),
        Method<P>("Capture", &P::Capture, ""),
        Method<P>("Release", &P::Release, ""),
        Method<P>("Popup", &P::Popup, ""),
        Method<P>("CopyText", &P::CopyText, ""),
        Method<P>("Ring", &P::Ring, ""),
        Method<P>("DrawCaption", &P::DrawCaption, ""),
        Method<P>("FocusSelf", &P::FocusSelf, ""),
        Method<P>("Disable", &P::Disable, ""),
        Method<P>("RaiseColored", &P::RaiseColored, ""),
        Method<P>("Untip", &P::Untip, ""),
        Taking("Tip", "String", VarType::String,
               [](P& p, const Variant& text) { p.Tip(text.ToString()); }),
        Taking("AllowTips", "Boolean", VarType::Boolean,
               [](P& p, const Variant& allowed) { p.AllowTips(allowed.ToBool()); }),
        Returning("Where", "String", [](P& p) { return Variant(p.Where()); }),
        Returning("FormIsActive", "Boolean",
                  [](P& p) { return Variant::Boolean(p.FormIsActive()); }),
        Returning("HasFocus", "Boolean", [](P& p) { return Variant::Boolean(p.HasFocus()); }),
    };
    // Twice(ByRef Value As Integer, Factor As Integer) As Long: multiplies
    // Value in place and returns it.
    MethodInfo twice;
    twice.name = "Twice";
    twice.params = {Param("Value", "Integer", VarType::Integer, true),
                    Param("Factor", "Integer", VarType::Integer, false)};
    twice.return_type_name = "Long";
    twice.invoke = [](UserControl&, std::span<Variant> args) {
      args[0] = Variant(ToInt16(int64_t{args[0].ToInteger()} * args[1].ToInteger()));
      return Variant(static_cast<int32_t>(args[0].ToInteger()));
    };
    c.methods.push_back(std::move(twice));
    const ProbeEvents& e = Events();
    c.events = {&e.called,   &e.key_down, &e.key_press, &e.key_up,  &e.mouse_down, &e.mouse_move,
                &e.mouse_up, &e.click,    &e.dbl_click, &e.colored, &e.menu};
    c.enums = {{"ProbeMode", {{"prbQuiet", 0}, {"prbLoud", 7}}}};
    c.default_event = "Called";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(ProbeControl)

ProbeControl::ProbeControl()
    : Called(Events().called),
      KeyDown(Events().key_down),
      KeyPress(Events().key_press),
      KeyUp(Events().key_up),
      MouseDown(Events().mouse_down),
      MouseMove(Events().mouse_move),
      MouseUp(Events().mouse_up),
      Click(Events().click),
      DblClick(Events().dbl_click),
      Colored(Events().colored),
      Menu(Events().menu) {}

void ProbeControl::UserControl_ReadProperties(PropertyBag& bag) {
  Report("ReadProperties");
  caption_ = bag.ReadAs("Caption", Variant(caption_)).ToString();
  number_ = bag.ReadAs("Number", Variant(number_)).ToInteger();
  color_ =
      static_cast<OLE_COLOR>(bag.ReadAs("Color", Variant(static_cast<int32_t>(color_))).ToLong());
}

void ProbeControl::UserControl_WriteProperties(PropertyBag& bag) {
  Report("WriteProperties");
  bag.WriteProperty("Caption", Variant(caption_));
  bag.WriteProperty("Number", Variant(number_));
  bag.WriteProperty("Color", Variant(static_cast<int32_t>(color_)));
}

void ProbeControl::UserControl_Resize() {
  Report("Resize " + std::to_string(static_cast<int>(Width())) + "x" +
         std::to_string(static_cast<int>(Height())));
  if (Width() < static_cast<float>(min_width_)) SetWidth(static_cast<float>(min_width_));
}

void ProbeControl::ShowCaret() {
  KestuControlsAPI::CreateCaret(hWnd(), 0, 1, 13);
  KestuControlsAPI::SetCaretPos(3, 2);
  KestuControlsAPI::ShowCaret(hWnd());
}

void ProbeControl::Popup() {
  const MenuItem items[] = {{"&One", true}, {"-", true}, {"&Two", false}, {"&Three", true}};
  int16_t index = static_cast<int16_t>(PopupMenu(items).value_or(-1));
  (void)RaiseEvent(Menu, index);
}

void ProbeControl::DrawCaption() {
  RECT rect{2, 2, 60, 20};
  KestuControlsAPI::DrawTextA(hDC(), "Probe", -1, rect, dt::kNoClip);
  KestuControlsAPI::DrawFocusRect(hDC(), RECT{1, 1, 61, 21});
}

std::string ProbeControl::Where() {
  RECT rect;
  POINTAPI cursor;
  KestuControlsAPI::GetWindowRect(hWnd(), rect);
  KestuControlsAPI::GetCursorPos(cursor);
  return std::to_string(rect.Left) + "," + std::to_string(rect.Top) + "," +
         std::to_string(rect.Right) + "," + std::to_string(rect.Bottom) + " " +
         std::to_string(cursor.x) + "," + std::to_string(cursor.y);
}

void ProbeControl::RaiseColored() {
  int32_t color = static_cast<int32_t>(color_);
  if (!RaiseEvent(Colored, color)) return;
  color_ = static_cast<OLE_COLOR>(color);
}

}  // namespace kestu
