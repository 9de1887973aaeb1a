#include "kestu/foundation/Event.h"

namespace kestu {

Variant ArgRef::Get() const {
  switch (kind_) {
    case Kind::Integer: return Variant(*static_cast<int16_t*>(ptr_));
    case Kind::Long: return Variant(*static_cast<int32_t*>(ptr_));
    case Kind::Single: return Variant(*static_cast<float*>(ptr_));
    case Kind::Double: return Variant(*static_cast<double*>(ptr_));
    case Kind::String: return Variant(*static_cast<std::string*>(ptr_));
  }
  return Variant();
}

void ArgRef::Set(const Variant& value) const {
  switch (kind_) {
    case Kind::Integer: *static_cast<int16_t*>(ptr_) = value.ToInteger(); break;
    case Kind::Long: *static_cast<int32_t*>(ptr_) = value.ToLong(); break;
    case Kind::Single: *static_cast<float*>(ptr_) = value.ToSingle(); break;
    case Kind::Double: *static_cast<double*>(ptr_) = value.ToDouble(); break;
    case Kind::String: *static_cast<std::string*>(ptr_) = value.ToString(); break;
  }
}

}  // namespace kestu
