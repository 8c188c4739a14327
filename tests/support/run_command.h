#pragma once
// Runs a shell command as a learner's script would and keeps what it printed on standard output
// and its exit code. For the tests that drive the `vesko` binary; one call at a time per thread.

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vesko::testing {

struct CommandRun {
  int status = -1;  // the exit code; -1 when the command did not exit normally
  std::string out;
};

inline CommandRun runCommand(const std::string& command) {
  CommandRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return run;
  char buffer[4096];
  while (std::size_t n = fread(buffer, 1, sizeof buffer, pipe)) run.out.append(buffer, n);
  const int status = pclose(pipe);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

// A command's exit code and both of its outputs.
struct CommandResult {
  int status = -1;
  std::string out;
  std::string err;
};

// runCommand, with the command's standard error sent to `errors` (a file of the caller's) and
// read back.
inline CommandResult runCommandWithErrors(const std::string& command,
                                          const std::filesystem::path& errors) {
  const CommandRun finished = runCommand(command + " 2>" + errors.string());
  CommandResult result{finished.status, finished.out, {}};
  std::ifstream in(errors);
  result.err.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return result;
}

}  // namespace vesko::testing
