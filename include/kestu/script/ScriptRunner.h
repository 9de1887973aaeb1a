#pragma once
// Runs a kestu-script against a host, line by line, printing the trace to
// `out` and the script's own failures to `err`. The language and the trace
// are a stable, public interface.

#include <filesystem>
#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace kestu {

class RuntimeError;

class Host;
class TraceWriter;
class ScriptHandlers;
class ScriptCommands;

class ScriptRunner {
 public:
  // Exit statuses of a run.
  static constexpr int kCompleted = 0;
  static constexpr int kHostFailure = 1;  // the host itself failed
  static constexpr int kBadLine = 2;      // a malformed line or an unknown name
  // The longest line, and so the longest string, a script may hold: that
  // of a form file. A longer line is a bad line, read no further.
  static constexpr size_t kMaxLineBytes = size_t{16} << 20;

  // Attaches the trace to `host` and makes sure a form named Form1 exists.
  ScriptRunner(Host& host, std::ostream& out, std::ostream& err);
  ~ScriptRunner();
  ScriptRunner(const ScriptRunner&) = delete;
  ScriptRunner& operator=(const ScriptRunner&) = delete;

  // Runs every line of `script`. `file_name` names it in messages
  // ("file:line: message"); relative files the script reads are looked for
  // in `base_dir` first. Run-time errors of the library are trace lines
  // and the script goes on; a bad line stops it with kBadLine.
  int Run(std::istream& script, const std::string& file_name,
          const std::filesystem::path& base_dir = {});
  int RunText(std::string_view text, const std::string& file_name = "<script>",
              const std::filesystem::path& base_dir = {});
  // A script file; one that cannot be opened is kHostFailure.
  int RunFile(const std::filesystem::path& path);

 private:
  // A run-time error: its trace line, and where it came from on `err_`.
  void ReportRuntimeError(const RuntimeError& error, const std::string& file_name, int number,
                          std::string_view line);

  Host& host_;
  std::ostream& out_;
  std::ostream& err_;
  std::unique_ptr<TraceWriter> trace_;
  std::unique_ptr<ScriptHandlers> handlers_;
  std::unique_ptr<ScriptCommands> commands_;
  std::ostream* previous_warnings_ = nullptr;  // the host's, given back at the end
};

}  // namespace kestu
