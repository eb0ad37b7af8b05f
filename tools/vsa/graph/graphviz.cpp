#include "tools/vsa/graph/graphviz.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace vsa_tools {

namespace {

struct Close {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A temporary file without a name. With pipes instead of files, both processes could wait for each
/// other.
using TemporaryFile = std::unique_ptr<std::FILE, Close>;

bool writeAll(std::FILE* file, const std::string& text) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  if (!isWritten || std::fflush(file) != 0) return false;
  std::rewind(file);
  return true;
}

std::string readAll(std::FILE* file) {
  std::string text;
  char block[size_t{16} * 1024];
  std::rewind(file);
  while (const size_t count = std::fread(block, 1, sizeof block, file)) text.append(block, count);
  return text;
}

/// Runs `dot -T FORMAT`, which reads `from` and writes `to`. Returns why it failed, or an empty
/// text on success.
std::string runDot(const std::string& format, std::FILE* from, std::FILE* to) {
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, ::fileno(from), STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, ::fileno(to), STDOUT_FILENO);
  std::string program = "dot", option = "-T" + format;
  char* const arguments[] = {program.data(), option.data(), nullptr};
  pid_t child = 0;
  const int error = ::posix_spawnp(&child, "dot", &actions, nullptr, arguments, environ);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error == ENOENT) {
    return "--" + format +
           " needs the program dot of Graphviz, which is not installed (on Debian: the package "
           "graphviz); without --" +
           format + " the graph is written as DOT";
  }
  if (error != 0) return std::string("cannot run dot: ") + std::strerror(error);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? "" : "dot failed";
}

}  // namespace

Picture renderDot(const std::string& dotText, const std::string& format) {
  Picture picture;
  const TemporaryFile from(std::tmpfile()), to(std::tmpfile());
  if (!from || !to || !writeAll(from.get(), dotText)) {
    picture.problem = std::string("cannot write a temporary file: ") + std::strerror(errno);
    return picture;
  }
  picture.problem = runDot(format, from.get(), to.get());
  if (picture.problem.empty()) picture.bytes = readAll(to.get());
  return picture;
}

}  // namespace vsa_tools
