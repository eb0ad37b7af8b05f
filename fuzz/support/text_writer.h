// Writes statements of the format by chance: mostly right ones about few names, so that they meet
// on the same inputs, and now and then one that is wrong in a way that the reader has a message
// for.
#pragma once

#include <cstddef>
#include <string>

#include "fuzz/support/choices.h"

namespace vsa_fuzz {

class TextWriter {
 public:
  /// Appends to `out`.
  TextWriter(Choices& choices, std::string& out) : choices_(choices), out_(out) {}

  /// A whole text: declarations, then statements of any kind.
  void text();
  void statement();
  /// What stands to the right of "=".
  void value();

 private:
  void comment();
  void declaration();
  void directive();
  void assignment();
  void link();
  void mistake();

  void path();
  void suffix();

  void number();
  void string();
  void tuple();
  void buffer();
  void elements(std::size_t count);
  void count(std::size_t count);
  void compressed(std::size_t bytes);
  void separator();

  template <class Table>
  void oneOf(const Table& table) {
    out_ += choices_.pick(table);
  }

  Choices& choices_;
  std::string& out_;
};

}  // namespace vsa_fuzz
