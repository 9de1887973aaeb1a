#pragma once
// Ctrl+C asks the copy to stop. The copy looks at the request between its
// steps, and a system call blocked on a slow file returns early for it, so
// the files are closed and the tool can say what was written.

namespace kestu::copytool {

// Takes over SIGINT for the rest of the run. Also ignores SIGXFSZ, so that
// writing past the file-size limit is an error the tool reports instead of
// a signal that ends it without a word.
void WatchForInterrupt();

bool InterruptRequested();

}  // namespace kestu::copytool
