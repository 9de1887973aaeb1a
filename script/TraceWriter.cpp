#include "kestu/script/TraceWriter.h"

#include <initializer_list>

#include "kestu/host/HostedControl.h"
#include "kestu/host/ToolWindow.h"
#include "script/TraceFormat.h"

namespace kestu {

namespace {

// Drawing coordinates are the single-precision values the control passed.
std::string Coordinate(double value) {
  return FormatSingle(static_cast<float>(value));
}

// Built by appending: GCC 12 warns falsely (-Wrestrict) on a literal
// plus a temporary string.
std::string Tuple(std::initializer_list<std::string> parts) {
  std::string text = "(";
  for (const std::string& part : parts) {
    if (text.size() > 1) text += ',';
    text += part;
  }
  return text += ')';
}

std::string Point(double x, double y) {
  return Tuple({Coordinate(x), Coordinate(y)});
}

std::string Rect(const PixelRect& r) {
  return Tuple({std::to_string(r.left), std::to_string(r.top), std::to_string(r.right),
                std::to_string(r.bottom)});
}

std::string DrawText(const DrawCall& call) {
  using Kind = DrawCall::Kind;
  switch (call.kind) {
    case Kind::Cls:
      return "Cls";
    case Kind::Line:
    case Kind::Box:
    case Kind::FilledBox: {
      std::string text = "Line " + Point(call.x1, call.y1) + "-" + Point(call.x2, call.y2) + " " +
                         FormatColor(call.color);
      if (call.kind == Kind::Box) text += " B";
      if (call.kind == Kind::FilledBox) text += " BF";
      return text;
    }
    case Kind::Print:
      return "Print " + QuoteString(call.text) + " at " + Point(call.x1, call.y1) + " " +
             FormatColor(call.color);
    case Kind::PSet:
      return "PSet " + Point(call.x1, call.y1) + " " + FormatColor(call.color);
    case Kind::PaintPicture: {
      std::string text = "PaintPicture " + std::to_string(call.picture_width) + "x" +
                         std::to_string(call.picture_height) + " at " + Point(call.x1, call.y1);
      if (call.scaled) text += " size " + Point(call.x2, call.y2);
      return text;
    }
    case Kind::DrawText:
      return "DrawText " + QuoteString(call.text) + " " + Rect(call.rect) + " " +
             std::to_string(call.flags) + " " + FormatColor(call.color);
    case Kind::DrawFocusRect:
      return "DrawFocusRect " + Rect(call.rect);
    case Kind::DrawMode:
      return "DrawMode " + std::to_string(call.value);
    case Kind::ScaleMode:
      return "ScaleMode " + std::to_string(call.value);
    case Kind::Refresh:
      return "Refresh";
  }
  return "?";
}

}  // namespace

void TraceWriter::OnEvent(HostedControl& control, const EventInfo& event,
                          std::span<EventArgument> arguments) {
  out_ << "event " << control.Name() << "." << event.name;
  if (!arguments.empty()) {
    out_ << "(";
    for (size_t i = 0; i < arguments.size(); ++i) {
      if (i > 0) out_ << ", ";
      out_ << arguments[i].param->name << "="
           << FormatValue(arguments[i].ref.Get(), arguments[i].param->type_name);
    }
    out_ << ")";
  }
  out_ << "\n";
}

void TraceWriter::OnPropertyChanged(HostedControl& control, std::string_view property) {
  out_ << "notify " << control.Name() << "." << property << "\n";
}

void TraceWriter::OnBeep() {
  out_ << "beep\n";
}

void TraceWriter::OnPopup(HostedControl& control, std::span<const MenuItem> items) {
  out_ << "popup " << control.Name();
  for (size_t i = 0; i < items.size(); ++i) {
    out_ << (i == 0 ? " " : ", ");
    if (items[i].IsSeparator()) {
      out_ << "-";
    } else {
      out_ << QuoteString(items[i].caption) << (items[i].enabled ? " on" : " off");
    }
  }
  out_ << "\n";
}

void TraceWriter::OnToolWindowShown(const ToolWindow& window) {
  out_ << "tip show " << QuoteString(window.Text()) << "\n";
}

void TraceWriter::OnToolWindowHidden(const ToolWindow& /*window*/) {
  out_ << "tip hide\n";
}

void TraceWriter::OnDraw(HostedControl& control, const DrawCall& call) {
  out_ << "draw " << control.Name() << " " << DrawText(call) << "\n";
}

void TraceWriter::OnError(const RuntimeError& error) {
  out_ << "error " << error.Number() << " " << error.Message() << "\n";
}

}  // namespace kestu
