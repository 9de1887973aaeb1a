#pragma once
// The system beep through the X server's bell: asked for and never waited
// on. Without an X display it stays silent.

struct _XDisplay;

namespace kestu {

class XBeeper {
 public:
  XBeeper() = default;
  ~XBeeper();
  XBeeper(const XBeeper&) = delete;
  XBeeper& operator=(const XBeeper&) = delete;

  // Rings the bell at the server's own volume; the request is flushed,
  // not waited for.
  void Beep();

 private:
  _XDisplay* display_ = nullptr;
  bool tried_ = false;
};

}  // namespace kestu
