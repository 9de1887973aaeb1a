#include "apps/kestu-copy/Interrupt.h"

#include <csignal>

namespace kestu::copytool {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int) {
  interrupted = 1;
}

}  // namespace

void WatchForInterrupt() {
  // No SA_RESTART: a copy blocked in the kernel comes back with what it
  // moved so far instead of going on until its whole request is done.
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  std::signal(SIGXFSZ, SIG_IGN);
}

bool InterruptRequested() {
  return interrupted != 0;
}

}  // namespace kestu::copytool
