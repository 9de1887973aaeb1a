#pragma once
// Runs a kestu-script in process, on a fresh host, and collects what it
// printed: the way host tests look at the host through its trace.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "kestu/host/Host.h"
#include "kestu/script/ScriptRunner.h"

namespace kestu {

struct ScriptResult {
  int status = 0;
  std::string out;
  std::string err;
};

// Runs `text` as the script "test.kss" (files it reads are looked for in
// `base_dir`, then in the working folder) on `host`.
inline ScriptResult RunScriptOn(Host& host, std::string_view text,
                                const std::string& base_dir = {}) {
  std::ostringstream out, err;
  ScriptRunner runner(host, out, err);
  ScriptResult result;
  result.status = runner.RunText(text, "test.kss", base_dir);
  result.out = out.str();
  result.err = err.str();
  return result;
}

inline ScriptResult RunScript(std::string_view text, const std::string& base_dir = {}) {
  Host host;
  return RunScriptOn(host, text, base_dir);
}

}  // namespace kestu
