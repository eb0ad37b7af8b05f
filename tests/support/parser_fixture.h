// PrimedParser: a parser that is about to parse the first statement of a text. Tests call its
// members directly. thrownBy() and LoggedLines give what a call throws and logs.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/host_scene.h"
#include "tests/support/text.h"
#include "tests/support/token_text.h"
#include "tools/scene_text/read_outcome.h"
#include "vsa/lex/lexer_source.h"
#include "vsa/parser.h"

namespace vsa_tests {

class PrimedParser {
 public:
  /// Reads the first three tokens of `bytes`, as parse() does before the first statement.
  explicit PrimedParser(const std::string& bytes) : source_(string(bytes)) {
    parser.scene = &scene;
    parser.lexer = &source_;
    for (int i = 0; i < parser.lookahead; ++i) {
      parser.tokens.push_back(zn::korvo_sdk::impl::Token());
      parser.consume();
    }
  }

  HostScene scene;
  zn::korvo_sdk::impl::VsaParser parser;

  /// Returns the texts of the lookahead tokens, which are at most three.
  std::string ahead() const {
    std::string texts;
    for (std::int32_t i = 0; i < parser.lookahead; ++i) {
      const std::int32_t slot = (parser.head + i) % parser.lookahead;
      if (i > 0) texts += ' ';
      texts += text(parser.tokens[static_cast<std::uint64_t>(slot)].text);
    }
    return texts;
  }

 private:
  zn::korvo_sdk::impl::StringLexer source_;
};

/// Returns the text of the std::runtime_error that `call` throws, or "" if it throws none.
template <class Call>
std::string thrownBy(Call call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

/// Captures the log during the lifetime of the object, with one line for each message: "warning:
/// TEXT" or "error: TEXT".
class LoggedLines {
 public:
  LoggedLines() : scope_(&capture_) {}

  std::vector<std::string> lines() const {
    std::vector<std::string> all;
    for (const vsa_tools::LogEntry& entry : capture_.entries) {
      all.push_back((entry.level == zn::LogLevel::Warning ? "warning: " : "error: ") + entry.text);
    }
    return all;
  }

 private:
  vsa_tools::LogCapture capture_;
  zn::ScopedLogSink scope_;
};

}  // namespace vsa_tests
