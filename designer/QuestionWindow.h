#pragma once
// A question the designer asks in a small window of its own: a line of
// text, a box to type an answer in when one is wanted, and a button per
// answer, the first the default (Enter) and the last the cancel (Escape).

#include <optional>
#include <string>
#include <vector>

namespace kestu {

class Form;
class Host;
class HostedControl;

class QuestionWindow {
 public:
  static constexpr const char* kFormName = "DesignerAsk";

  // `typed` is the box's first text; without one there is no box.
  QuestionWindow(Host& host, const std::string& question, const std::vector<std::string>& buttons,
                 const std::optional<std::string>& typed);
  // Closes the window when it is still open.
  ~QuestionWindow();
  QuestionWindow(const QuestionWindow&) = delete;
  QuestionWindow& operator=(const QuestionWindow&) = delete;

  bool Holds(const HostedControl& control) const;
  // A click of one of its controls: a button's is the answer.
  void Clicked(const HostedControl& control);
  // The caption of the button pressed; Cancel when the window was closed.
  std::optional<std::string> Answer() const;
  std::string Typed() const;

 private:
  Host& host_;
  Form* form_ = nullptr;
  HostedControl* box_ = nullptr;
  std::vector<HostedControl*> buttons_;
  std::optional<std::string> answer_;
};

}  // namespace kestu
