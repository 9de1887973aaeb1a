#pragma once
// Expects a callable to raise the host run-time error `number`, and
// optionally a detail that contains `detail_part`.

#include <gtest/gtest.h>

#include <string_view>

#include "kestu/foundation/RuntimeError.h"

namespace kestu {

template <typename Fn>
void ExpectRuntimeError(int number, Fn&& fn, std::string_view detail_part = {}) {
  try {
    fn();
    ADD_FAILURE() << "expected run-time error " << number << ", nothing was raised";
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.Number(), number) << e.what();
    EXPECT_NE(e.Detail().find(detail_part), std::string::npos)
        << "detail \"" << e.Detail() << "\" lacks \"" << detail_part << "\"";
  }
}

}  // namespace kestu
