#include "designer/QuestionWindow.h"

#include "designer/PixelLayout.h"

#include "kestu/foundation/ClassInfo.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

constexpr int kWidth = 360;
constexpr int kButtonWidth = 75;
constexpr int kButtonHeight = 23;

}  // namespace

QuestionWindow::QuestionWindow(Host& host, const std::string& question,
                               const std::vector<std::string>& buttons,
                               const std::optional<std::string>& typed)
    : host_(host) {
  const int tx = host_.TwipsPerPixelX();
  const int ty = host_.TwipsPerPixelY();
  const int height = typed ? 110 : 84;
  form_ = &host_.CreateForm(kFormName, kWidth * tx, height * ty);
  form_->SetCaption("Kestu Designer");
  const Host::UserModeScope run(host_, true);
  const auto add = [&](const char* class_name, const std::string& name, int left, int top,
                       int width, int h) -> HostedControl& {
    return PlaceInPixels(host_, *form_, class_name, name, left, top, width, h);
  };
  add("Label", "lblQuestion", 12, 12, kWidth - 24, 18).Control().SetProperty("Caption", question);
  if (typed) {
    box_ = &add("TextBox", "txtAnswer", 12, 36, kWidth - 24, 21);
    box_->Control().SetProperty("Text", *typed);
  }
  int left = kWidth - 6 - static_cast<int>(buttons.size()) * (kButtonWidth + 6);
  for (const std::string& caption : buttons) {
    HostedControl& button =
        add("CommandButton", "cmd" + caption, left, height - 35, kButtonWidth, kButtonHeight);
    button.Control().SetProperty("Caption", caption);
    buttons_.push_back(&button);
    left += kButtonWidth + 6;
  }
  buttons_.front()->SetExtender("Default", Variant::Boolean(true));
  buttons_.back()->SetExtender("Cancel", Variant::Boolean(true));
  host_.SetFocus(box_ ? box_ : buttons_.front());
  if (box_) box_->Control().Class().FindMethod("SelectAll")->invoke(box_->Control(), {});
}

QuestionWindow::~QuestionWindow() {
  if (host_.Holds(*form_)) host_.CloseForm(*form_);
}

bool QuestionWindow::Holds(const HostedControl& control) const {
  return host_.Holds(*form_) && &control.Owner() == form_;
}

void QuestionWindow::Clicked(const HostedControl& control) {
  for (const HostedControl* button : buttons_) {
    if (button == &control) answer_ = button->Control().GetProperty("Caption").ToString();
  }
}

std::optional<std::string> QuestionWindow::Answer() const {
  if (!answer_ && !host_.Holds(*form_)) return "Cancel";
  return answer_;
}

std::string QuestionWindow::Typed() const {
  if (!box_ || !host_.Holds(*form_)) return {};
  return box_->Control().GetProperty("Text").ToString();
}

}  // namespace kestu
