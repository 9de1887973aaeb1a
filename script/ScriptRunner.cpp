#include "kestu/script/ScriptRunner.h"

#include <algorithm>
#include <fstream>
#include <new>
#include <sstream>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"
#include "kestu/script/TraceWriter.h"
#include "script/ScriptCommands.h"
#include "script/ScriptError.h"
#include "script/ScriptHandlers.h"

namespace kestu {

ScriptRunner::ScriptRunner(Host& host, std::ostream& out, std::ostream& err)
    : host_(host),
      out_(out),
      err_(err),
      trace_(std::make_unique<TraceWriter>(out)),
      handlers_(std::make_unique<ScriptHandlers>(host)) {
  // The trace first: it shows event arguments as passed, before any
  // handler changes them.
  host_.AddObserver(trace_.get());
  host_.AddObserver(handlers_.get());
  previous_warnings_ = host_.SetWarningStream(&err_);
  if (!host_.FindForm("Form1")) host_.CreateForm("Form1");
  commands_ = std::make_unique<ScriptCommands>(host_, out_, *handlers_);
}

ScriptRunner::~ScriptRunner() {
  host_.SetWarningStream(previous_warnings_);
  host_.RemoveObserver(handlers_.get());
  host_.RemoveObserver(trace_.get());
}

namespace {

// The command and what it acts on, as written: "set n1.Value", "click n1",
// "new KestuPanel3D p1".
std::string_view CommandSubject(std::string_view line) {
  const size_t start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  const auto word_end = [&](size_t at) {
    return std::min(line.find_first_of(" \t", at), line.size());
  };
  size_t end = word_end(start);
  const std::string_view command = line.substr(start, end - start);
  const int words = command == "new" || command == "load" ? 2 : 1;
  for (int i = 0; i < words; ++i) {
    const size_t next = line.find_first_not_of(" \t", end);
    if (next == std::string_view::npos) break;
    end = word_end(next);
  }
  return line.substr(start, end - start);
}

// Reads the next line into `line`, without its end; false at the end of
// the script. A line past `limit` bytes stops there: `too_long` says so.
bool ReadLine(std::istream& in, std::string& line, size_t limit, bool& too_long) {
  line.clear();
  too_long = false;
  std::streambuf* buffer = in.rdbuf();
  for (;;) {
    const int c = buffer->sbumpc();
    if (c == std::char_traits<char>::eof()) return !line.empty();
    if (c == '\n') return true;
    if (line.size() == limit) {
      too_long = true;
      return true;
    }
    line.push_back(static_cast<char>(c));
  }
}

}  // namespace

int ScriptRunner::Run(std::istream& script, const std::string& file_name,
                      const std::filesystem::path& base_dir) {
  commands_->SetBaseDir(base_dir);
  std::string line;
  bool too_long = false;
  for (int number = 1; ReadLine(script, line, kMaxLineBytes, too_long); ++number) {
    if (too_long) {
      out_.flush();
      err_ << file_name << ":" << number << ": a line longer than " << (kMaxLineBytes >> 20)
           << " MiB\n";
      return kBadLine;
    }
    if (number == 1 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    try {
      commands_->Execute(line);
    } catch (const ScriptError& error) {
      out_.flush();
      err_ << file_name << ":" << number << ": " << error.what() << "\n";
      return kBadLine;
    } catch (const RuntimeError& error) {
      ReportRuntimeError(error, file_name, number, line);
    } catch (const std::bad_alloc&) {
      // Memory ran out inside a command: the host's error 7, and the
      // script goes on, as with any run-time error.
      ReportRuntimeError(RuntimeError(err::kOutOfMemory), file_name, number, line);
    } catch (const std::exception& error) {
      out_.flush();
      err_ << file_name << ":" << number << ": " << error.what() << "\n";
      return kHostFailure;
    }
  }
  out_.flush();
  return kCompleted;
}

void ScriptRunner::ReportRuntimeError(const RuntimeError& error, const std::string& file_name,
                                      int number, std::string_view line) {
  trace_->OnError(error);
  // The trace line stays as the host prints it; where it came from goes
  // beside it, for the script's author.
  out_.flush();
  err_ << file_name << ":" << number << ": " << CommandSubject(line) << ": error " << error.Number()
       << " " << error.Message();
  if (!error.Detail().empty()) err_ << " (" << error.Detail() << ")";
  err_ << "\n";
}

int ScriptRunner::RunText(std::string_view text, const std::string& file_name,
                          const std::filesystem::path& base_dir) {
  std::istringstream script{std::string(text)};
  return Run(script, file_name, base_dir);
}

int ScriptRunner::RunFile(const std::filesystem::path& path) {
  std::ifstream script(path);
  if (!script) {
    err_ << path.string() << ": cannot open the script\n";
    return kHostFailure;
  }
  return Run(script, path.string(), path.parent_path());
}

}  // namespace kestu
