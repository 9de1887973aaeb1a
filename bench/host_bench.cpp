// The host's own costs: one key through the host to a control and back,
// the same key as a user's keyboard sends it to a control nested two
// deep, a form of 50 controls composited and encoded as a picture, and a
// form of 200 controls nested three deep composited.

#include <benchmark/benchmark.h>

#include "foundation/VariantJson.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostInput.h"
#include "kestu/host/Snapshot.h"

namespace kestu {
namespace {

// A control that only raises its KeyDown event to the container, as every
// focusable control does before it acts, and draws nothing.
class KeyEcho : public UserControl {
 public:
  static const EventInfo& KeyDownInfo() {
    static const EventInfo key_down{"KeyDown",
                                    {{"KeyCode", "Integer", VarType::Integer, true},
                                     {"Shift", "Integer", VarType::Integer, true}},
                                    ""};
    return key_down;
  }
  static ClassInfo& Info() {
    static ClassInfo info = [] {
      ClassInfo c;
      c.name = "KeyEcho";
      c.create = [] { return std::make_unique<KeyEcho>(); };
      c.events = {&KeyDownInfo()};
      return c;
    }();
    return info;
  }
  const ClassInfo& Class() const override { return Info(); }

  KeyEcho() : KeyDown(KeyDownInfo()) {}
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override {
    (void)RaiseEvent(KeyDown, key_code, shift);
  }

  Event<int16_t&, int16_t&> KeyDown;
};

// Sees every event, as the script host's trace does, without printing.
class CountingObserver : public HostObserver {
 public:
  void OnEvent(HostedControl&, const EventInfo&, std::span<EventArgument> arguments) override {
    count += arguments.size();
  }
  size_t count = 0;
};

void BM_KeyThroughTheHost(benchmark::State& state) {
  Host host;
  CountingObserver observer;
  host.AddObserver(&observer);
  Form& form = host.CreateForm("Main");
  HostedControl& control = host.NewControl(form, KeyEcho::Info(), "k");
  HostInput input(host);
  for (auto _ : state) {
    input.KeyDown(control, 65, 0);
  }
  benchmark::DoNotOptimize(observer.count);
  host.RemoveObserver(&observer);
}
BENCHMARK(BM_KeyThroughTheHost);

// The user's path: the active form's focused control, which sits in a
// panel inside a panel, gets the key.
void BM_KeyToAControlNestedTwoDeep(benchmark::State& state) {
  Host host;
  CountingObserver observer;
  host.AddObserver(&observer);
  Form& form = host.CreateForm("Main");
  const ClassInfo* panel = ControlRegistry::Instance().Find("KestuPanel3D");
  HostedControl& outer = host.NewControl(form, *panel, "outer", TwipsRect{0, 0, 3000, 3000});
  HostedControl& inner =
      host.NewControl(form, *panel, "inner", TwipsRect{150, 150, 2400, 2400}, &outer);
  HostedControl& control =
      host.NewControl(form, KeyEcho::Info(), "k", TwipsRect{150, 150, 1200, 480}, &inner);
  host.SetFocus(&control);
  for (auto _ : state) {
    host.User().KeyDown(form, 65, 0);
  }
  benchmark::DoNotOptimize(observer.count);
  host.RemoveObserver(&observer);
}
BENCHMARK(BM_KeyToAControlNestedTwoDeep);

// A form file whose one control has a bag of 100,000 keys, parsed.
void BM_ParseJsonOf100000Keys(benchmark::State& state) {
  std::string text = "{";
  for (int i = 0; i < 100000; ++i) {
    text += "\"k";
    text += std::to_string(i);
    text += "\":1,";
  }
  text.back() = '}';
  for (auto _ : state) {
    benchmark::DoNotOptimize(ParseJsonStrict(text, "wide.json"));
  }
}
BENCHMARK(BM_ParseJsonOf100000Keys)->Unit(benchmark::kMillisecond);

// A 640 x 480 form holding 50 panels of 80 x 40 pixels.
class FiftyPanels {
 public:
  FiftyPanels() : form_(host_.CreateForm("Main", 9600, 7200)) {
    const ClassInfo* panel = ControlRegistry::Instance().Find("KestuPanel3D");
    for (int i = 0; i < 50; ++i) {
      std::string name = "p";
      name += std::to_string(i);
      host_.NewControl(form_, *panel, name, TwipsRect{(i % 7) * 1350, (i / 7) * 900, 1200, 600});
    }
  }
  Host& host() { return host_; }
  Form& form() { return form_; }

 private:
  Host host_;
  Form& form_;
};

void BM_CompositeFormOf50Controls(benchmark::State& state) {
  FiftyPanels setup;
  Raster out(0, 0);
  for (auto _ : state) {
    RenderForm(setup.host(), setup.form(), out);
    benchmark::DoNotOptimize(out.Pixels().data());
  }
}
BENCHMARK(BM_CompositeFormOf50Controls)->Unit(benchmark::kMicrosecond);

void BM_EncodeFormOf50ControlsAsPng(benchmark::State& state) {
  FiftyPanels setup;
  const Raster out = RenderForm(setup.host(), setup.form());
  for (auto _ : state) {
    std::vector<uint8_t> png = out.ToPng();
    benchmark::DoNotOptimize(png.data());
  }
}
BENCHMARK(BM_EncodeFormOf50ControlsAsPng)->Unit(benchmark::kMicrosecond);

// An 800 x 600 form: 8 panels of 200 x 300 pixels, each holding 4 panels,
// each of those holding 5 number boxes: 200 controls, three deep.
void BM_CompositeFormOf200ControlsNestedThreeDeep(benchmark::State& state) {
  Host host;
  Form& form = host.CreateForm("Main", 12000, 9000);
  const ClassInfo* panel = ControlRegistry::Instance().Find("KestuPanel3D");
  const ClassInfo* box = ControlRegistry::Instance().Find("KestuNumberEdit");
  int count = 0;
  const auto name = [&count] {
    std::string text = "c";  // appended, not "c" + ...: GCC 12 warns wrongly on that
    text += std::to_string(count++);
    return text;
  };
  for (int i = 0; i < 8; ++i) {
    HostedControl& outer = host.NewControl(form, *panel, name(),
                                           TwipsRect{(i % 4) * 3000, (i / 4) * 4500, 3000, 4500});
    for (int j = 0; j < 4; ++j) {
      HostedControl& middle = host.NewControl(
          form, *panel, name(), TwipsRect{(j % 2) * 1500, (j / 2) * 2250, 1500, 2250}, &outer);
      for (int k = 0; k < 5; ++k) {
        host.NewControl(form, *box, name(), TwipsRect{75, 75 + k * 420, 1350, 375}, &middle);
      }
    }
  }
  Raster out(0, 0);
  for (auto _ : state) {
    RenderForm(host, form, out);
    benchmark::DoNotOptimize(out.Pixels().data());
  }
  state.counters["controls"] = static_cast<double>(form.Controls().size());
}
BENCHMARK(BM_CompositeFormOf200ControlsNestedThreeDeep)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kestu
