#pragma once
// A row of tabs over a raised body: the tabs are the items of a list, the
// selected one stands in front, merged with the body. A press on a tab, or
// Left, Right, Home and End while it has the focus, selects; Click follows
// every change of ListIndex, by the user or by the program. The controls a
// tab shows are placed over the body by whoever owns the strip (a property
// dialog), which shows and hides them on Click.
#include <cstdint>

#include "kestu/stdcontrols/ComboBox.h"

namespace kestu {

class TabStrip : public ComboBox {
 public:
  TabStrip();
  // The class's metadata: the list's properties, methods and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // The height of the row of tabs, in pixels: the body starts below it.
  static constexpr int kTabHeight = 20;

  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;

 protected:
  void Draw() override;

 private:
  // Each tab's left edge and width in pixels, from the first.
  struct TabPlace {
    int left;
    int width;
  };
  // Measured in the drawing's pixels.
  std::vector<TabPlace> TabPlaces();
  void DrawTab(const TabPlace& place, const std::string& caption, bool selected);

  std::vector<TabPlace> places_;  // as last drawn: where a press lands
};

}  // namespace kestu
