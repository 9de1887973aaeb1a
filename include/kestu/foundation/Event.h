#pragma once
// Events a control raises to its container: typed, many subscribers, with
// by-reference arguments that stay by reference. Each event is described
// once, statically (name, arguments, help), and that description is what
// the generic observer and the class metadata see.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kestu/foundation/Variant.h"

namespace kestu {

struct ParamInfo {
  std::string name;
  std::string type_name;  // as the interface shows it: "Integer", "Single", "String", ...
  VarType type = VarType::Empty;
  bool by_ref = false;
};

struct EventInfo {
  std::string name;
  std::vector<ParamInfo> params;
  std::string help;
};

// A reference to one argument of an event being raised: the generic
// observer reads it as a Variant and, for a by-reference argument, may
// assign it (converted to the argument's type: error 6 when it does not
// fit).
class ArgRef {
 public:
  ArgRef(int16_t& v) : kind_(Kind::Integer), ptr_(&v) {}     // NOLINT
  ArgRef(int32_t& v) : kind_(Kind::Long), ptr_(&v) {}        // NOLINT
  ArgRef(float& v) : kind_(Kind::Single), ptr_(&v) {}        // NOLINT
  ArgRef(double& v) : kind_(Kind::Double), ptr_(&v) {}       // NOLINT
  ArgRef(std::string& v) : kind_(Kind::String), ptr_(&v) {}  // NOLINT

  Variant Get() const;
  void Set(const Variant& value) const;

 private:
  enum class Kind { Integer, Long, Single, Double, String };
  Kind kind_;
  void* ptr_;
};

struct EventArgument {
  const ParamInfo* param;
  ArgRef ref;
};

// Handle of one subscription; disconnecting twice is harmless.
class Connection {
 public:
  Connection() = default;
  explicit Connection(std::weak_ptr<bool> alive) : alive_(std::move(alive)) {}
  void Disconnect() {
    if (auto p = alive_.lock()) *p = false;
  }

 private:
  std::weak_ptr<bool> alive_;
};

// A typed event. Args are what C++ handlers receive: `int16_t&` for a
// by-reference argument, a plain type for one passed by value.
template <typename... Args>
class Event {
 public:
  using Handler = std::function<void(Args...)>;

  explicit Event(const EventInfo& info) : info_(&info) {}
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  const EventInfo& Info() const { return *info_; }

  Connection Connect(Handler handler) {
    auto entry = std::make_shared<Entry>();
    entry->handler = std::move(handler);
    entry->connected = std::make_shared<bool>(true);
    entries_.push_back(entry);
    return Connection(entry->connected);
  }

  // Calls every connected handler in the order they connected. A handler
  // may connect or disconnect others, or destroy the object that owns this
  // event: `owner_alive` turns false and no further handler runs.
  // Every handler sees the arguments as raised: by-value ones are copied
  // to each, never moved out by the first.
  void Emit(const std::weak_ptr<void>& owner_alive, Args... args) {
    // Handlers connected from here on wait for the next raise. Entries are
    // only appended while handlers run (disconnected ones are swept once
    // the outermost raise is over), so the positions hold, and each entry
    // is held while its handler runs. No copy of the list: this runs for
    // every block a copier copies.
    const size_t count = entries_.size();
    ++emitting_;
    for (size_t i = 0; i < count; ++i) {
      if (owner_alive.expired()) return;
      const std::shared_ptr<Entry> entry = entries_[i];
      if (*entry->connected) entry->handler(args...);
    }
    if (owner_alive.expired()) return;
    if (--emitting_ == 0) std::erase_if(entries_, [](const auto& e) { return !*e->connected; });
  }

 private:
  struct Entry {
    Handler handler;
    std::shared_ptr<bool> connected;
  };
  const EventInfo* info_;
  std::vector<std::shared_ptr<Entry>> entries_;
  int emitting_ = 0;  // raises under way, nested ones included
};

// The arguments of the host's standard input events, the same for every
// control that raises them: all by reference, so a handler may change them
// before the control acts.
inline std::vector<ParamInfo> KeyEventParams() {  // KeyDown, KeyUp
  return {{"KeyCode", "Integer", VarType::Integer, true},
          {"Shift", "Integer", VarType::Integer, true}};
}
inline std::vector<ParamInfo> KeyPressEventParams() {
  return {{"KeyAscii", "Integer", VarType::Integer, true}};
}
inline std::vector<ParamInfo> MouseEventParams() {  // MouseDown, MouseMove, MouseUp
  return {{"Button", "Integer", VarType::Integer, true},
          {"Shift", "Integer", VarType::Integer, true},
          {"x", "Single", VarType::Single, true},
          {"y", "Single", VarType::Single, true}};
}

}  // namespace kestu
