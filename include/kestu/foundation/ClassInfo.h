#pragma once
// Per-class static metadata: the properties, methods and events of a
// control class by name, with types, access and help strings, and the
// registry of control classes. Late binding (form files, the script host,
// property pages, the designer) goes through these tables only.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

struct PropertyInfo {
  std::string name;
  std::string type_name;  // "OLE_COLOR", "Boolean", "KST_BorderStyle", ...
  VarType type = VarType::Empty;
  std::string help;                          // English, then the Portuguese in brackets
  std::function<Variant(UserControl&)> get;  // empty: write-only
  std::function<void(UserControl&, const Variant&)> set;  // empty: read-only
  bool persisted = true;

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
  std::vector<MethodInfo> methods;
  std::vector<const EventInfo*> events;
  std::vector<EnumInfo> enums;
  std::string default_event;

  // Look-ups ignore case, as the host's late binding does.
  const PropertyInfo* FindProperty(std::string_view wanted) const;
  const MethodInfo* FindMethod(std::string_view wanted) const;
  const EventInfo* FindEvent(std::string_view wanted) const;
};

// Every control class registers itself here (see KESTU_REGISTER_CONTROL).
class ControlRegistry {
 public:
  static ControlRegistry& Instance();

  void Register(const ClassInfo& info);
  const ClassInfo* Find(std::string_view class_name) const;
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

// A read/write property from a getter and a setter of class C:
//   Property<KestuPanel3D>("BorderWidth", "Integer", &KestuPanel3D::BorderWidth,
//                          &KestuPanel3D::SetBorderWidth, "help")
template <typename C, typename G, typename S>
PropertyInfo Property(std::string name, std::string type_name, G getter, S setter,
                      std::string help) {
  using T = std::remove_cvref_t<std::invoke_result_t<G, C&>>;
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
  return info;
}

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
