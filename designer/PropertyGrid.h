#pragma once
// The designer's property grid: one row per property, its name on the
// left and its value on the right, the chosen row highlighted. A press on
// a row, or Up, Down, Page Up, Page Down, Home and End, choose a row; the
// rows scroll to keep the chosen one in sight. The grid only shows: the
// designer fills it and hears which row was chosen.

#include <functional>
#include <string>
#include <vector>

#include "kestu/stdcontrols/StdControl.h"

namespace kestu {

class PropertyGrid : public StdControl {
 public:
  static constexpr int kRowHeight = 16;  // pixels

  struct Row {
    std::string name;
    std::string value;
  };

  // Not registered: the toolbox and the form files never offer it.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // New rows keep the chosen row when it is still there by name, else
  // the first.
  void SetRows(std::vector<Row> rows);
  const std::vector<Row>& Rows() const { return rows_; }
  int Chosen() const { return chosen_; }
  // Chooses row `index` (clamped), scrolls it into sight and tells the
  // designer.
  void Choose(int index);
  void SetOnChosen(std::function<void(int)> on_chosen) { on_chosen_ = std::move(on_chosen); }
  int TopRow() const { return top_; }

  bool CanGetFocus() const override { return true; }
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;

 protected:
  void Draw() override;

 private:
  int VisibleRows() const;
  void ScrollToChosen();

  std::vector<Row> rows_;
  int chosen_ = -1;
  int top_ = 0;
  std::function<void(int)> on_chosen_;
};

}  // namespace kestu
