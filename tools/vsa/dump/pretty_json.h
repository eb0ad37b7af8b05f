// PrettyJson: adds line breaks and indentation to compact JSON.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "tools/scene_text/text_output.h"

namespace vsa_tools {

/// Receives compact, valid JSON in pieces and writes each key or element on its own line. Numbers,
/// strings and other single values of an array share lines of about 100 columns. Needs memory only
/// for the nesting.
class PrettyJson {
 public:
  explicit PrettyJson(TextOutput& out) : out_(out) {}

  void put(std::string_view json) {
    for (const char c : json) put(c);
  }

 private:
  struct Container {
    bool isEmpty = false;
    bool isFlat = false;    // whether it is an array that begins with a single value
    bool isBroken = false;  // whether its contents have more than one line
  };

  void put(char c);
  void putInString(char c);
  void begin(char next);
  void end(char c);
  void comma();
  void newLine();
  void emit(char c);

  TextOutput& out_;
  std::vector<Container> open_;
  bool isInString_ = false;
  bool isAfterBackslash_ = false;
  bool isAfterOpening_ = false;  // whether the last character began a container
  char opening_ = 0;
  std::size_t column_ = 0;
};

}  // namespace vsa_tools
