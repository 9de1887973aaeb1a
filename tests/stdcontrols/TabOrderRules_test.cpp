// The rules that walk the site's list of the form's controls
// (ControlSite::FormControls): an option group is the option buttons of one
// container, selecting one clears the rest of its group and no other, and
// the arrow keys select through the group in tab order, past the ones that
// cannot take the focus; a label's access key focuses the next control
// that can take it, a frame's the first inside it. The sites here stand in
// for a form, and a window system records where the focus is sent.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "kestu/foundation/Keys.h"
#include "kestu/raster/Raster.h"
#include "kestu/stdcontrols/Frame.h"
#include "kestu/stdcontrols/Label.h"
#include "kestu/stdcontrols/OptionButton.h"

namespace kestu {
namespace {

class FakeForm;

// One control's place on the fake form.
class FakeSite : public ControlSite {
 public:
  FakeSite(FakeForm& form, UserControl* container) : container_(container), form_(form) {}

  Surface& GetSurface() override { return surface_; }
  int ScreenTwipsPerPixelX() const override { return 15; }
  int ScreenTwipsPerPixelY() const override { return 15; }
  bool AmbientUserMode() const override { return true; }
  FontRef AmbientFont() const override { return nullptr; }
  std::string AmbientDisplayName() const override { return "option"; }
  bool AmbientDisplayAsDefault() const override { return false; }
  Variant GetExtender(std::string_view) const override { return {}; }
  void SetExtender(std::string_view, const Variant&) override {}
  int WidthTwips() const override { return 1500; }
  int HeightTwips() const override { return 255; }
  void RequestSize(int, int) override {}
  void PropertyChanged(std::string_view) override {}
  void OnEvent(UserControl&, const EventInfo&, std::span<EventArgument>) override {}
  void Refresh() override {}
  std::optional<int> PopupMenu(std::span<const MenuItem>) override { return std::nullopt; }
  void DoEvents() override {}
  void Beep() override {}
  std::string ClipboardGetText() override { return {}; }
  void ClipboardSetText(std::string_view) override {}
  int32_t hWnd() const override { return hwnd_; }
  int32_t hDC() const override { return 0; }
  int32_t FormHwnd() const override { return 0; }
  UserControl* FormActiveControl() const override { return nullptr; }
  std::vector<FormMember> FormControls() const override;

  UserControl* container_;
  bool can_take_focus_ = true;
  int32_t hwnd_ = 0;

 private:
  FakeForm& form_;
  Raster surface_{100, 17};
};

// Controls in tab order, each with its site; each option counts its Clicks.
class FakeForm {
 public:
  template <typename T>
  T& Add(UserControl* container = nullptr) {
    auto& entry = entries_.emplace_back();
    entry.control = std::make_unique<T>();
    entry.site = std::make_unique<FakeSite>(*this, container);
    entry.site->hwnd_ = static_cast<int32_t>(entries_.size());
    entry.control->AttachSite(entry.site.get());
    entry.control->UserControl_Initialize();
    entry.control->UserControl_InitProperties();
    if (auto* option = dynamic_cast<OptionButton*>(entry.control.get())) {
      option->Click.Connect([this, option] { clicks_.push_back(option); });
    }
    return static_cast<T&>(*entry.control);
  }

  FakeSite& SiteOf(UserControl& control) { return static_cast<FakeSite&>(*control.Site()); }

  std::vector<FormMember> Members() const {
    std::vector<FormMember> members;
    for (const auto& entry : entries_) {
      // As the host's Tab asks: the control's own will and the site's leave.
      const bool can_take_focus = entry.control->CanGetFocus() && entry.site->can_take_focus_;
      members.push_back({entry.control.get(), entry.site->container_, can_take_focus});
    }
    return members;
  }

  std::vector<OptionButton*> clicks_;

 private:
  struct Entry {
    std::unique_ptr<UserControl> control;
    std::unique_ptr<FakeSite> site;
  };
  std::vector<Entry> entries_;
};

std::vector<FormMember> FakeSite::FormControls() const {
  return form_.Members();
}

// Only the focus matters here: every other operation does nothing.
class FocusRecorder : public WindowSystem {
 public:
  FocusRecorder() : previous_(InstallWindowSystem(this)) {}
  ~FocusRecorder() override { InstallWindowSystem(previous_); }
  FocusRecorder(const FocusRecorder&) = delete;
  FocusRecorder& operator=(const FocusRecorder&) = delete;

  int32_t SetFocus(int32_t hwnd) override {
    focused_ = hwnd;
    return 0;
  }
  int32_t GetFocus() override { return focused_; }
  int32_t CreateCaret(int32_t, int32_t, int32_t, int32_t) override { return 0; }
  int32_t SetCaretPos(int32_t, int32_t) override { return 0; }
  int32_t ShowCaret(int32_t) override { return 0; }
  int32_t HideCaret(int32_t) override { return 0; }
  int32_t DestroyCaret() override { return 0; }
  int32_t SetCapture(int32_t) override { return 0; }
  int32_t ReleaseCapture() override { return 0; }
  int32_t GetCursorPos(POINTAPI&) override { return 0; }
  int32_t GetWindowRect(int32_t, RECT&) override { return 0; }
  int32_t DrawTextA(int32_t, std::string_view, int32_t, RECT&, int32_t) override { return 0; }
  int32_t DrawFocusRect(int32_t, const RECT&) override { return 0; }
  int32_t EnableWindow(int32_t, int32_t) override { return 0; }
  int32_t GetActiveWindow() override { return 0; }
  int32_t ShowWindow(int32_t, int32_t) override { return 0; }
  int32_t MoveWindow(int32_t, int32_t, int32_t, int32_t, int32_t, int32_t) override { return 0; }

  int32_t focused_ = -1;

 private:
  WindowSystem* previous_;
};

bool IsSelected(OptionButton& option) {
  return option.GetProperty("Value").ToBool();
}

void Select(OptionButton& option) {
  option.SetProperty("Value", Variant::Boolean(true));
}

// Two frames and the form itself are three groups.
TEST(OptionGroup, SelectingClearsOnlyTheSameContainer) {
  FakeForm form;
  OptionButton& on_form = form.Add<OptionButton>();
  Frame& left = form.Add<Frame>();
  OptionButton& a1 = form.Add<OptionButton>(&left);
  OptionButton& a2 = form.Add<OptionButton>(&left);
  Frame& right = form.Add<Frame>();
  OptionButton& b1 = form.Add<OptionButton>(&right);
  OptionButton& b2 = form.Add<OptionButton>(&right);

  Select(on_form);
  Select(a1);
  Select(b1);
  Select(a2);
  EXPECT_TRUE(IsSelected(on_form));
  EXPECT_FALSE(IsSelected(a1));
  EXPECT_TRUE(IsSelected(a2));
  EXPECT_TRUE(IsSelected(b1));
  EXPECT_FALSE(IsSelected(b2));
  // Click for each newly selected one only; the cleared ones hear nothing.
  EXPECT_EQ(form.clicks_, (std::vector<OptionButton*>{&on_form, &a1, &b1, &a2}));

  Select(a2);
  int16_t space = key::kSpace, no_shift = 0;
  a2.UserControl_KeyDown(space, no_shift);
  a2.UserControl_KeyUp(space, no_shift);
  EXPECT_EQ(form.clicks_.size(), 4u) << "selecting the selected one raises nothing";
}

// Down and Right go forward, Up and Left back, round the group, past an
// option that cannot take the focus and never into another container.
TEST(OptionGroup, ArrowKeysSelectThroughTheGroup) {
  FakeForm form;
  Frame& frame = form.Add<Frame>();
  OptionButton& first = form.Add<OptionButton>(&frame);
  OptionButton& skipped = form.Add<OptionButton>(&frame);
  OptionButton& last = form.Add<OptionButton>(&frame);
  OptionButton& outside = form.Add<OptionButton>();
  form.SiteOf(skipped).can_take_focus_ = false;

  struct Step {
    OptionButton* from;
    int16_t key;
    OptionButton* selected;
  };
  const std::vector<Step> steps = {{&first, key::kDown, &last},
                                   {&last, key::kRight, &first},
                                   {&first, key::kUp, &last},
                                   {&last, key::kLeft, &first}};
  for (const Step& step : steps) {
    int16_t key_code = step.key, no_shift = 0;
    step.from->UserControl_KeyDown(key_code, no_shift);
    EXPECT_TRUE(IsSelected(*step.selected)) << "key " << step.key;
    EXPECT_EQ(IsSelected(first) + IsSelected(skipped) + IsSelected(last), 1) << "key " << step.key;
  }
  EXPECT_FALSE(IsSelected(outside));
}

// The label hands its access key to the next control in tab order that
// can take the focus, round the end of the list; the frame to the first
// one inside it, at any depth; with none, the focus stays.
TEST(AccessKeyPassing, LabelAndFrameFocusWhatComesAfter) {
  FocusRecorder windows;
  FakeForm form;
  OptionButton& before = form.Add<OptionButton>();
  Label& label = form.Add<Label>();
  OptionButton& unfocusable = form.Add<OptionButton>();
  Frame& outer = form.Add<Frame>();
  Frame& inner = form.Add<Frame>(&outer);
  OptionButton& deep = form.Add<OptionButton>(&inner);
  Label& last = form.Add<Label>();
  Frame& empty = form.Add<Frame>();
  form.SiteOf(unfocusable).can_take_focus_ = false;

  int16_t key_ascii = 'x';
  label.UserControl_AccessKeyPress(key_ascii);
  EXPECT_EQ(windows.focused_, deep.hWnd());
  last.UserControl_AccessKeyPress(key_ascii);
  EXPECT_EQ(windows.focused_, before.hWnd());
  windows.focused_ = -1;
  outer.UserControl_AccessKeyPress(key_ascii);
  EXPECT_EQ(windows.focused_, deep.hWnd());
  windows.focused_ = -1;
  empty.UserControl_AccessKeyPress(key_ascii);
  EXPECT_EQ(windows.focused_, -1);
}

}  // namespace
}  // namespace kestu
