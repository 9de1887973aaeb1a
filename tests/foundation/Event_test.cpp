// Handlers run in the order they connected, each seeing the arguments as
// raised; the list may change under a raise without upsetting it.

#include "kestu/foundation/Event.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kestu {
namespace {

const EventInfo kNamed{.name = "Named", .params = {}, .help = ""};

struct EventTest : ::testing::Test {
  Event<std::string, int16_t&> named{kNamed};
  std::shared_ptr<int> owner = std::make_shared<int>(0);
  std::vector<std::string> seen;

  void Raise(std::string name) {
    int16_t cancel = 0;
    named.Emit(owner, std::move(name), cancel);
  }
};

TEST_F(EventTest, EveryHandlerSeesAByValueArgumentAsRaised) {
  for (int i = 0; i < 3; ++i) {
    named.Connect([&](std::string name, int16_t&) { seen.push_back(std::move(name)); });
  }
  Raise("vol.002");
  EXPECT_EQ(seen, (std::vector<std::string>{"vol.002", "vol.002", "vol.002"}));
}

TEST_F(EventTest, AHandlerConnectedDuringARaiseRunsFromTheNextOne) {
  named.Connect([&](std::string, int16_t&) {
    seen.push_back("first");
    named.Connect([&](std::string, int16_t&) { seen.push_back("late"); });
  });
  Raise("a");
  EXPECT_EQ(seen, std::vector<std::string>{"first"});
  Raise("b");
  EXPECT_EQ(seen, (std::vector<std::string>{"first", "first", "late"}));
}

TEST_F(EventTest, AHandlerDisconnectedDuringARaiseDoesNotRun) {
  Connection second;
  named.Connect([&](std::string, int16_t&) {
    seen.push_back("first");
    second.Disconnect();
  });
  second = named.Connect([&](std::string, int16_t&) { seen.push_back("second"); });
  named.Connect([&](std::string, int16_t&) { seen.push_back("third"); });
  Raise("a");
  Raise("b");
  EXPECT_EQ(seen, (std::vector<std::string>{"first", "third", "first", "third"}));
}

TEST_F(EventTest, ANestedRaiseKeepsTheOuterOneInOrder) {
  Connection once;
  once = named.Connect([&](std::string name, int16_t&) {
    seen.push_back("once " + name);
    once.Disconnect();
    Raise("inner");
  });
  named.Connect([&](std::string name, int16_t&) { seen.push_back("always " + name); });
  Raise("outer");
  EXPECT_EQ(seen, (std::vector<std::string>{"once outer", "always inner", "always outer"}));
}

TEST_F(EventTest, NoHandlerRunsOnceTheOwnerIsGone) {
  named.Connect([&](std::string, int16_t&) {
    seen.push_back("first");
    owner.reset();
  });
  named.Connect([&](std::string, int16_t&) { seen.push_back("second"); });
  Raise("a");
  EXPECT_EQ(seen, std::vector<std::string>{"first"});
}

}  // namespace
}  // namespace kestu
