#pragma once
// A control made for testing the host: every lifecycle procedure and
// periodic check it receives is raised as a `Called` event, and its input
// procedures raise the usual events with by-reference arguments, so a
// script's trace shows exactly what the host called and in what order.
// Its methods exercise the host's services (caret, capture, popup menu,
// clipboard, beep, system text, focus, window rectangles).

#include <cstdint>
#include <string>
#include <utility>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

class ProbeControl : public UserControl {
 public:
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  Event<std::string> Called;  // Procedure
  Event<int16_t&, int16_t&> KeyDown;
  Event<int16_t&> KeyPress;
  Event<int16_t&, int16_t&> KeyUp;
  Event<int16_t&, int16_t&, float&, float&> MouseDown;
  Event<int16_t&, int16_t&, float&, float&> MouseMove;
  Event<int16_t&, int16_t&, float&, float&> MouseUp;
  Event<> Click;
  Event<> DblClick;
  Event<int32_t&> Colored;  // Color, an OLE_COLOR
  Event<int16_t> Menu;      // Index, -1 when dismissed

  ProbeControl();

  void UserControl_Initialize() override { Report("Initialize"); }
  void UserControl_InitProperties() override { Report("InitProperties"); }
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_WriteProperties(PropertyBag& bag) override;
  void UserControl_Resize() override;
  void UserControl_Show() override { Report("Show"); }
  void UserControl_Paint() override { Report("Paint"); }
  void UserControl_Terminate() override { Report("Terminate"); }
  void UserControl_AmbientChanged(const std::string& name) override {
    Report("AmbientChanged " + name);
  }
  void UserControl_AccessKeyPress(int16_t& key_ascii) override {
    Report(std::string("AccessKeyPress ").append(std::to_string(key_ascii)));
  }
  void UserControl_GotFocus() override { Report("GotFocus"); }
  void UserControl_LostFocus() override { Report("LostFocus"); }
  void UserControl_KeyDown(int16_t& code, int16_t& shift) override {
    (void)RaiseEvent(KeyDown, code, shift);
  }
  void UserControl_KeyPress(int16_t& key_ascii) override {
    if (RaiseEvent(KeyPress, key_ascii)) last_key_ = key_ascii;
  }
  void UserControl_KeyUp(int16_t& code, int16_t& shift) override {
    (void)RaiseEvent(KeyUp, code, shift);
  }
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override {
    (void)RaiseEvent(MouseDown, button, shift, x, y);
  }
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override {
    if (RaiseEvent(MouseMove, button, shift, x, y) && !hover_tip_.empty()) ShowTip(hover_tip_);
  }
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override {
    (void)RaiseEvent(MouseUp, button, shift, x, y);
  }
  void UserControl_Click() override { (void)RaiseEvent(Click); }
  void UserControl_DblClick() override { (void)RaiseEvent(DblClick); }
  bool CanGetFocus() const override { return true; }
  std::string AccessKeys() const override { return "p"; }
  void PeriodicCheck() override { Report("PeriodicCheck"); }

  // ---- Properties ----
  std::string Caption() const { return caption_; }
  void SetCaption(std::string caption) { Changed(caption_, std::move(caption), "Caption"); }
  int16_t Number() const { return number_; }
  void SetNumber(int16_t number) { Changed(number_, number, "Number"); }
  OLE_COLOR Color() const { return color_; }
  void SetColor(OLE_COLOR color) { Changed(color_, color, "Color"); }
  double Ratio() const { return ratio_; }
  void SetRatio(double ratio) { ratio_ = ratio; }
  // Any value, kept as given.
  Variant Data() const { return data_; }
  void SetData(Variant data) { data_ = std::move(data); }
  // The smallest width the probe lets itself have: it widens itself in
  // its own Resize.
  int32_t MinWidth() const { return min_width_; }
  void SetMinWidth(int32_t twips) { min_width_ = twips; }
  // The KeyAscii the last KeyPress used, after the container's handlers.
  int16_t LastKey() const { return last_key_; }
  int32_t Window() const { return hWnd(); }
  // The ambient DisplayAsDefault its site offers now.
  bool AmbientDefault() const { return AmbientDisplayAsDefault(); }
  // A tip the probe shows at every pointer move over it (empty: none).
  std::string HoverTip() const { return hover_tip_; }
  void SetHoverTip(std::string text) { hover_tip_ = std::move(text); }

  // ---- Methods ----
  void ShowCaret();
  void HideCaret() { KestuControlsAPI::HideCaret(hWnd()); }
  void Capture() { KestuControlsAPI::SetCapture(hWnd()); }
  void Release() { KestuControlsAPI::ReleaseCapture(); }
  void Popup();
  void CopyText() { ClipboardSetText(ClipboardGetText() + "!"); }
  void Ring() { Beep(); }
  void DrawCaption();
  void FocusSelf() { KestuControlsAPI::SetFocus(hWnd()); }
  void Disable() { KestuControlsAPI::EnableWindow(hWnd(), 0); }
  // "L,T,R,B x,y": the window's rectangle and the cursor, in screen pixels.
  std::string Where();
  bool FormIsActive() { return KestuControlsAPI::GetActiveWindow() == Container().FormHwnd(); }
  bool HasFocus() { return KestuControlsAPI::GetFocus() == hWnd(); }
  void RaiseColored();
  // The host's tooltip, through the site as every control reaches it.
  void Tip(std::string_view text) { ShowTip(text); }
  void Untip() { HideTip(); }
  void AllowTips(bool allowed) { SetTipsAllowed(allowed); }

 private:
  void Report(std::string procedure) { (void)RaiseEvent(Called, procedure); }
  template <typename T>
  void Changed(T& field, T value, const char* name) {
    field = std::move(value);
    PropertyChanged(name);
  }

  std::string caption_;
  int16_t number_ = 0;
  OLE_COLOR color_ = 0x8000000F;
  int32_t min_width_ = 0;
  double ratio_ = 0;
  Variant data_;
  int16_t last_key_ = 0;
  std::string hover_tip_;
};

}  // namespace kestu
