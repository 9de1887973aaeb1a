#pragma once
// A property page with a live preview: a control of the selected kind on
// the page itself that takes the page's settings on every edit, before
// anything is applied. The page says how it fills itself from a control
// and writes its settings to one; opening, applying and the edits are
// this class's, the same for every such page.
#include "kestu/foundation/PropertyPage.h"

namespace kestu {

class PreviewPage : public PropertyPage {
 public:
  // Fills the page from the first selected control, then the preview once.
  void PropertyPage_SelectionChanged() final;
  // Writes the settings to the first selected control only, whatever else
  // is selected.
  void PropertyPage_ApplyChanges() final;
  // Any Change or Click of a child but the preview marks the page changed
  // and updates the preview; the preview's own events (the author may type
  // in it) change nothing.
  void ChildEvent(UserControl& child, const EventInfo& event) final;

 protected:
  using PropertyPage::PropertyPage;

  // The preview control, once the page has placed it.
  void SetPreview(UserControl& preview) { preview_ = &preview; }
  UserControl& Preview() const { return *preview_; }

  // The page's children from `control`'s properties.
  virtual void Fill(UserControl& control) = 0;
  // The page's settings to `control`, in the page's apply order. With
  // `tolerant`, a value the control refuses is left out (see Assign).
  virtual void WriteSettings(UserControl& control, bool tolerant) = 0;
  // The preview after WriteSettings: what it shows of the settings.
  virtual void ShowSample() {}
  // A child was edited, before the page is marked changed (a list keeps
  // its choice here).
  virtual void Edited(UserControl& /*child*/) {}

 private:
  void UpdatePreview();

  UserControl* preview_ = nullptr;
  // Filling the page from the selection updates the preview once, at the
  // end, rather than once per child.
  bool filling_ = false;
};

}  // namespace kestu
