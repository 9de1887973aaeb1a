#include "apps/kestu-copy/TerminalProgress.h"

#include <algorithm>
#include <cinttypes>

namespace kestu::copytool {

namespace {

constexpr int kBarCells = 30;
// Often enough to look alive, seldom enough to cost nothing.
constexpr auto kRedrawInterval = std::chrono::milliseconds(100);

std::string Bar(int64_t done, int64_t total) {
  const int filled =
      total > 0 ? static_cast<int>(std::min<int64_t>(done, total) * kBarCells / total) : kBarCells;
  return std::string("[")
      .append(static_cast<size_t>(filled), '#')
      .append(static_cast<size_t>(kBarCells - filled), '-')
      .append("]");
}

std::string MegabytesPerSecond(int64_t bytes, double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f MB/s", seconds > 0 ? bytes / seconds / 1e6 : 0.0);
  return text;
}

// "0:07", "12:30", "1:02:03".
std::string Duration(double seconds) {
  const int64_t whole = static_cast<int64_t>(seconds + 0.5);
  char text[32];
  if (whole >= 3600) {
    std::snprintf(text, sizeof text, "%" PRId64 ":%02d:%02d", whole / 3600,
                  static_cast<int>(whole / 60 % 60), static_cast<int>(whole % 60));
  } else {
    std::snprintf(text, sizeof text, "%d:%02d", static_cast<int>(whole / 60),
                  static_cast<int>(whole % 60));
  }
  return text;
}

}  // namespace

std::string GroupedDigits(int64_t value) {
  const std::string digits = std::to_string(value);
  std::string grouped;
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) grouped += ',';
    grouped += digits[i];
  }
  return grouped;
}

TerminalProgress::TerminalProgress(bool enabled, int64_t total_bytes)
    : enabled_(enabled), total_bytes_(total_bytes), start_(Clock::now()) {}

void TerminalProgress::Update(int64_t bytes_done) {
  if (!enabled_) return;
  const Clock::time_point now = Clock::now();
  if (shown_ && now - last_drawn_ < kRedrawInterval) return;
  Draw(bytes_done, now);
}

void TerminalProgress::Draw(int64_t bytes_done, Clock::time_point now) {
  const double seconds = SecondsSinceStart(now);
  std::string line = "\r\033[K";
  if (total_bytes_ >= 0) {
    const int percent = total_bytes_ > 0 ? static_cast<int>(bytes_done * 100 / total_bytes_) : 100;
    char head[16];
    std::snprintf(head, sizeof head, " %3d%%  ", percent);
    line.append(Bar(bytes_done, total_bytes_)).append(head);
    line.append(GroupedDigits(bytes_done)).append(" of ").append(GroupedDigits(total_bytes_));
  } else {
    line.append(GroupedDigits(bytes_done));
  }
  line.append(" bytes  ").append(MegabytesPerSecond(bytes_done, seconds));
  if (total_bytes_ > 0 && bytes_done > 0 && seconds > 0) {
    const double left = (total_bytes_ - bytes_done) * seconds / bytes_done;
    line.append("  ").append(Duration(left)).append(" left");
  }
  std::fputs(line.c_str(), stderr);
  std::fflush(stderr);
  shown_ = true;
  last_drawn_ = now;
}

// Without a bar the line stays in the stream's buffer: a split into
// thousands of volumes costs no system call per name.
void TerminalProgress::PrintLine(std::FILE* stream, const std::string& text) {
  Clear();
  std::fprintf(stream, "%s\n", text.c_str());
  if (enabled_) std::fflush(stream);
}

void TerminalProgress::Summarise(int64_t bytes_done, int64_t volumes, bool to_set) {
  if (!enabled_) return;
  Clear();
  const double seconds = SecondsSinceStart(Clock::now());
  std::string line = GroupedDigits(bytes_done).append(" bytes to ");
  if (to_set) {
    line.append(GroupedDigits(volumes)).append(volumes == 1 ? " volume" : " volumes");
  } else {
    line.append("1 file");
  }
  char timing[64];
  std::snprintf(timing, sizeof timing, " in %.2f s (%s)", seconds,
                MegabytesPerSecond(bytes_done, seconds).c_str());
  std::fprintf(stderr, "kestu-copy: %s%s\n", line.c_str(), timing);
}

void TerminalProgress::Clear() {
  if (!shown_) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  shown_ = false;
}

double TerminalProgress::SecondsSinceStart(Clock::time_point now) const {
  return std::chrono::duration<double>(now - start_).count();
}

}  // namespace kestu::copytool
