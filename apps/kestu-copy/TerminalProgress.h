#pragma once
// The copy's progress on standard error: one line redrawn in place with a
// bar, the bytes copied, the throughput and the time left, then one line
// that sums the copy up. Lines printed through it (volume names) appear
// above the bar.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace kestu::copytool {

// 1234567 as "1,234,567": byte counts are read at a glance.
std::string GroupedDigits(int64_t value);

class TerminalProgress {
 public:
  // Draws only when `enabled`. `total_bytes` is -1 when not known ahead.
  TerminalProgress(bool enabled, int64_t total_bytes);

  // Draws the bar when it is not shown or enough time passed since it was
  // last drawn.
  void Update(int64_t bytes_done);
  // Prints `text` on a line of its own on `stream`, above the bar.
  void PrintLine(std::FILE* stream, const std::string& text);
  // Replaces the bar by "N bytes to V volumes in S s (R MB/s)".
  void Summarise(int64_t bytes_done, int64_t volumes, bool to_set);
  // Leaves the bar's line empty, for the closing messages.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  void Draw(int64_t bytes_done, Clock::time_point now);
  double SecondsSinceStart(Clock::time_point now) const;

  bool enabled_;
  int64_t total_bytes_;
  Clock::time_point start_;
  Clock::time_point last_drawn_{};
  bool shown_ = false;
};

}  // namespace kestu::copytool
