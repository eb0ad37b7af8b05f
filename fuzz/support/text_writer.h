// Generates random statements. Most are valid and use few names, so that several statements affect
// the same input. Some are invalid in a way for which the reader has a message.
#pragma once

#include <cstddef>
#include <string>

#include "fuzz/support/choices.h"

namespace vsa_fuzz {

class TextWriter {
 public:
  /// The functions append to `out`.
  TextWriter(Choices& choices, std::string& out) : choices_(choices), out_(out) {}

  /// A whole text: declarations, then statements of any kind.
  void text();
  void statement();
  /// The right-hand side of an assignment.
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
