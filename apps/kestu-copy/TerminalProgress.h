#pragma once
// The copy's progress on a terminal: one line on standard error, redrawn in
// place, with a bar, the percentage, the bytes copied and the volume in
// use. Volume names are printed on their own lines above it.

#include <cstdint>
#include <cstdio>
#include <string>

namespace kestu::copytool {

class TerminalProgress {
 public:
  // Draws only when `enabled` (standard error is a terminal).
  explicit TerminalProgress(bool enabled) : enabled_(enabled) {}

  // Shows the line when anything on it changed since it was last drawn.
  void Update(int percent, int64_t bytes, const std::string& volume);
  // Prints `text` on a line of its own on `stream`, above the bar.
  void PrintLine(std::FILE* stream, const std::string& text);
  // Leaves the bar's line empty, for the closing messages.
  void Clear();

 private:
  bool enabled_;
  bool shown_ = false;
  int last_percent_ = -1;
  std::string last_volume_;
};

}  // namespace kestu::copytool
