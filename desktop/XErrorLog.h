#pragma once
// No X error ends the program. Xlib's default answer to an error reply is
// to print it and exit: one request that names a window the server has
// just destroyed would cost the user every unsaved form. Instead each
// kind of error (the error code with the request that drew it) is logged
// once on standard error, and the program goes on.

namespace kestu {

// Installs the log as the process's X error handler. Call it before the
// window system's own set-up: SDL keeps the handler it finds and hands it
// every error after its own clean-up. Idempotent.
void InstallXErrorLog();

// How many X errors the log has seen since the program started, logged or
// not.
long XErrorsSeen();

}  // namespace kestu
