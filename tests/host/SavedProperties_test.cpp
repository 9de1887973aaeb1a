// Every registered control class keeps its declared properties through a
// save and a load: what it writes it reads back, a missing key reads as
// the declared default, and a bad value changes nothing.

#include <gtest/gtest.h>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/PropertyBag.h"
#include "kestu/host/Host.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

class SavedProperties : public ::testing::TestWithParam<const ClassInfo*> {
 protected:
  const ClassInfo& Class() const { return *GetParam(); }
  HostedControl& New() { return host_.NewControl(form_, Class(), Name()); }
  HostedControl& Load(PropertyBag bag) {
    return host_.LoadControl(form_, Class(), Name(), std::move(bag));
  }
  PropertyBag Save(HostedControl& control) { return host_.SaveControl(control); }

  // The keys a control reads back, with their declarations.
  std::vector<const PersistInfo*> ReadKeys() const {
    std::vector<const PersistInfo*> keys;
    for (const auto* list : {&Class().properties, &Class().bag_only}) {
      for (const PropertyInfo& p : *list) {
        if (p.persist && p.persist->store) keys.push_back(&*p.persist);
      }
    }
    return keys;
  }

  Host host_;
  Form& form_ = host_.CreateForm("Form1", 9000, 6000);

 private:
  std::string Name() { return std::string("c").append(std::to_string(++count_)); }
  int count_ = 0;
};

// Each value a new control saves, changed to another of its kind. Text is
// left alone and not compared: a control may normalise it to the other
// values (a number box pads its decimals).
Variant Changed(const Variant& value) {
  switch (value.Type()) {
    case VarType::Boolean:
      return Variant::Boolean(!value.ToBool());
    case VarType::Integer:
      return Variant(static_cast<int16_t>(value.ToInteger() + 1));
    case VarType::Long:
      return Variant(value.ToLong() ^ 0x010203);
    default:
      return value;
  }
}

PropertyBag Changed(const PropertyBag& bag) {
  PropertyBag changed;
  for (const auto& [key, value] : bag.Entries()) changed.WriteProperty(key, Changed(value));
  return changed;
}

TEST_P(SavedProperties, LoadBackToTheSameBag) {
  const PropertyBag saved = Save(New());
  EXPECT_EQ(Save(Load(saved)), saved);
  const PropertyBag changed = Changed(saved);
  const PropertyBag loaded = Save(Load(changed));
  for (const PersistInfo* key : ReadKeys()) {
    const Variant value = changed.ReadProperty(key->key);
    if (value.Type() != VarType::String) {
      EXPECT_EQ(loaded.ReadProperty(key->key), value) << key->key;
    }
  }
}

TEST_P(SavedProperties, MissingKeyReadsAsItsDefault) {
  const PropertyBag saved = Save(New());
  // What a key reads as when the field's own value is its default: the
  // control as loaded from nothing.
  const PropertyBag blank = Save(Load(PropertyBag()));
  for (const PersistInfo* key : ReadKeys()) {
    PropertyBag without;
    for (const auto& [name, value] : saved.Entries()) {
      if (name != key->key) without.WriteProperty(name, value);
    }
    const Variant expected = key->read_default ? *key->read_default : blank.ReadProperty(key->key);
    EXPECT_EQ(Save(Load(without)).ReadProperty(key->key), expected) << key->key;
  }
}

TEST_P(SavedProperties, BadValueChangesNothing) {
  HostedControl& control = New();
  const PropertyBag saved = Save(control);
  for (const PersistInfo* key : ReadKeys()) {
    PropertyBag bad = Changed(saved);
    // Text will not take Null; nothing else takes text that is no number.
    const bool text = saved.ReadProperty(key->key).Type() == VarType::String;
    bad.WriteProperty(key->key, text ? Variant::Null() : Variant("not a value"));
    EXPECT_THROW(control.Control().UserControl_ReadProperties(bad), RuntimeError) << key->key;
    EXPECT_EQ(Save(control), saved) << key->key;
  }
}

std::string ClassName(const ::testing::TestParamInfo<const ClassInfo*>& info) {
  return info.param->name;
}

INSTANTIATE_TEST_SUITE_P(EveryClass, SavedProperties,
                         ::testing::ValuesIn(ControlRegistry::Instance().Classes()), ClassName);

}  // namespace
}  // namespace kestu
