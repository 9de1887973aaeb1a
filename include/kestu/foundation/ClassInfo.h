#pragma once
// Per-class static metadata: the properties, methods and events of a
// control class by name, with types, access and help strings, and the
// registry of control classes. Late binding (form files, the script host,
// property pages, the designer) goes through these tables only.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/Text.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

// How a property is kept in the property bag. UserControl's own
// InitProperties, ReadProperties and WriteProperties work from these.
struct PersistInfo {
  std::string key;    // the bag key: the property's name unless declared otherwise
  int save_rank = 0;  // keys are written by rising rank (ties keep the interface order)
  int read_rank = 0;  // and read by rising rank
  // The value saved; a missing key reads as it unless `read_default` is set.
  std::function<Variant(UserControl&)> value;
  // Stores a value read, already of the field's type, and nothing else:
  // loading notifies no one. Empty: the key is written, never read.
  std::function<void(UserControl&, const Variant&)> store;
  std::optional<Variant> read_default;
  std::optional<Variant> initial;  // what a new control starts with
  // Refuses a value read (by throwing) before anything is stored.
  std::function<void(const Variant&)> check;
};

struct PropertyInfo {
  std::string name;
  std::string type_name;  // "OLE_COLOR", "Boolean", "KST_BorderStyle", ...
  VarType type = VarType::Empty;
  std::string help;                          // English, then the Portuguese in brackets
  std::function<Variant(UserControl&)> get;  // empty: write-only
  std::function<void(UserControl&, const Variant&)> set;  // empty: read-only
  std::optional<PersistInfo> persist;                     // empty: not saved

  bool CanRead() const { return static_cast<bool>(get); }
  bool CanWrite() const { return static_cast<bool>(set); }
};

struct MethodInfo {
  std::string name;
  std::vector<ParamInfo> params;
  std::string return_type_name;  // empty for a method without result
  std::string help;
  // Arguments arrive converted to the parameters' types; a by-reference
  // argument is assigned back in place.
  std::function<Variant(UserControl&, std::span<Variant>)> invoke;
};

struct EnumInfo {
  std::string name;
  std::vector<std::pair<std::string, int32_t>> constants;
};

struct ClassInfo {
  std::string name;
  std::string help;
  int default_width = 1200;  // twips
  int default_height = 480;
  // A container holds other controls: the host places them inside it.
  bool is_container = false;
  std::function<std::unique_ptr<UserControl>()> create;
  std::vector<PropertyInfo> properties;  // in the order of the interface
  // Kept in the property bag with no property of its own: no name reaches
  // them, only loading and saving.
  std::vector<PropertyInfo> bag_only;
  std::vector<MethodInfo> methods;
  std::vector<const EventInfo*> events;
  std::vector<EnumInfo> enums;
  std::string default_event;
  // The class's own property pages by name, in tab order. The library's
  // About page is not among them: every dialog and listing adds it last
  // (PropertyPagesShown), so no class can leave it out or move it.
  std::vector<std::string> property_pages;
  // The class's 16 x 16 toolbox picture as character art, 16 rows of 16
  // characters from the palette of foundation/ToolboxIcon.h; empty for a
  // class the toolbox does not show (the standard dialog controls).
  std::vector<std::string_view> toolbox_icon;
  // Redraws a control after a property that asks for it changes.
  std::function<void(UserControl&)> redraw;

  // Look-ups ignore case, as the host's late binding does.
  const PropertyInfo* FindProperty(std::string_view wanted) const;
  const MethodInfo* FindMethod(std::string_view wanted) const;
  const EventInfo* FindEvent(std::string_view wanted) const;
  // The pages a property dialog shows for the class: its own, then the
  // About page.
  std::vector<std::string> PropertyPagesShown() const;
};

// The library's About page, shown last for every control.
inline constexpr std::string_view kAboutPropertyPage = "ppgSobre";

// Every control class registers itself here (see KESTU_REGISTER_CONTROL).
class ControlRegistry {
 public:
  static ControlRegistry& Instance();

  void Register(const ClassInfo& info);
  const ClassInfo* Find(std::string_view class_name) const;
  // A class the library's own windows are built from (a dialog, a page,
  // the designer): std::logic_error naming `who` when it is missing.
  const ClassInfo& Require(std::string_view class_name, std::string_view who) const;
  const std::vector<const ClassInfo*>& Classes() const { return classes_; }
  // A constant of any registered enumeration ("ccPadLeft"), case-insensitive.
  const std::pair<std::string, int32_t>* FindConstant(std::string_view name) const;

 private:
  std::vector<const ClassInfo*> classes_;
};

// Registers a class at load time: put `KESTU_REGISTER_CONTROL(KestuPanel3D)`
// in the control's source; the class must have a static `ClassInfo&
// Info()`.
#define KESTU_REGISTER_CONTROL(Class)                             \
  namespace {                                                     \
  [[maybe_unused]] const bool kestu_registered_##Class = [] {     \
    ::kestu::ControlRegistry::Instance().Register(Class::Info()); \
    return true;                                                  \
  }();                                                            \
  }

// ---- Building property tables from member functions ----

// Value conversions between a field's C++ type and Variant.
template <typename T>
struct VariantTraits;
template <>
struct VariantTraits<int16_t> {
  static constexpr VarType kType = VarType::Integer;
  static Variant To(int16_t v) { return Variant(v); }
  static int16_t From(const Variant& v) { return v.ToInteger(); }
};
template <>
struct VariantTraits<int32_t> {
  static constexpr VarType kType = VarType::Long;
  static Variant To(int32_t v) { return Variant(v); }
  static int32_t From(const Variant& v) { return v.ToLong(); }
};
// OLE_COLOR travels as the host's 32-bit Long with the same bits.
template <>
struct VariantTraits<uint32_t> {
  static constexpr VarType kType = VarType::Long;
  static Variant To(uint32_t v) { return Variant(static_cast<int32_t>(v)); }
  static uint32_t From(const Variant& v) { return static_cast<uint32_t>(v.ToLong()); }
};
template <>
struct VariantTraits<bool> {
  static constexpr VarType kType = VarType::Boolean;
  static Variant To(bool v) { return Variant::Boolean(v); }
  static bool From(const Variant& v) { return v.ToBool(); }
};
template <>
struct VariantTraits<float> {
  static constexpr VarType kType = VarType::Single;
  static Variant To(float v) { return Variant(v); }
  static float From(const Variant& v) { return v.ToSingle(); }
};
template <>
struct VariantTraits<double> {
  static constexpr VarType kType = VarType::Double;
  static Variant To(double v) { return Variant(v); }
  static double From(const Variant& v) { return v.ToDouble(); }
};
template <>
struct VariantTraits<std::string> {
  static constexpr VarType kType = VarType::String;
  static Variant To(const std::string& v) { return Variant(v); }
  static std::string From(const Variant& v) { return v.ToString(); }
};
// Text held as characters travels as the host's string.
template <>
struct VariantTraits<std::u32string> {
  static constexpr VarType kType = VarType::String;
  static Variant To(const std::u32string& v) { return Variant(EncodeUtf8(v)); }
  static std::u32string From(const Variant& v) { return DecodeUtf8(v.ToString()); }
};
template <>
struct VariantTraits<Variant> {
  static constexpr VarType kType = VarType::Empty;  // any
  static Variant To(const Variant& v) { return v; }
  static Variant From(const Variant& v) { return v; }
};
template <>
struct VariantTraits<FontRef> {
  static constexpr VarType kType = VarType::Font;
  static Variant To(const FontRef& v) { return Variant(v); }
  static FontRef From(const Variant& v) { return v.ToFont(); }
};
template <>
struct VariantTraits<PictureRef> {
  static constexpr VarType kType = VarType::Picture;
  static Variant To(const PictureRef& v) { return Variant(v); }
  static PictureRef From(const Variant& v) { return v.ToPicture(); }
};

// What a generated setter does after it stores the new value.
enum class OnSet {
  Notify,            // PropertyChanged(name)
  NotifyThenRedraw,  // PropertyChanged(name), then the class's redraw
  RedrawThenNotify,  // the class's redraw, then PropertyChanged(name)
};

// A property of class C being declared. It converts to the PropertyInfo it
// builds; the members below add how it is kept in the property bag.
// `FieldType` is the C++ type of the member that holds it, once known.
template <typename C, typename T>
struct FieldOf {
  using Pointer = T C::*;
  using Value = T;
};
template <typename C>
struct FieldOf<C, void> {
  struct None {};
  using Pointer = std::nullptr_t;
  using Value = None;
};

template <typename C, typename FieldType = void>
class PropertyDecl {
  using FieldPointer = typename FieldOf<C, FieldType>::Pointer;
  using Value = typename FieldOf<C, FieldType>::Value;

 public:
  explicit PropertyDecl(PropertyInfo info, FieldPointer field = {})
      : info_(std::move(info)), field_(field) {}
  operator PropertyInfo() && { return std::move(info_); }  // NOLINT: a declaration is its info

  // Keeps `field` in the bag under the property's name, loaded without
  // the setter's side effects.
  template <typename T, typename Owner>
  requires std::is_base_of_v<Owner, C> PropertyDecl<C, T> Saved(T Owner::*field,
                                                                int save_rank = 0) && {
    PropertyDecl<C, T> decl(std::move(info_), static_cast<T C::*>(field));
    return std::move(decl).Saved(save_rank);
  }
  // A field property keeps its own field.
  PropertyDecl&& Saved(int save_rank = 0) && requires(!std::is_void_v<FieldType>) {
    PersistInfo& p = info_.persist.emplace();
    p.key = info_.name;
    p.save_rank = p.read_rank = save_rank;
    p.value = [field = field_](UserControl& c) {
      return VariantTraits<FieldType>::To(static_cast<C&>(c).*field);
    };
    p.store = [field = field_](UserControl& c, const Variant& v) {
      static_cast<C&>(c).*field = VariantTraits<FieldType>::From(v);
    };
    return std::move(*this);
  }
  // Written (from the getter) but never read back.
  PropertyDecl&& WrittenOnly(int save_rank) && {
    PersistInfo& p = info_.persist.emplace();
    p.key = info_.name;
    p.save_rank = p.read_rank = save_rank;
    p.value = info_.get;
    return std::move(*this);
  }
  PropertyDecl&& Key(std::string key) && {
    info_.persist->key = std::move(key);
    return std::move(*this);
  }
  PropertyDecl&& ReadAt(int read_rank) && {
    info_.persist->read_rank = read_rank;
    return std::move(*this);
  }
  // A new control starts with `value`, and a missing key reads as it.
  PropertyDecl&& Defaults(Value value) && {
    return std::move(*this).StartsAs(value).ReadsAs(value);
  }
  PropertyDecl&& StartsAs(Value value) && {
    info_.persist->initial = VariantTraits<FieldType>::To(value);
    return std::move(*this);
  }
  PropertyDecl&& ReadsAs(Value value) && {
    info_.persist->read_default = VariantTraits<FieldType>::To(value);
    return std::move(*this);
  }
  PropertyDecl&& Checked(std::function<void(const Variant&)> check) && {
    info_.persist->check = std::move(check);
    return std::move(*this);
  }

 private:
  PropertyInfo info_;
  [[no_unique_address]] FieldPointer field_;
};

// A property from a getter and a setter of class C (either may be null):
//   Property<KestuNumberEdit>("Text", "Variant", &KestuNumberEdit::Text,
//                             &KestuNumberEdit::SetText, "help")
// The C++ type of a property: what its getter returns, or for a write-only
// one (a null getter), what its setter takes.
template <typename C, typename G, typename S>
struct PropertyValue {
  using type = std::remove_cvref_t<std::invoke_result_t<G, C&>>;
};
template <typename C, typename Owner, typename Arg>
struct PropertyValue<C, std::nullptr_t, void (Owner::*)(Arg)> {
  using type = std::remove_cvref_t<Arg>;
};

template <typename C, typename G, typename S>
PropertyDecl<C> Property(std::string name, std::string type_name, G getter, S setter,
                         std::string help) {
  using T = typename PropertyValue<C, G, S>::type;
  PropertyInfo info;
  info.name = std::move(name);
  info.type_name = std::move(type_name);
  info.type = VariantTraits<T>::kType;
  info.help = std::move(help);
  if constexpr (!std::is_same_v<G, std::nullptr_t>) {
    info.get = [getter](UserControl& c) {
      return VariantTraits<T>::To(std::invoke(getter, static_cast<C&>(c)));
    };
  }
  if constexpr (!std::is_same_v<S, std::nullptr_t>) {
    info.set = [setter](UserControl& c, const Variant& v) {
      std::invoke(setter, static_cast<C&>(c), VariantTraits<T>::From(v));
    };
  }
  return PropertyDecl<C>(std::move(info));
}

// A property that is a member of class C, with a generated getter and
// setter. The setter stores, then notifies and redraws as `on_set` says.
// `Exposed` is the type the host sees when it differs from the member's:
// an enumeration is a Long held in 16 bits, and a value past them is
// error 6 with nothing stored.
//   Field<KestuPanel3D>("BorderWidth", "Integer", &KestuPanel3D::border_width_,
//                       "help", OnSet::NotifyThenRedraw).Saved().Defaults(5)
template <typename C, typename Exposed = void, typename T, typename Owner>
requires std::is_base_of_v<Owner, C> PropertyDecl<C, T> Field(std::string name,
                                                              std::string type_name,
                                                              T Owner::*member, std::string help,
                                                              OnSet on_set) {
  T C::*const field = member;  // a member of a base the class shares (an edit box's frame)
  using E = std::conditional_t<std::is_void_v<Exposed>, T, Exposed>;
  PropertyInfo info;
  info.name = std::move(name);
  info.type_name = std::move(type_name);
  info.type = VariantTraits<E>::kType;
  info.help = std::move(help);
  info.get = [field](UserControl& c) {
    return VariantTraits<E>::To(static_cast<E>(static_cast<C&>(c).*field));
  };
  info.set = [field, on_set, name = info.name](UserControl& c, const Variant& v) {
    // Through the exposed type first, so a value is refused as the host's
    // typed setter would refuse it.
    const E exposed = VariantTraits<E>::From(v);
    static_cast<C&>(c).*field = VariantTraits<T>::From(VariantTraits<E>::To(exposed));
    if (on_set == OnSet::RedrawThenNotify) c.Class().redraw(c);
    c.Site()->PropertyChanged(name);
    if (on_set == OnSet::NotifyThenRedraw) c.Class().redraw(c);
  };
  return PropertyDecl<C, T>(std::move(info), field);
}

// The declared properties of `control`'s class at work: every key read
// before any is stored (a bad value changes nothing), every key written in
// its order, and a new control's starting values.
void ReadDeclaredProperties(UserControl& control, PropertyBag& bag);
void WriteDeclaredProperties(UserControl& control, PropertyBag& bag);
void InitDeclaredProperties(UserControl& control);

// A method without arguments or result.
template <typename C>
MethodInfo Method(std::string name, void (C::*method)(), std::string help) {
  MethodInfo info;
  info.name = std::move(name);
  info.help = std::move(help);
  info.invoke = [method](UserControl& c, std::span<Variant>) {
    (static_cast<C&>(c).*method)();
    return Variant();
  };
  return info;
}

}  // namespace kestu
