#include "apps/kestu-run/Gallery.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include <unistd.h>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kWidth = 960;  // pixels
constexpr int kHeight = 580;
constexpr FontSpec kCaptionFont{.name = "MS Sans Serif", .pixel_size = 11.0};
constexpr FontSpec kHeadingFont{.name = "MS Sans Serif", .pixel_size = 11.0, .bold = true};

// A control of `class_name` at pixel rectangle (x, y, w, h), then its
// properties set by name, as a program would set them. A class the
// library does not have is left out. Inside `container`, when given, the
// rectangle is relative to it.
HostedControl* Place(Host& host, Form& form, const char* class_name, const char* name, int x, int y,
                     int w, int h,
                     const std::vector<std::pair<const char*, Variant>>& properties = {},
                     HostedControl* container = nullptr) {
  const ClassInfo* info = ControlRegistry::Instance().Find(class_name);
  if (!info) return nullptr;
  HostedControl& control = host.NewControl(
      form, *info, name,
      TwipsRect{x * kTwipsPerPixel, y * kTwipsPerPixel, w * kTwipsPerPixel, h * kTwipsPerPixel},
      container);
  for (const auto& [property, value] : properties) {
    info->FindProperty(property)->set(control.Control(), value);
  }
  return &control;
}

int16_t Constant(const char* name) {
  return static_cast<int16_t>(ControlRegistry::Instance().FindConstant(name)->second);
}

// A floppy disk `size` pixels square in `body` colour, drawn here so that
// the gallery needs no picture files.
Variant DiskIcon(int size, uint32_t body) {
  constexpr uint32_t kClear = 0x00000000;
  constexpr uint32_t kLabel = 0xFFF0F0F0;
  constexpr uint32_t kShutter = 0xFFA0A0A0;
  std::vector<uint32_t> pixels(static_cast<size_t>(size) * size, kClear);
  const int edge = size / 8;
  for (int y = 1; y < size - 1; ++y) {
    for (int x = 1; x < size - 1; ++x) {
      uint32_t& pixel = pixels[static_cast<size_t>(y) * size + x];
      pixel = body;
      if (y < size / 2 && x >= 2 * edge && x < size - 2 * edge && y > 1) pixel = kShutter;
      if (y > size / 2 + 1 && y < size - 2 && x >= edge && x < size - edge) pixel = kLabel;
    }
  }
  return Variant(std::make_shared<const StdPicture>(size, size, std::move(pixels)));
}

// A sheet of paper with its top right corner folded, 16 pixels square.
Variant PageIcon() {
  constexpr int kSize = 16;
  constexpr uint32_t kClear = 0x00000000;
  constexpr uint32_t kInk = 0xFF000000;
  constexpr uint32_t kPaper = 0xFFFFFFFF;
  constexpr int kLeft = 3, kTop = 1, kRight = 12, kBottom = 14, kFold = 3;
  std::vector<uint32_t> pixels(static_cast<size_t>(kSize) * kSize, kClear);
  for (int y = kTop; y <= kBottom; ++y) {
    for (int x = kLeft; x <= kRight; ++x) {
      // Above the fold's diagonal the corner is cut away.
      if (x - (kRight - kFold) > y - kTop) continue;
      const bool edge = x == kLeft || x == kRight || y == kTop || y == kBottom ||
                        x - (kRight - kFold) == y - kTop ||
                        (x == kRight - kFold && y <= kTop + kFold) ||
                        (y == kTop + kFold && x >= kRight - kFold);
      pixels[static_cast<size_t>(y) * kSize + x] = edge ? kInk : kPaper;
    }
  }
  return Variant(std::make_shared<const StdPicture>(kSize, kSize, std::move(pixels)));
}

}  // namespace

Gallery::Gallery(Host& host) : host_(host) {
  form_ = &host.CreateForm("Gallery", kWidth * kTwipsPerPixel, kHeight * kTwipsPerPixel);
  form_->SetCaption("Kestu controls gallery");
  AddNumberEdits();  // first in tab order
  AddTextEdits();
  AddPanels();
  AddLines();
  AddCopiers();
  AddCommandButtons();
  AddToolbar();
  AddDialogControls();
  AddDialogInputs();
  DrawCaptions();
}

void Gallery::Label(int x, int y, std::string text, bool heading) {
  captions_.push_back({x, y, std::move(text), heading});
}

void Gallery::AddPanels() {
  if (!ControlRegistry::Instance().Find("KestuPanel3D")) return;
  Label(16, 8, "3D panel (KestuPanel3D)", true);
  struct Sample {
    const char* out;
    const char* in;
    int width;
    const char* caption;
  };
  const Sample samples[] = {
      {"KSTPN_Raised", "KSTPN_None", 1, "raised, 1 pixel"},
      {"KSTPN_Lowered", "KSTPN_None", 1, "lowered, 1 pixel"},
      {"KSTPN_Raised", "KSTPN_Lowered", 3, "raised out, lowered in, 3 px"},
      {"KSTPN_Lowered", "KSTPN_Raised", 2, "lowered out, raised in, 2 px"},
  };
  for (int i = 0; i < 4; ++i) {
    const int x = 16 + (i % 2) * 160;
    const int y = 28 + (i / 2) * 84;
    Place(host_, *form_, "KestuPanel3D", ("panel" + std::to_string(i + 1)).c_str(), x, y, 140, 50,
          {{"BorderOut", Variant(Constant(samples[i].out))},
           {"BorderIn", Variant(Constant(samples[i].in))},
           {"BorderWidth", Variant(static_cast<int16_t>(samples[i].width))}});
    Label(x, y + 54, samples[i].caption);
  }
}

void Gallery::AddLines() {
  if (!ControlRegistry::Instance().Find("KestuLine3D")) return;
  Label(16, 200, "3D line (KestuLine3D)", true);
  Place(host_, *form_, "KestuLine3D", "line1", 16, 228, 200, 2,
        {{"LineStyle", Variant(Constant("LnRaised"))}});
  Label(16, 236, "horizontal, raised");
  Place(host_, *form_, "KestuLine3D", "line2", 16, 268, 200, 2,
        {{"LineStyle", Variant(Constant("LnLowered"))}});
  Label(16, 276, "horizontal, lowered");
  const char* vertical_styles[] = {"LnRaised", "LnLowered"};
  for (int i = 0; i < 2; ++i) {
    HostedControl* line =
        Place(host_, *form_, "KestuLine3D", i == 0 ? "line3" : "line4", 240 + 30 * i, 222, 2, 90,
              {{"LineOrientation", Variant(Constant("LnVertical"))},
               {"LineStyle", Variant(Constant(vertical_styles[i]))}});
    // A horizontal line keeps its own thickness as its height: the length
    // is given again once the line stands upright.
    if (line) line->SetExtender("Height", Variant(90 * kTwipsPerPixel));
  }
  Label(226, 316, "vertical: raised, lowered");
}

void Gallery::AddNumberEdits() {
  if (!ControlRegistry::Instance().Find("KestuNumberEdit")) return;
  Label(340, 8, "Numeric edit box (KestuNumberEdit)", true);
  struct Sample {
    const char* name;
    const char* caption;
    std::vector<std::pair<const char*, Variant>> properties;
  };
  const Sample samples[] = {
      {"number1", "Brazilian format", {{"Value", Variant(1234567.891)}}},
      {"number2",
       "US format",
       {{"NumberFormat", Variant(Constant("USFormat"))}, {"Value", Variant(1234567.891)}}},
      {"number3",
       "negative, in NegativeColor",
       {{"AllowNegative", Variant::Boolean(true)},
        {"NegativeColor", Variant(static_cast<int32_t>(0x0000C0))},
        {"Value", Variant(-42.5)}}},
      {"number4",
       "no thousands separator",
       {{"ThSeparator", Variant::Boolean(false)}, {"Value", Variant(98765.4)}}},
      {"number5", "locked", {{"Locked", Variant::Boolean(true)}, {"Value", Variant(250.0)}}},
      {"number6", "disabled", {{"Value", Variant(17.0)}, {"Enabled", Variant::Boolean(false)}}},
  };
  int y = 30;
  for (const Sample& sample : samples) {
    // Two decimals before the value, which is cut to the limits it meets.
    std::vector<std::pair<const char*, Variant>> properties{
        {"DecMaxLength", Variant(static_cast<int16_t>(2))}};
    properties.insert(properties.end(), sample.properties.begin(), sample.properties.end());
    Place(host_, *form_, "KestuNumberEdit", sample.name, 340, y, 130, 21, properties);
    Label(480, y + 4, sample.caption);
    y += 28;
  }
}

void Gallery::AddTextEdits() {
  if (!ControlRegistry::Instance().Find("KestuTextEdit")) return;
  Label(670, 8, "Masked edit box (KestuTextEdit)", true);
  struct Sample {
    const char* name;
    const char* caption;
    std::vector<std::pair<const char*, Variant>> properties;
  };
  const Sample samples[] = {
      {"date",
       "date: 99/99/9999",
       {{"Mask", Variant("99/99/9999")}, {"Text", Variant("23112026")}}},
      {"phone",
       "phone: (99) 9999-9999",
       {{"Mask", Variant("(99) 9999-9999")}, {"Text", Variant("1155550123")}}},
      {"postcode",
       "postal code: 99999-999",
       {{"Mask", Variant("99999-999")}, {"Text", Variant("")}}},
      {"upper",
       "upper case",
       {{"TextStyle", Variant(Constant("ccUpperCase"))}, {"Text", Variant("são paulo")}}},
      {"padded",
       "padded on the left with 0",
       {{"MaxLength", Variant(static_cast<int16_t>(8))},
        {"TextStyle", Variant(Constant("ccPadLeft"))},
        {"FillChar", Variant("0")},
        {"Text", Variant("1234")}}},
      {"textdisabled",
       "disabled",
       {{"Text", Variant("disabled")}, {"Enabled", Variant::Boolean(false)}}},
      {"textlocked", "locked", {{"Text", Variant("locked")}, {"Locked", Variant::Boolean(true)}}},
  };
  int y = 30;
  for (const Sample& sample : samples) {
    HostedControl* box =
        Place(host_, *form_, "KestuTextEdit", sample.name, 670, y, 110, 21, sample.properties);
    // Reading the text applies its style, as the box does when asked.
    if (box) box->Control().GetProperty("Text");
    Label(790, y + 4, sample.caption);
    y += 28;
  }
}

void Gallery::AddCopiers() {
  if (!ControlRegistry::Instance().Find("KestuCopyFile")) return;
  Label(340, 200, "File copier's bar (KestuCopyFile)", true);
  Place(host_, *form_, "KestuCopyFile", "copier1", 340, 222, 160, 22,
        {{"StartCaption", Variant::Boolean(true)}});
  Label(510, 226, "before a copy: 0%");
  // At design time the bar shows half way, so the form's author sees it.
  {
    const Host::UserModeScope design(host_, false);
    Place(host_, *form_, "KestuCopyFile", "copier2", 340, 256, 160, 22);
  }
  Label(510, 260, "design time: 50%");
  HostedControl* done = Place(host_, *form_, "KestuCopyFile", "copier3", 340, 290, 160, 22,
                              {{"ForeColor", Variant(static_cast<int32_t>(0x008000))}});
  Label(510, 294, "after a copy: 100%");
  if (!done) return;
  // A real copy of a small file fills the bar.
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("kestu-gallery-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "source.txt") << std::string(4096, 'k');
  const ClassInfo& info = done->Class();
  info.FindProperty("SourceFile")->set(done->Control(), Variant((folder / "source.txt").string()));
  info.FindProperty("NewFile")->set(done->Control(), Variant((folder / "copy.txt").string()));
  host_.RunReportingErrors([&] {
    std::vector<Variant> none;
    info.FindMethod("BeginCopyFile")->invoke(done->Control(), none);
  });
  std::filesystem::remove_all(folder);
}

void Gallery::AddCommandButtons() {
  if (!ControlRegistry::Instance().Find("KestuActiveCommand")) return;
  Label(16, 344, "Command button (KestuActiveCommand): hover, press, Alt+letter, Enter", true);
  const Variant blue_disk = DiskIcon(16, 0xFF1F3F8F);
  const Variant grey_disk = DiskIcon(16, 0xFF808080);
  struct Sample {
    const char* name;
    const char* caption;
    int height;
    std::vector<std::pair<const char*, Variant>> properties;
    // What the form keeps for the button: a tip, the default button.
    std::vector<std::pair<const char*, Variant>> extender = {};
  };
  const Sample samples[] = {
      {"cmd3d", "3D, focused", 34, {{"Caption", Variant("&Save")}}},
      {"cmdflat",
       "flat",
       34,
       {{"Caption", Variant("&Flat")}, {"Style", Variant(Constant("ccFlat"))}}},
      {"cmdleft", "picture left", 34, {{"Caption", Variant("&Open")}, {"Picture", blue_disk}}},
      {"cmdright",
       "picture right",
       34,
       {{"Caption", Variant("&Next")},
        {"Picture", blue_disk},
        {"PictPosition", Variant(Constant("ccRight"))}}},
      {"cmdtop",
       "32 px above",
       56,
       {{"Caption", Variant("&Disk")},
        {"Picture", DiskIcon(32, 0xFF1F3F8F)},
        {"PictSize", Variant(Constant("cc32x32"))},
        {"PictPosition", Variant(Constant("ccTop"))}}},
      {"cmddim",
       "disabled, dimmed",
       34,
       {{"Caption", Variant("Print")},
        {"Picture", blue_disk},
        {"Enabled", Variant::Boolean(false)}}},
      {"cmdgrey",
       "disabled picture",
       34,
       {{"Caption", Variant("Print")},
        {"Picture", blue_disk},
        {"DisabledPicture", grey_disk},
        {"Enabled", Variant::Boolean(false)}}},
      {"cmdok",
       "default (Enter)",
       34,
       {{"Caption", Variant("OK")}},
       {{"Default", Variant::Boolean(true)}}},
      {"cmdtip",
       "tooltip, bold hover",
       34,
       {{"Caption", Variant("&Help")},
        {"FocusedBold", Variant::Boolean(true)},
        {"FocusedFRColor", Variant(static_cast<int32_t>(0xC00000))}},
       {{"ToolTipText", Variant("Opens the help")}}},
  };
  int x = 16;
  for (const Sample& sample : samples) {
    HostedControl* button = Place(host_, *form_, "KestuActiveCommand", sample.name, x, 366, 96,
                                  sample.height, sample.properties);
    Label(x, 366 + sample.height + 6, sample.caption);
    x += 104;
    if (!button) continue;
    for (const auto& [name, value] : sample.extender) button->SetExtender(name, value);
    if (&sample == &samples[0]) host_.SetFocus(button);  // the focused look
  }
}

void Gallery::AddToolbar() {
  if (!ControlRegistry::Instance().Find("KestuTBBar")) return;
  Label(670, 236, "Toolbar (KestuTBBar, KestuTBButton)", true);
  HostedControl* bar = Place(host_, *form_, "KestuTBBar", "toolbar", 670, 258, 274, 26);
  if (!bar) return;
  // A new bar docks to the top of its form: this one stays in its place.
  bar->SetExtender("Align", Variant(int16_t{0}));
  bar->SetExtender("Left", Variant(670 * kTwipsPerPixel));
  bar->SetExtender("Top", Variant(258 * kTwipsPerPixel));
  bar->SetExtender("Width", Variant(274 * kTwipsPerPixel));
  const Variant blue_disk = DiskIcon(16, 0xFF1F3F8F);
  struct Sample {
    const char* type;
    const char* name;
    int x;
    int width;
    std::vector<std::pair<const char*, Variant>> properties;
    std::vector<std::pair<const char*, Variant>> extender = {};
  };
  // Flat buttons 23 pixels apart, clear of the grip, two pixels below the
  // bar's top; a separator between the groups.
  const Sample samples[] = {
      {"KestuTBButton",
       "tbnew",
       12,
       23,
       {{"Picture", PageIcon()}},
       {{"ToolTipText", Variant("New file")}}},
      {"KestuTBButton",
       "tbsave",
       35,
       23,
       {{"Picture", blue_disk}},
       {{"ToolTipText", Variant("Save the file")}}},
      {"KestuTBButton",
       "tbgrey",
       58,
       23,
       {{"Picture", blue_disk},
        {"DisabledPicture", DiskIcon(16, 0xFF808080)},
        {"Enabled", Variant::Boolean(false)}}},
      {"KestuTBSeparator", "tbgap", 84, 2, {}},
      {"KestuTBButton",
       "tbcaption",
       89,
       64,
       {{"AutoSize", Variant::Boolean(false)},
        {"Caption", Variant("Save")},
        {"Picture", blue_disk}},
       // A new button sizes itself to its picture; with AutoSize off it
       // keeps the width given afterwards.
       {{"Width", Variant(64 * kTwipsPerPixel)}, {"ToolTipText", Variant("Save, with a caption")}}},
  };
  for (const Sample& sample : samples) {
    HostedControl* control = Place(host_, *form_, sample.type, sample.name, sample.x, 2,
                                   sample.width, 22, sample.properties, bar);
    if (!control) continue;
    for (const auto& [name, value] : sample.extender) control->SetExtender(name, value);
  }
  Label(670, 290, "flat: the pointer raises a frame,");
  Label(670, 304, "a press sinks it; disabled; caption");
}

void Gallery::AddDialogControls() {
  if (!ControlRegistry::Instance().Find("Frame")) return;
  Label(16, 452, "Dialog controls (Frame, OptionButton, CheckBox, Label)", true);
  const Variant on = Variant::Boolean(true);
  const Variant off = Variant::Boolean(false);
  HostedControl* frame =
      Place(host_, *form_, "Frame", "fraSize", 16, 472, 160, 90, {{"Caption", Variant("&Size")}});
  Place(host_, *form_, "OptionButton", "optSmall", 12, 22, 130, 17,
        {{"Caption", Variant("S&mall")}, {"Value", on}}, frame);
  Place(host_, *form_, "OptionButton", "optLarge", 12, 44, 130, 17,
        {{"Caption", Variant("&Large")}}, frame);
  Place(host_, *form_, "OptionButton", "optOff", 12, 66, 130, 17,
        {{"Caption", Variant("Disabled")}, {"Enabled", off}}, frame);
  Place(host_, *form_, "CheckBox", "chkBold", 200, 480, 130, 17,
        {{"Caption", Variant("&Bold")}, {"Value", Variant(int16_t{1})}});
  Place(host_, *form_, "CheckBox", "chkMixed", 200, 502, 130, 17,
        {{"Caption", Variant("Mi&xed")}, {"Value", Variant(int16_t{2})}});
  Place(host_, *form_, "CheckBox", "chkOff", 200, 524, 130, 17,
        {{"Caption", Variant("Disabled")}, {"Value", Variant(int16_t{1})}, {"Enabled", off}});
  Place(host_, *form_, "Label", "lblName", 360, 480, 160, 17, {{"Caption", Variant("&Name:")}});
  Place(host_, *form_, "Label", "lblRight", 360, 502, 160, 17,
        {{"Caption", Variant("aligned right")}, {"Alignment", Variant(int16_t{1})}});
  Place(host_, *form_, "Label", "lblOff", 360, 524, 160, 17,
        {{"Caption", Variant("disabled, engraved")}, {"Enabled", off}});
}

void Gallery::AddDialogInputs() {
  if (!ControlRegistry::Instance().Find("ComboBox")) return;
  Label(560, 452, "Dialog inputs (CommandButton, TextBox, ComboBox, TabStrip)", true);
  HostedControl* ok = Place(host_, *form_, "CommandButton", "cmdOK", 560, 472, 75, 23,
                            {{"Caption", Variant("OK")}});
  if (ok) ok->SetExtender("Default", Variant::Boolean(true));
  HostedControl* cancel = Place(host_, *form_, "CommandButton", "cmdCancel", 645, 472, 75, 23,
                                {{"Caption", Variant("Cancel")}});
  if (cancel) cancel->SetExtender("Cancel", Variant::Boolean(true));
  Place(host_, *form_, "CommandButton", "cmdApply", 730, 472, 75, 23,
        {{"Caption", Variant("&Apply")}, {"Enabled", Variant::Boolean(false)}});
  Place(host_, *form_, "TextBox", "txtName", 560, 504, 160, 21, {{"Text", Variant("any text")}});
  HostedControl* combo = Place(host_, *form_, "ComboBox", "cboSize", 560, 534, 160, 21, {});
  if (!combo) return;
  // The list through the class's own method and property, as a program fills it.
  const MethodInfo* add_item = combo->Class().FindMethod("AddItem");
  for (const char* item : {"Small", "Medium", "Large"}) {
    std::vector<Variant> arguments = {Variant(item), Variant()};
    add_item->invoke(combo->Control(), arguments);
  }
  combo->Class().FindProperty("ListIndex")->set(combo->Control(), Variant(int16_t{1}));
  // A property dialog's tabs: the same list, drawn as tabs.
  HostedControl* tabs = Place(host_, *form_, "TabStrip", "tabPages", 730, 504, 140, 60, {});
  if (!tabs) return;
  for (const char* tab : {"General", "About"}) {
    std::vector<Variant> arguments = {Variant(tab), Variant()};
    tabs->Class().FindMethod("AddItem")->invoke(tabs->Control(), arguments);
  }
  tabs->Class().FindProperty("ListIndex")->set(tabs->Control(), Variant(int16_t{0}));
}

void Gallery::DrawCaptions() {
  backdrop_ = Raster(form_->WidthPixels(), form_->HeightPixels(), ResolveColor(form_->BackColor()));
  const Rgb ink = ResolveColor(syscolor::kButtonText);
  for (const Caption& caption : captions_) {
    backdrop_.DrawText(caption.heading ? kHeadingFont : kCaptionFont, caption.text, caption.x,
                       caption.y, ink, RasterOp::CopyPen);
  }
}

}  // namespace kestu
