#pragma once
// A design-time property page: a small form of standard child controls
// (labels, text boxes, check boxes, option buttons, frames, lists) that
// shows settings of the controls selected in a designer and writes them
// back when the designer applies the page. A page reaches the selected
// controls only late-bound, through their properties by name, so one page
// serves every class that has those properties.
//
// The host places the page (on a form of its own, or on a tab of a
// property dialog) and implements `PageSite`; the page builds its children
// in its constructor and hears their events through `ChildEvent`.
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

class UserControl;

// What the host gives a page.
class PageSite {
 public:
  virtual ~PageSite() = default;
  // A new child control of class `class_name`, named `name`, at `left`,
  // `top` in twips from the page's corner (or from `container`'s), shown.
  virtual UserControl& AddChild(std::string_view class_name, const std::string& name, int left,
                                int top, int width, int height, UserControl* container) = 0;
  // The controls the page was opened on, in the designer's order.
  virtual int SelectedCount() const = 0;
  // Error 381 for an index outside 0 .. count - 1, 424 for a control that
  // has gone since.
  virtual UserControl& SelectedControl(int index) const = 0;
  // The page's dirty flag changed: a dialog enables its Apply button.
  virtual void ChangedChanged(bool /*changed*/) {}
};

class PropertyPage {
 public:
  // A check box of the page and the Boolean property it shows.
  struct FlagBox {
    UserControl* box;
    const char* property;
  };
  struct FlagSpec {
    const char* name;
    const char* caption;
    const char* property;
  };

  virtual ~PropertyPage() = default;
  PropertyPage(const PropertyPage&) = delete;
  PropertyPage& operator=(const PropertyPage&) = delete;

  // The dirty flag: something on the page differs from the selection.
  bool Changed() const { return changed_; }
  void SetChanged(bool changed);

  // Fills the children from the selection (opened, or the selection changed).
  virtual void PropertyPage_SelectionChanged() = 0;
  // Writes the children back to the selection.
  virtual void PropertyPage_ApplyChanges() = 0;
  // A child raised `event` (its Click, its Change): the page's
  // `chkFlat_Click`, `optSize_Click(Index)`.
  virtual void ChildEvent(UserControl& /*child*/, const EventInfo& /*event*/) {}

 protected:
  explicit PropertyPage(PageSite& site) : site_(site) {}

  // A child control; a member of a control array is named "optSize(1)".
  UserControl& Add(std::string_view class_name, const std::string& name, int left, int top,
                   int width, int height, UserControl* container = nullptr);
  UserControl& Add(std::string_view class_name, const std::string& name, int index, int left,
                   int top, int width, int height, UserControl* container = nullptr);

  // A column of check boxes, one a spec, `row_height` twips apart.
  std::vector<FlagBox> AddFlags(std::span<const FlagSpec> specs, int left, int top, int width,
                                int row_height);
  // A drop-down list holding `items`, in order.
  UserControl& AddList(const std::string& name, std::span<const char* const> items, int left,
                       int top, int width, int height);
  // A check box's Value as the page reads and writes it: 1 checked, 0 not.
  static bool IsChecked(UserControl& box);
  static void SetChecked(UserControl& box, bool checked);
  // Each box checked when its property of `control` is True.
  static void ShowFlags(std::span<const FlagBox> flags, UserControl& control);

  // Assigns `value` to `property` of `control` unless the control already
  // holds it, so that applying what the author did not touch changes
  // nothing (assigning a mask again re-merges its literals, a style pads
  // again). With `tolerant`, a value the control refuses is left out and
  // the control keeps its last good one: a preview must not stop the page.
  // True when the value was assigned.
  static bool Assign(UserControl& control, std::string_view property, const Variant& value,
                     bool tolerant = false);
  // The same, even when the control already holds the value.
  static bool Put(UserControl& control, std::string_view property, const Variant& value,
                  bool tolerant = false);

  // A list whose choice the page keeps: a control holding a value the list
  // does not name shows no item and keeps its value until the author picks
  // one.
  struct ListChoice {
    UserControl* list = nullptr;
    int16_t chosen = 0;
    // Shows `value` (an item's index) in the list, or no item.
    void Show(int16_t value);
    // After `child` was edited: takes the list's item when it is the list.
    void Take(const UserControl& child);
  };

  // `SelectedControls`: their count and each one by index.
  int SelectedCount() const { return site_.SelectedCount(); }
  UserControl& SelectedControls(int index) const { return site_.SelectedControl(index); }

 private:
  PageSite& site_;
  bool changed_ = false;
};

// A page class: how the host finds, sizes and makes it.
struct PageInfo {
  std::string name;     // "ppgButtons"
  std::string caption;  // the title on its tab, "General"
  int width = 6000;     // twips
  int height = 4000;
  std::function<std::unique_ptr<PropertyPage>(PageSite&)> create;
};

// Every page class registers itself here (see KESTU_REGISTER_PAGE).
class PageRegistry {
 public:
  static PageRegistry& Instance();
  void Register(const PageInfo& info);
  // By name, ignoring case; null when none.
  const PageInfo* Find(std::string_view name) const;
  const std::vector<const PageInfo*>& Pages() const { return pages_; }

 private:
  std::vector<const PageInfo*> pages_;
};

// Registers a page class at load time; the class must have a static
// `const PageInfo& Info()`.
#define KESTU_REGISTER_PAGE(Class)                             \
  namespace {                                                  \
  [[maybe_unused]] const bool kestu_page_##Class = [] {        \
    ::kestu::PageRegistry::Instance().Register(Class::Info()); \
    return true;                                               \
  }();                                                         \
  }

}  // namespace kestu
