#include "kestu/stdcontrols/ComboBox.h"

#include <algorithm>

#include "kestu/foundation/Bevel.h"
#include "kestu/foundation/ButtonFace.h"
#include "kestu/foundation/ControlSite.h"
#include "kestu/foundation/HelpText.h"
#include "kestu/foundation/Keys.h"
#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {

namespace {

constexpr int16_t kF4 = 115;
// The sunken frame's two pixels, and the arrow button's width inside it.
constexpr int kFrame = 2;
constexpr int kButtonWidth = 16;

constexpr ButtonFrameColors kArrowFrames{syscolor::k3DLight, syscolor::k3DDarkShadow,
                                         syscolor::k3DHighlight, syscolor::kButtonShadow};

const EventInfo& ClickInfo() {
  static const EventInfo click{"Click",
                               {},
                               "Occurs when the selected item changes, by the user or by the "
                               "program. [Ocorre quando o item selecionado muda, pelo usuário "
                               "ou pelo programa.]"};
  return click;
}

MethodInfo AddItemMethod() {
  MethodInfo m;
  m.name = "AddItem";
  m.params = {{"Item", "String", VarType::String, false},
              {"Index", "Variant", VarType::Empty, false}};
  m.help = Help("Adds an item to the list, at the end or at Index.",
                "Acrescenta um item à lista, no fim ou em Index.");
  m.invoke = [](UserControl& c, std::span<Variant> args) {
    static_cast<ComboBox&>(c).AddItem(args[0].ToString(), args.size() > 1 ? args[1] : Variant());
    return Variant();
  };
  return m;
}

MethodInfo RemoveItemMethod() {
  MethodInfo m;
  m.name = "RemoveItem";
  m.params = {{"Index", "Integer", VarType::Integer, false}};
  m.help = Help("Removes the item at Index.", "Remove o item em Index.");
  m.invoke = [](UserControl& c, std::span<Variant> args) {
    static_cast<ComboBox&>(c).RemoveItem(args[0].ToInteger());
    return Variant();
  };
  return m;
}

MethodInfo ListMethod() {
  MethodInfo m;
  m.name = "List";
  m.params = {{"Index", "Integer", VarType::Integer, false}};
  m.return_type_name = "String";
  m.help = Help("Returns the item at Index.", "Retorna o item em Index.");
  m.invoke = [](UserControl& c, std::span<Variant> args) {
    return Variant(static_cast<ComboBox&>(c).List(args[0].ToInteger()));
  };
  return m;
}

}  // namespace

ClassInfo& ComboBox::Info() {
  static ClassInfo info = [] {
    using C = ComboBox;
    ClassInfo c;
    c.name = "ComboBox";
    c.help = Help("A box showing one item of a list that drops down.",
                  "Uma caixa que mostra um item de uma lista que se abre.");
    c.default_width = 1815;
    c.default_height = 315;
    c.create = [] { return std::make_unique<ComboBox>(); };
    c.properties = SharedProperties(false);
    // A list box shows the window's colours where the dialog controls
    // show the face's.
    DefaultColor(c.properties, "BackColor", syscolor::kWindowBackground);
    DefaultColor(c.properties, "ForeColor", syscolor::kWindowText);
    c.properties.push_back(Property<C>("ListIndex", "Integer", &C::ListIndex, &C::SetListIndex,
                                       Help("Returns/sets the selected item; -1 for none.",
                                            "Retorna/define o item selecionado; -1 nenhum.")));
    c.properties.push_back(
        Property<C>("ListCount", "Integer", &C::ListCount, nullptr,
                    Help("Returns the number of items.", "Retorna o número de itens.")));
    c.properties.push_back(Property<C>("Text", "String", &C::Text, nullptr,
                                       Help("Returns the selected item, or \"\" when none.",
                                            "Retorna o item selecionado, ou \"\" se nenhum.")));
    c.methods = {
        AddItemMethod(), RemoveItemMethod(),
        Method<C>("Clear", &C::Clear, Help("Removes every item.", "Remove todos os itens.")),
        ListMethod()};
    c.redraw = [](UserControl& box) { static_cast<C&>(box).Redraw(); };
    c.events = InputEventInfos({&ClickInfo()});
    c.default_event = "Click";
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(ComboBox)

ComboBox::ComboBox() : Click(ClickInfo()) {
  back_color_ = syscolor::kWindowBackground;
  fore_color_ = syscolor::kWindowText;
}

// ---- The list ----

void ComboBox::CheckIndex(int16_t index) const {
  if (index < 0 || index >= ListCount()) throw RuntimeError(err::kInvalidPropertyArrayIndex);
}

void ComboBox::AddItem(const std::string& item, const Variant& index) {
  // The count is an Integer: a full list takes no more.
  if (items_.size() >= static_cast<size_t>(INT16_MAX)) throw RuntimeError(err::kOutOfMemory);
  const int32_t at = index.IsEmpty() ? ListCount() : index.ToLong();
  if (at < 0 || at > ListCount()) throw RuntimeError(err::kInvalidProcedureCall);
  items_.insert(items_.begin() + at, item);
  if (list_index_ >= at) ++list_index_;
  Redraw();
}

void ComboBox::RemoveItem(int16_t index) {
  CheckIndex(index);
  items_.erase(items_.begin() + index);
  if (list_index_ == index) {
    list_index_ = -1;
  } else if (list_index_ > index) {
    --list_index_;
  }
  Redraw();
}

void ComboBox::Clear() {
  items_.clear();
  list_index_ = -1;
  Redraw();
}

std::string ComboBox::List(int16_t index) const {
  CheckIndex(index);
  return items_[static_cast<size_t>(index)];
}

std::string ComboBox::Text() const {
  return list_index_ < 0 ? std::string() : items_[static_cast<size_t>(list_index_)];
}

void ComboBox::SetListIndex(int16_t index) {
  if (index < -1 || index >= ListCount()) throw RuntimeError(err::kInvalidPropertyValue);
  static_cast<void>(ChangeListIndex(index));
}

bool ComboBox::ChangeListIndex(int16_t index) {
  if (index == list_index_) return true;
  list_index_ = index;
  PropertyChanged("ListIndex");
  Redraw();
  return RaiseEvent(Click);
}

void ComboBox::DropDown() {
  if (items_.empty()) return;
  std::vector<MenuItem> menu;
  menu.reserve(items_.size());
  for (const std::string& item : items_) menu.push_back(MenuItem{item});
  dropped_ = true;
  Redraw();
  const std::optional<int> chosen = PopupMenu(menu);
  dropped_ = false;
  Redraw();
  if (chosen) static_cast<void>(ChangeListIndex(static_cast<int16_t>(*chosen)));
}

// ---- Persistence ----

void ComboBox::UserControl_InitProperties() {
  StdControl::UserControl_InitProperties();
  caption_.clear();  // the box shows its items, never its name
}

void ComboBox::UserControl_ReadProperties(PropertyBag& bag) {
  const int32_t count = bag.ReadAs("ItemCount", Variant(int32_t{0})).ToLong();
  // Each item is a key of its own: a count past the keys is a damaged bag.
  if (count < 0 || static_cast<size_t>(count) > bag.Entries().size()) {
    throw RuntimeError(err::kInvalidPropertyValue, "ItemCount");
  }
  std::vector<std::string> items;
  for (int32_t i = 0; i < count; ++i) {
    items.push_back(bag.ReadAs("Item" + std::to_string(i), Variant(std::string())).ToString());
  }
  const int16_t index = bag.ReadAs("ListIndex", Variant(int16_t{-1})).ToInteger();
  if (index < -1 || index >= count) throw RuntimeError(err::kInvalidPropertyValue, "ListIndex");
  items_ = std::move(items);
  list_index_ = index;
  StdControl::UserControl_ReadProperties(bag);
}

void ComboBox::UserControl_WriteProperties(PropertyBag& bag) {
  StdControl::UserControl_WriteProperties(bag);
  bag.WriteProperty("ItemCount", Variant(static_cast<int32_t>(items_.size())), Variant(int32_t{0}));
  for (size_t i = 0; i < items_.size(); ++i) {
    bag.WriteProperty("Item" + std::to_string(i), Variant(items_[i]));
  }
  bag.WriteProperty("ListIndex", Variant(list_index_), Variant(int16_t{-1}));
}

// ---- Drawing ----

int ComboBox::ButtonLeft() const {
  return std::max(kFrame, PixelWidth() - kFrame - kButtonWidth);
}

void ComboBox::Draw() {
  Cls();
  const int right = PixelWidth() - 1;
  const int bottom = PixelHeight() - 1;
  BevelRectangle(*this, Int16(0), Int16(0), Int16::From(right), Int16::From(bottom),
                 syscolor::kButtonShadow, syscolor::k3DHighlight, Int16(1));
  BevelRectangle(*this, Int16(1), Int16(1), Int16::From(right - 1), Int16::From(bottom - 1),
                 syscolor::k3DDarkShadow, syscolor::k3DLight, Int16(1));
  const int button_left = ButtonLeft();
  DrawSelectedItem(button_left);
  DrawArrowButton(button_left);
}

void ComboBox::DrawSelectedItem(int right) {
  const int bottom = PixelHeight() - kFrame;
  if (!enabled_) {
    Line(kFrame, kFrame, static_cast<float>(right - 1), static_cast<float>(bottom - 1),
         syscolor::kButtonFace, LineKind::FilledBox);
  }
  // Focused, the item sits on the highlight inside a focus rectangle,
  // one pixel clear of the frame and the button.
  const RECT field{kFrame + 1, kFrame + 1, right - 1, bottom - 1};
  const bool focused = has_focus_ && enabled_;
  if (focused) {
    Line(static_cast<float>(field.Left), static_cast<float>(field.Top),
         static_cast<float>(field.Right - 1), static_cast<float>(field.Bottom - 1),
         syscolor::kHighlight, LineKind::FilledBox);
  }
  UserControl::SetForeColor(!enabled_ ? syscolor::kGrayText
                            : focused ? syscolor::kHighlightText
                                      : fore_color_);
  RECT text{field.Left + 1, field.Top, field.Right - 1, field.Bottom};
  // An item is shown as it is: an "&" in it is no access key.
  KestuControlsAPI::DrawTextA(hDC(), Text(), -1, text,
                              dt::kVCenter | dt::kSingleLine | dt::kNoPrefix);
  if (focused) KestuControlsAPI::DrawFocusRect(hDC(), field);
}

void ComboBox::DrawArrowButton(int left) {
  const int width = PixelWidth() - kFrame - left;
  const int height = PixelHeight() - 2 * kFrame;
  if (width <= 0 || height <= 0) return;
  Line(static_cast<float>(left), kFrame, static_cast<float>(left + width - 1),
       static_cast<float>(kFrame + height - 1), syscolor::kButtonFace, LineKind::FilledBox);
  const ButtonExtent extent{static_cast<float>(width), static_cast<float>(height), 1.0F, 1.0F,
                            static_cast<float>(left),  static_cast<float>(kFrame)};
  DrawButtonFrames(*this, dropped_ ? ButtonLook::Down : ButtonLook::IdleRaised, kArrowFrames,
                   extent, enabled_);
  // The arrow: seven pixels wide, four high, sinking with the button.
  const int shift = dropped_ ? 1 : 0;
  const int arrow_left = left + (width - 7) / 2 + shift;
  const int arrow_top = kFrame + (height - 4) / 2 + shift;
  const std::vector<std::string_view> arrow = {"#######", " ##### ", "  ###  ", "   #   "};
  if (!enabled_) {
    // Engraved, as a disabled caption.
    DrawPixelMap(arrow_left + 1, arrow_top + 1, arrow, [](char) { return syscolor::k3DHighlight; });
  }
  const OLE_COLOR color = enabled_ ? syscolor::kButtonText : syscolor::kButtonShadow;
  DrawPixelMap(arrow_left, arrow_top, arrow, [color](char) { return color; });
}

// ---- The user ----

void ComboBox::UserControl_GotFocus() {
  has_focus_ = true;
  Redraw();
}

void ComboBox::UserControl_LostFocus() {
  has_focus_ = false;
  Redraw();
}

void ComboBox::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  const bool alt = (shift & shift::kAlt) != 0;
  if (key_code == kF4 || (alt && (key_code == key::kDown || key_code == key::kUp))) {
    DropDown();
    return;
  }
  if (shift == 0) MoveSelection(key_code, key::kUp, key::kDown);
}

void ComboBox::MoveSelection(int16_t key_code, int16_t back_key, int16_t on_key) {
  if (items_.empty()) return;
  const int16_t last = static_cast<int16_t>(ListCount() - 1);
  if (key_code == back_key) {
    // Nothing selected: back stays on nothing, as there is no item before.
    if (list_index_ > 0) static_cast<void>(ChangeListIndex(list_index_ - 1));
  } else if (key_code == on_key) {
    static_cast<void>(ChangeListIndex(std::min<int16_t>(list_index_ + 1, last)));
  } else if (key_code == key::kHome) {
    static_cast<void>(ChangeListIndex(0));
  } else if (key_code == key::kEnd) {
    static_cast<void>(ChangeListIndex(last));
  }
}

void ComboBox::UserControl_KeyPress(int16_t& key_ascii) {
  static_cast<void>(RaiseEvent(KeyPress, key_ascii));
}

void ComboBox::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  static_cast<void>(RaiseEvent(KeyUp, key_code, shift));
}

void ComboBox::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  if (button == button::kLeft && enabled_) KestuControlsAPI::SetFocus(hWnd());
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
  if (button == button::kLeft && enabled_) DropDown();
}

void ComboBox::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  static_cast<void>(RaiseEvent(MouseMove, button, shift, x, y));
}

void ComboBox::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  static_cast<void>(RaiseEvent(MouseUp, button, shift, x, y));
}

}  // namespace kestu
