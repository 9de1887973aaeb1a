#include "kestu/host/PropertyDialog.h"

#include <algorithm>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

// Pixels of 15 twips, as the dialog's controls are laid out.
constexpr int kPx = 15;
constexpr int kMargin = 6;
constexpr int kTabHeight = 20;  // the tab strip's row of tabs
constexpr int kBodyInset = 4;
constexpr int kButtonWidth = 75;
constexpr int kButtonHeight = 23;

const ClassInfo& DialogClass(const char* name) {
  return ControlRegistry::Instance().Require(name, "the property dialog");
}

// The pages the first control's class shows, found.
std::vector<const PageInfo*> PagesOf(const ClassInfo& info) {
  std::vector<const PageInfo*> pages;
  for (const std::string& name : info.PropertyPagesShown()) {
    if (const PageInfo* page = PageRegistry::Instance().Find(name)) pages.push_back(page);
  }
  return pages;
}

}  // namespace

PropertyDialog::PropertyDialog(Host& host, const std::vector<HostedControl*>& selected)
    : host_(host) {
  if (selected.empty()) throw RuntimeError(err::kInvalidProcedureCall, "PropertyDialog");
  host_.AddObserver(this);
  try {
    Layout(selected);
  } catch (...) {
    host_.RemoveObserver(this);
    if (form_ && host_.Holds(*form_)) host_.CloseForm(*form_);
    throw;
  }
}

PropertyDialog::~PropertyDialog() {
  host_.RemoveObserver(this);
  pages_.clear();
  if (form_ && host_.Holds(*form_)) host_.CloseForm(*form_);
}

bool PropertyDialog::Done() const {
  return done_ || !host_.Holds(*form_);
}

void PropertyDialog::Layout(const std::vector<HostedControl*>& selected) {
  const std::vector<const PageInfo*> pages = PagesOf(selected.front()->Class());
  int page_width = 0;
  int page_height = 0;
  for (const PageInfo* page : pages) {
    page_width = std::max(page_width, page->width / kPx);
    page_height = std::max(page_height, page->height / kPx);
  }
  const int strip_width = page_width + 2 * kBodyInset;
  const int strip_height = kTabHeight + page_height + 2 * kBodyInset;
  const int buttons_top = kMargin + strip_height + 8;
  const int width = strip_width + 2 * kMargin;
  const int height = buttons_top + kButtonHeight + kMargin;
  form_ = &host_.CreateForm(kFormName, width * kPx, height * kPx);
  form_->SetCaption(selected.front()->Name() + " Properties");

  // The dialog's controls run whatever mode the designer is in.
  const Host::UserModeScope run(host_, true);
  tabs_ = &host_.NewControl(
      *form_, DialogClass("TabStrip"), "tabPages",
      TwipsRect{kMargin * kPx, kMargin * kPx, strip_width * kPx, strip_height * kPx});
  AddButtons(buttons_top, width - kMargin);

  const int page_left = (kMargin + kBodyInset) * kPx;
  const int page_top = (kMargin + kTabHeight + kBodyInset) * kPx;
  for (const PageInfo* page : pages) {
    pages_.push_back(
        std::make_unique<PageHost>(host_, *page, *form_, selected, nullptr, page_left, page_top));
    PageHost& added = *pages_.back();
    added.SetOnChanged([this](bool) { UpdateApply(); });
    Variant tab[] = {page->caption, Variant()};
    tabs_->Control().Class().FindMethod("AddItem")->invoke(tabs_->Control(), tab);
    added.SelectionChanged();
  }
  // The buttons come after the pages' fields in tab order, and the first
  // field starts with the focus, as a dialog's user expects.
  for (HostedControl* button : {ok_, cancel_, apply_}) {
    form_->SetTabIndex(*button, static_cast<int>(form_->Controls().size()));
  }
  ShowTab(0);
  if (!pages_.empty()) {
    for (HostedControl* child : pages_.front()->Children()) {
      if (child->CanTakeFocus() && host_.SetFocus(child)) break;
    }
  }
}

void PropertyDialog::AddButtons(int top, int right) {
  const ClassInfo& button = DialogClass("CommandButton");
  const auto place = [&](const char* name, const char* caption, int from_right) {
    const int left = right - from_right * (kButtonWidth + kMargin) - kButtonWidth;
    HostedControl& added =
        host_.NewControl(*form_, button, name,
                         TwipsRect{left * kPx, top * kPx, kButtonWidth * kPx, kButtonHeight * kPx});
    added.Control().SetProperty("Caption", caption);
    return &added;
  };
  ok_ = place("cmdOK", "OK", 2);
  cancel_ = place("cmdCancel", "Cancel", 1);
  apply_ = place("cmdApply", "&Apply", 0);
  ok_->SetExtender("Default", Variant::Boolean(true));
  cancel_->SetExtender("Cancel", Variant::Boolean(true));
}

void PropertyDialog::ShowTab(int index) {
  if (index < 0 || index >= static_cast<int>(pages_.size())) return;
  current_ = index;
  for (size_t i = 0; i < pages_.size(); ++i) {
    const Variant shown = Variant::Boolean(static_cast<int>(i) == index);
    for (HostedControl* child : pages_[i]->Children()) child->SetExtender("Visible", shown);
  }
  if (tabs_->Control().GetProperty("ListIndex").ToInteger() != index) {
    tabs_->Control().SetProperty("ListIndex", static_cast<int16_t>(index));
  }
  UpdateApply();
}

void PropertyDialog::UpdateApply() {
  if (!apply_ || current_ < 0) return;
  const bool changed = pages_[current_]->Page().Changed();
  apply_->Control().SetProperty("Enabled", Variant::Boolean(changed));
}

bool PropertyDialog::ApplyAll() {
  bool applied = true;
  for (const auto& page : pages_) {
    if (!page->Page().Changed()) continue;
    applied = host_.RunReportingErrors([&] { page->ApplyChanges(); }) && applied;
  }
  return applied;
}

void PropertyDialog::OnEvent(HostedControl& control, const EventInfo& event,
                             std::span<EventArgument> /*arguments*/) {
  if (done_ || event.name != "Click") return;
  if (&control == tabs_) {
    ShowTab(control.Control().GetProperty("ListIndex").ToInteger());
  } else if (&control == apply_) {
    static_cast<void>(ApplyAll());
  } else if (&control == ok_) {
    done_ = ApplyAll();
  } else if (&control == cancel_) {
    done_ = true;
  }
}

}  // namespace kestu
