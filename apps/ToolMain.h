#pragma once
// What the window tools' main functions share: the usage on standard
// error for a command line they cannot read, the help on -h, and any
// error that ends the run as one line naming the tool. Each exits 1 on
// failure.

#include <exception>
#include <iostream>
#include <optional>

namespace kestu {

// `Options` has a `help` flag; `run` returns the exit status.
template <typename Options, typename Run>
int ToolMain(const char* tool, const char* usage, const std::optional<Options>& options,
             Run&& run) {
  if (!options) {
    std::cerr << usage;
    return 1;
  }
  if (options->help) {
    std::cout << usage;
    return 0;
  }
  try {
    return run(*options);
  } catch (const std::exception& error) {
    std::cerr << tool << ": " << error.what() << "\n";
    return 1;
  }
}

}  // namespace kestu
