#include "desktop/XErrorLog.h"

#include <X11/Xlib.h>

#include <atomic>
#include <cstdio>
#include <mutex>
#include <set>
#include <string>
#include <tuple>

namespace kestu {

namespace {

std::atomic<long> errors_seen{0};

// The request's name as the server's error database spells it, such as
// "X_SendEvent"; extension requests by number.
std::string RequestName(Display* display, const XErrorEvent& error) {
  char name[128] = "";
  const std::string code = std::to_string(error.request_code);
  XGetErrorDatabaseText(display, "XRequest", code.c_str(), "", name, sizeof name);
  if (name[0] != '\0') return name;
  return "extension request " + code + "." + std::to_string(error.minor_code);
}

// Runs on the thread that read the error reply, and must send no request
// of its own: it only reads the local error database and writes stderr.
int LogXError(Display* display, XErrorEvent* error) {
  ++errors_seen;
  static std::mutex mutex;
  static std::set<std::tuple<int, int, int>> logged;
  const std::lock_guard lock(mutex);
  if (!logged.emplace(error->error_code, error->request_code, error->minor_code).second) return 0;
  char text[160] = "";
  XGetErrorText(display, error->error_code, text, sizeof text);
  std::fprintf(stderr,
               "kestu: X error, and the program goes on: %s from request %d (%s) on resource "
               "0x%lx; later errors of this kind are not shown\n",
               text, error->request_code, RequestName(display, *error).c_str(), error->resourceid);
  return 0;
}

}  // namespace

void InstallXErrorLog() {
  static std::once_flag installed;
  std::call_once(installed, [] { XSetErrorHandler(LogXError); });
}

long XErrorsSeen() {
  return errors_seen.load();
}

}  // namespace kestu
