#include "apps/kestu-copy/TerminalProgress.h"

#include <algorithm>

namespace kestu::copytool {

namespace {

constexpr int kBarCells = 30;

// 1234567 as "1,234,567": byte counts are read at a glance.
std::string GroupedDigits(int64_t value) {
  const std::string digits = std::to_string(value);
  std::string grouped;
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) grouped += ',';
    grouped += digits[i];
  }
  return grouped;
}

std::string BaseName(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

void TerminalProgress::Update(int percent, int64_t bytes, const std::string& volume) {
  if (!enabled_ || (percent == last_percent_ && volume == last_volume_)) return;
  last_percent_ = percent;
  last_volume_ = volume;
  // The percentage can pass 100 when a repaint reset the divisor; the bar
  // stops at full.
  const int filled = std::clamp(percent, 0, 100) * kBarCells / 100;
  const std::string bar = std::string(static_cast<size_t>(filled), '#') +
                          std::string(static_cast<size_t>(kBarCells - filled), '-');
  std::fprintf(stderr, "\r\033[K[%s] %3d%%  %s bytes  %s", bar.c_str(), percent,
               GroupedDigits(bytes).c_str(), BaseName(volume).c_str());
  std::fflush(stderr);
  shown_ = true;
}

void TerminalProgress::PrintLine(std::FILE* stream, const std::string& text) {
  Clear();
  std::fprintf(stream, "%s\n", text.c_str());
  std::fflush(stream);
  // Redraw the bar on the next update even if nothing on it changed.
  last_percent_ = -1;
}

void TerminalProgress::Clear() {
  if (!shown_) return;
  std::fprintf(stderr, "\r\033[K");
  std::fflush(stderr);
  shown_ = false;
}

}  // namespace kestu::copytool
