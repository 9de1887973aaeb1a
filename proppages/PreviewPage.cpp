#include "kestu/proppages/PreviewPage.h"

namespace kestu {

void PreviewPage::PropertyPage_SelectionChanged() {
  filling_ = true;
  try {
    Fill(SelectedControls(0));
  } catch (...) {
    filling_ = false;
    throw;
  }
  filling_ = false;
  UpdatePreview();
}

void PreviewPage::PropertyPage_ApplyChanges() {
  WriteSettings(SelectedControls(0), false);
}

void PreviewPage::ChildEvent(UserControl& child, const EventInfo& event) {
  if (&child == preview_) return;
  if (event.name != "Change" && event.name != "Click") return;
  Edited(child);
  SetChanged(true);
  if (!filling_) UpdatePreview();
}

// A setting the preview refuses must not stop the page: WriteSettings
// leaves it out, the preview keeps its last good value, and the error
// comes on Apply.
void PreviewPage::UpdatePreview() {
  if (!preview_) return;
  WriteSettings(*preview_, true);
  ShowSample();
}

}  // namespace kestu
