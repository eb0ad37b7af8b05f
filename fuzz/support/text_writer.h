// Generates random statements. Most of them are valid and use few names, so that several statements
// affect the same input. Invalid statements cause the messages of the reader.
#pragma once

#include <cstddef>
#include <string>

#include "fuzz/support/choices.h"

namespace vsa_fuzz {

class TextWriter {
 public:
  /// Creates a writer that appends to `out`.
  TextWriter(Choices& choices, std::string& out) : choices_(choices), out_(out) {}

  /// Writes a whole text: declarations, and then statements of any kind.
  void text();
  void statement();
  /// Writes the right-hand side of an assignment.
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
