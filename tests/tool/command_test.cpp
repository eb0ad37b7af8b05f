// Tests of the command vsa: runs it in a shell and checks its output and its exit status.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/support/text.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

struct Outcome {
  int status;
  std::string out, err;
};

class CommandTest : public testing::Test {
 protected:
  void SetUp() override {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder_ =
        fs::temp_directory_path() / ("vsa_" + std::to_string(::getpid()) + "_" + test->name());
    fs::create_directories(folder_);
  }

  void TearDown() override { fs::remove_all(folder_); }

  /// Writes a file into the folder of the test and returns the name of the file.
  std::string write(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return name;
  }

  /// Runs `vsa ARGUMENTS` in the folder of the test. The shell splits `arguments`.
  Outcome vsa(const std::string& arguments) {
    const int status = statusOf(VSA_COMMAND " " + arguments + " >stdout.txt 2>stderr.txt");
    return {status, content("stdout.txt"), content("stderr.txt")};
  }

  /// Runs `vsa COMMAND -` with `descriptor` as standard input.
  Outcome vsaReading(int descriptor, const std::string& command) {
    const int before = ::dup(STDIN_FILENO);
    ::dup2(descriptor, STDIN_FILENO);
    const Outcome run = vsa(command + '-');
    ::dup2(before, STDIN_FILENO);
    ::close(before);
    return run;
  }

  /// Runs a shell command in the folder of the test and returns its exit status.
  int statusOf(const std::string& line) {
    const int status = std::system(("cd '" + folder_.string() + "' && " + line).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::string content(const std::string& name) { return vsa_tests::contentOf(folder_ / name); }

  fs::path folder_;
};

size_t linesIn(const std::string& text) {
  return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST_F(CommandTest, AnUnknownArgumentIsNamed) {
  for (const char* word : {"--frob", "-x", "frob"}) {
    const Outcome run = vsa(word);
    EXPECT_EQ(2, run.status);
    EXPECT_NE(std::string::npos, run.err.find(word)) << run.err;
  }
  for (const char* arguments : {"check --frob", "dump --frob", "check --frob a", "dump --frob a"}) {
    EXPECT_EQ("vsa: The following argument was not expected: --frob (vsa --help shows the usage)\n",
              vsa(arguments).err);
  }
  EXPECT_EQ("vsa: FILES is required (vsa --help shows the usage)\n", vsa("check").err);
  const std::string missing = vsa("").err;
  EXPECT_TRUE(missing.starts_with("vsa: a command is needed: check, explain, ")) << missing;
  EXPECT_TRUE(missing.ends_with(" (vsa --help shows the usage)\n")) << missing;
}

TEST_F(CommandTest, AFileNameInBracketsIsNotAList) {
  write("[x]", "sphere ball;\n");
  const Outcome run = vsa("check '[x]' '[x]'");
  EXPECT_EQ(0, run.status);
  EXPECT_EQ("2 files checked: no problems found\n", run.out);
}

TEST_F(CommandTest, AnUnreadableInputIsNotAnEmptyFile) {
  const Outcome dump = vsa("dump - < .");
  EXPECT_EQ(2, dump.status);
  EXPECT_EQ("", dump.out);
  EXPECT_EQ("vsa: <stdin>: Is a directory\n", dump.err);
  EXPECT_EQ(2, vsa("dump missing.vsa").status);
}

TEST_F(CommandTest, ADirectoryIsNotAnEmptyFile) {
  const Outcome dump = vsa("dump .");
  EXPECT_EQ(2, dump.status);
  EXPECT_EQ("", dump.out);
  EXPECT_EQ("vsa: .: Is a directory\n", dump.err);
}

struct LossRow {
  std::string text, line;
};

// The reader does not read all of these texts. For example, it ends at a byte 0xFF. It reports no
// error, so the command must report the loss.
TEST_F(CommandTest, LossesAreReported) {
  const LossRow rows[] = {
      {"sphere ball;\n\xFF ball.radius = 1;\n",
       "a.vsa:2:1: error: a byte 0xFF ended the text before the file ended"},
      {"\xFF\xFEs\0p\0"s, "a.vsa: error: this looks like UTF-16; a VSA text is UTF-8"},
      {"\xFE\xFF\0s\0p"s, "a.vsa: error: this looks like UTF-16; a VSA text is UTF-8"},
      {"#\0 \0a\0"s, "a.vsa: error: this looks like UTF-16; a VSA text is UTF-8"},
      // Only the first 16 bytes show the encoding. They have two NUL bytes in the place of high
      // bytes, and one in the place of low bytes.
      {"#\0 \0ab\0cdefghijk\0\n"s, "a.vsa: error: this looks like UTF-16; a VSA text is UTF-8"},
      {"lamp a: .s = \"x\0y\";\n"s,
       "a.vsa:1:16: error: a NUL byte, at which a string, comment or name ends"},
      {"lamp a;\n# x\0y\n"s,
       "a.vsa:2:4: error: a NUL byte, at which a string, comment or name ends"},
      {"lamp a;\n\n \0\n"s,
       "a.vsa:3:2: error: a NUL byte, at which a string, comment or name ends"},
      {"\0lamp a;"s, "a.vsa:1:1: error: a NUL byte, at which a string, comment or name ends"},
      {"\xEF\xBB\xBF#\0"s, "a.vsa:1:2: error: a NUL byte, at which a string, comment or name ends"},
      {"sphere ball;\n\"cut", "error: the text is cut off: UNEXPECTED EOF while parsing STRING"},
      {"sphere ball;\n(1 2", "error: the text is cut off: UNEXPECTED EOF while parsing PARENS"},
  };
  for (const LossRow& row : rows) {
    write("a.vsa", row.text);
    const Outcome dump = vsa("dump a.vsa");
    EXPECT_EQ(1, dump.status) << row.line;
    EXPECT_NE(std::string::npos, dump.err.find(row.line)) << dump.err;
    EXPECT_TRUE(nlohmann::json::accept(dump.out)) << row.line;
  }
}

// Each command reports such a loss and ends with status 1, or 2 for diff. No command writes a text
// without the lost part.
TEST_F(CommandTest, EachCommandReportsLosses) {
  const LossRow rows[] = {
      {"lamp a: .s = \"x\0y\";\n"s,
       "a.vsa:1:16: error: a NUL byte, at which a string, comment or name ends\n"},
      {"lamp a;\n\0\n"s, "a.vsa:2:1: error: a NUL byte, at which a string, comment or name ends\n"},
      {"\x1F\x8B\x08\0\0\0\0\0\0\x03"s,
       "a.vsa: error: this file is compressed with gzip; a text is not\n"},
      {"lamp a;\n\xFF lamp b;\n",
       "a.vsa:2:1: error: a byte 0xFF ended the text before the file ended\n"},
      {"lamp a;\n\"cut",
       "a.vsa:2:1: error: the text is cut off: UNEXPECTED EOF while parsing STRING\n"},
      {"l\0a\0m\0p\0 \0a\0;\0"s, "a.vsa: error: this looks like UTF-16; a VSA text is UTF-8\n"},
  };
  for (const LossRow& row : rows) {
    write("a.vsa", row.text);
    for (const char* command : {"stats", "tree", "graph", "dump", "types"}) {
      const Outcome run = vsa(std::string(command) + " a.vsa");
      EXPECT_EQ(1, run.status) << command;
      EXPECT_NE(std::string::npos, run.err.find(row.line)) << command << ": " << run.err;
    }
    for (const char* command : {"fmt", "fmt -i", "fmt --check", "fmt --diff", "merge", "convert",
                                "extract a.vsa a", "diff a.vsa"}) {
      const Outcome run = vsa(std::string(command) + " a.vsa");
      EXPECT_EQ(std::string(command).starts_with("diff") ? 2 : 1, run.status) << command;
      EXPECT_EQ("", run.out) << command;
      EXPECT_NE(std::string::npos, run.err.find(row.line)) << command << ": " << run.err;
      EXPECT_EQ(row.text, content("a.vsa")) << command;
    }
  }
}

/// A pair of connected sockets. A SOCK_SEQPACKET socket keeps the sizes of the packets.
struct Connection {
  explicit Connection(int type) {
    EXPECT_EQ(0, ::socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends));
  }
  ~Connection() {
    ::close(ends[0]);
    closeSender();
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void send(std::string_view piece) {
    EXPECT_EQ(static_cast<ssize_t>(piece.size()), ::write(ends[1], piece.data(), piece.size()));
  }

  void closeSender() {
    if (ends[1] >= 0) ::close(ends[1]);
    ends[1] = -1;
  }

  int ends[2] = {-1, -1};
};

TEST_F(CommandTest, TheSizeOfReadsDoesNotMatter) {
  const std::string texts[] = {
      "#\0 \0a\0b\0c\0\n\0"s,
      "#\0\0\0 \0\0\0a\0\0\0\n\0\0\0"s,
      "\xFF\xFEs",
      "\xFE\xFF\0s\0p"s,
      "lamp a: .s = \"x\0y\"; # \0"s,
      "\xEF\xBB\xBFlamp a: .k = 1;\n .k = 2.5;\n lamp b;\n",
      "lamp a;\n42;\n lamp b;\n lamp cccccccc;\n",
  };
  for (const std::string& text : texts) {
    write("a.vsa", text);
    for (const char* command : {"check ", "dump "}) {
      const Outcome whole = vsa(std::string(command) + "- <a.vsa");
      Connection bytes(SOCK_SEQPACKET);
      for (const char byte : text) bytes.send({&byte, 1});
      bytes.closeSender();
      const Outcome run = vsaReading(bytes.ends[0], command);
      EXPECT_EQ(whole.status, run.status) << text;
      EXPECT_EQ(whole.out, run.out);
      EXPECT_EQ(whole.err, run.err);
    }
  }
}

// The reading goes on after a buffer that is not created. The message about the first one tells why
// it is not complete, so it is shown even after --max-diagnostics, and only once.
TEST_F(CommandTest, TheFirstRefusedBufferIsReportedOnce) {
  write("a.vsa",
        "lamp a: .k = 1;\n.k = 2.5;\n.k = 2.5;\n.x = float[1000000000000] {1};\n"
        ".y = float[1000000000000] {1};\n");
  for (const char* command : {"convert", "dump", "graph", "stats", "tree", "types"}) {
    const auto run = vsa(std::string(command) + " --max-diagnostics 1 a.vsa");
    EXPECT_EQ(1, run.status) << command;
    const std::string said = run.out + run.err;
    const size_t found = said.find("the buffer float[1000000000000] of a.x");
    EXPECT_NE(said.npos, found) << command << '\n' << said;
    EXPECT_EQ(said.npos, said.find("the buffer", found + 1)) << command << '\n' << said;
    EXPECT_NE(said.npos, said.find("2 more ")) << command << '\n' << said;
  }
}

// Closing a socket that has unread data resets the connection. The read after the sent data then
// fails.
TEST_F(CommandTest, AReadErrorIsNotAnEndOfFile) {
  for (const char* text : {"sphere ball;\n", "sphere ball;\nball.radius = 2.5;\n"}) {
    for (const char* command : {"check ", "dump "}) {
      Connection broken(SOCK_STREAM);
      broken.send(text);
      ASSERT_EQ(1, ::write(broken.ends[0], "x", 1));
      broken.closeSender();
      const Outcome run = vsaReading(broken.ends[0], command);
      EXPECT_EQ(command == std::string("dump ") ? 1 : 2, run.status);
      EXPECT_NE(
          std::string::npos,
          (run.out + run.err).find(": error: reading failed midway: Connection reset by peer"))
          << run.err;
      if (run.out.starts_with('{')) {
        EXPECT_EQ("ball", nlohmann::json::parse(run.out)["nodes"][0]["name"]);
      }
    }
  }
}

// The next test limits the address space. Sanitizers need more than that limit.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// Returns a text with `messages` warnings. Each warning contains a name of `nameLength` characters.
std::string textOfManyLongMessages(size_t nameLength, size_t messages) {
  std::string text = "lamp " + std::string(nameLength, 'a') + ": .k = 1;\n";
  for (size_t i = 0; i < messages; ++i) text += ".k=2.5;\n";
  return text;
}

// The log has 100 MB, and the commands must work in an address space of 64 MB. The exception is
// `dump --full`, which may use 192 MB.
TEST_F(CommandTest, ALongLogIsNotKeptInMemory) {
  write("a.vsa", textOfManyLongMessages(20000, 5000));
  EXPECT_EQ(0, statusOf("ulimit -v 64000 && " VSA_COMMAND " check a.vsa >/dev/null"));
  EXPECT_EQ(0, statusOf("ulimit -v 64000 && " VSA_COMMAND " dump a.vsa >/dev/null"));
  EXPECT_EQ(0, statusOf("ulimit -v 192000 && " VSA_COMMAND " dump --full a.vsa >/dev/null"));
}
#endif

TEST_F(CommandTest, TerminalControlsAreEscaped) {
  write("a.vsa", "lamp lamp1;\nlamp1.target = \"\x1B[2J\nx\";\nlamp1.target = 1;\n");
  const Outcome run = vsa("check a.vsa");
  EXPECT_EQ(std::string::npos, run.out.find('\x1B')) << run.out;
  EXPECT_EQ(std::string::npos, vsa("dump a.vsa").out.find('\x1B'));
}

TEST_F(CommandTest, DumpPrintsTheSceneAsJson) {
  write("a.vsa", "# version: 3\nsphere ball;\nball.radius = 2.5;\n");
  const Outcome run = vsa("dump a.vsa");
  EXPECT_EQ(0, run.status);
  EXPECT_EQ("", run.err);
  const auto expected =
      nlohmann::json::parse(R"({"result": true, "escaped": null, "log": [], "fileVersion": 3,
      "fileTime": "", "fileComments": ["# version: 3"], "nodes": [{"type": "sphere", "name": "ball",
      "inputs": [{"name": "radius", "type": "Real", "value": 2.5}]}]})");
  EXPECT_EQ(expected, nlohmann::json::parse(run.out));
}

TEST_F(CommandTest, DumpOfStandardInputEqualsDumpOfTheFile) {
  write("a.vsa", "# version: 3\nsphere ball;\nball.radius = 2.5;\nball.radius = true; }");
  write("marked.vsa", "\xEF\xBB\xBF" + content("a.vsa"));
  const Outcome file = vsa("dump a.vsa");
  EXPECT_EQ(1, file.status);
  EXPECT_NE(std::string::npos, file.out.find("INVALID TOKEN (4,20): '}'")) << file.out;
  for (const char* arguments : {"dump - <a.vsa", "dump - <marked.vsa", "dump marked.vsa"}) {
    const Outcome run = vsa(arguments);
    EXPECT_EQ(1, run.status) << arguments;
    EXPECT_EQ(file.out, run.out) << arguments;
    EXPECT_EQ("", run.err) << arguments;
  }
}

TEST_F(CommandTest, DumpOfAFailedReadShowsWhatWasRead) {
  write("a.vsa", "sphere ball;\n42;\n");
  const Outcome run = vsa("dump a.vsa");
  EXPECT_EQ(1, run.status);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(false, json["result"]);
  EXPECT_EQ("error", json["log"][0]["level"]);
  EXPECT_EQ("ball", json["nodes"][0]["name"]);
}

TEST_F(CommandTest, DumpShowsTheException) {
  write("a.vsa", "}");
  const Outcome run = vsa("dump a.vsa");
  EXPECT_EQ(1, run.status);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(false, json["result"]);
  EXPECT_EQ("INVALID TOKEN (1,0): '}'", json["escaped"]);
  EXPECT_EQ(1, json["fileVersion"]);
}

// A command fails if it cannot write its messages, even if the file was read completely.
TEST_F(CommandTest, MessagesThatCannotBeWritten) {
  write("a.vsa", "lamp a: .k = 1;\n.k = 2.5;\n");
  for (const char* arguments : {"stats a.vsa", "tree a.vsa", "diff a.vsa a.vsa", "extract a.vsa a",
                                "convert a.vsa", "graph a.vsa"}) {
    const std::string line = std::string(VSA_COMMAND " ") + arguments + " >stdout.txt";
    EXPECT_EQ(0, statusOf(line + " 2>/dev/null")) << arguments;
    EXPECT_EQ(2, statusOf(line + " 2>/dev/full")) << arguments;
  }
}

TEST_F(CommandTest, DumpReportsThatItCannotWrite) {
  write("a.vsa", "sphere ball;\n");
  EXPECT_EQ(2, statusOf(VSA_COMMAND " dump a.vsa >/dev/full 2>stderr.txt"));
  EXPECT_EQ("vsa: cannot write the dump: No space left on device\n", content("stderr.txt"));
}

TEST_F(CommandTest, WrongUsagePrintsOneLine) {
  for (const char* arguments :
       {"", "chekc", "--colour", "check", "check --loud a.vsa", "dump", "dump a b"}) {
    const Outcome run = vsa(arguments);
    EXPECT_EQ(2, run.status) << arguments;
    EXPECT_EQ(1u, linesIn(run.err)) << run.err;
    EXPECT_TRUE(run.err.starts_with("vsa: ")) << run.err;
    EXPECT_EQ("", run.out) << arguments;
  }
}

TEST_F(CommandTest, HelpAndVersionGoToStandardOutput) {
  for (const char* arguments : {"--help", "-h", "check --help", "dump --help"}) {
    const Outcome run = vsa(arguments);
    EXPECT_EQ(0, run.status) << arguments;
    EXPECT_NE(std::string::npos, run.out.find("Usage: vsa")) << run.out;
    EXPECT_EQ("", run.err);
  }
  for (const char* arguments : {"--help", "check --help", "--version"}) {
    EXPECT_EQ(2, statusOf(std::string(VSA_COMMAND " ") + arguments + " >/dev/full 2>stderr.txt"));
    EXPECT_EQ("vsa: cannot write: No space left on device\n", content("stderr.txt"));
  }
  const Outcome version = vsa("--version");
  EXPECT_EQ(0, version.status);
  EXPECT_TRUE(version.out.starts_with("vsa 0.")) << version.out;
}

}  // namespace
