// The mutator of libFuzzer for texts. A third of the calls change bytes, as libFuzzer does by
// itself. Of the other calls, one in 40 replaces the text by a new one, and the others change one
// to three whole statements, so that most of the text stays valid. The cross-over of two texts
// joins whole statements, too.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/support/choices.h"
#include "fuzz/support/text_writer.h"

extern "C" {
std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t capacity);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t capacity,
                                    unsigned seed);
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data1, std::size_t size1,
                                      const std::uint8_t* data2, std::size_t size2,
                                      std::uint8_t* out, std::size_t capacity, unsigned seed);
}

namespace {

using vsa_fuzz::Choices;
using vsa_fuzz::TextWriter;
using Statements = std::vector<std::string>;

/// Splits the text after every ";", ":" and line end. `joined` is the inverse function.
Statements statementsOf(std::string_view text) {
  Statements statements;
  while (!text.empty()) {
    const std::size_t mark = std::min(text.find_first_of(";:\n"), text.size() - 1);
    statements.emplace_back(text.substr(0, mark + 1));
    text.remove_prefix(mark + 1);
  }
  return statements;
}

std::string joined(const Statements& statements) {
  std::string text;
  for (const std::string& statement : statements) text += statement;
  return text;
}

Statements::iterator randomStatement(Choices& choices, Statements& statements) {
  return statements.begin() + static_cast<std::ptrdiff_t>(choices.below(statements.size()));
}

void insertStatement(Choices& choices, Statements& statements) {
  std::string statement;
  TextWriter(choices, statement).statement();
  const auto at = choices.below(statements.size() + 1);
  statements.insert(statements.begin() + static_cast<std::ptrdiff_t>(at), statement);
}

void replaceValue(Choices& choices, Statements& statements) {
  std::string& statement = *randomStatement(choices, statements);
  const std::size_t equals = statement.find('=');
  if (equals == std::string::npos) return insertStatement(choices, statements);
  statement.resize(equals + 1);
  TextWriter(choices, statement).value();
  statement += ';';
}

void changeStatements(Choices& choices, Statements& statements) {
  switch (statements.empty() ? 0 : choices.below(8)) {
    case 0:
    case 1:
    case 2:
      return insertStatement(choices, statements);
    case 3:
      statements.erase(randomStatement(choices, statements));
      return;
    case 4: {
      const std::string copy = *randomStatement(choices, statements);
      statements.insert(randomStatement(choices, statements), copy);
      return;
    }
    case 5:
      return std::iter_swap(randomStatement(choices, statements),
                            randomStatement(choices, statements));
    default:
      return replaceValue(choices, statements);
  }
}

std::size_t copyTo(const std::string& text, std::uint8_t* out, std::size_t capacity) {
  const std::size_t size = std::min(text.size(), capacity);
  std::memcpy(out, text.data(), size);
  return size;
}

std::string_view view(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t capacity,
                                    unsigned seed) {
  Choices choices(seed);
  if (choices.oneIn(3)) return LLVMFuzzerMutate(data, size, capacity);
  if (choices.oneIn(40)) {
    std::string text;
    TextWriter(choices, text).text();
    return copyTo(text, data, capacity);
  }
  Statements statements = statementsOf(view(data, size));
  for (std::size_t i = 1 + choices.below(3); i > 0; --i) changeStatements(choices, statements);
  return copyTo(joined(statements), data, capacity);
}

// Joins the first statements of one text and the last statements of the other.
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data1, std::size_t size1,
                                      const std::uint8_t* data2, std::size_t size2,
                                      std::uint8_t* out, std::size_t capacity, unsigned seed) {
  Choices choices(seed);
  Statements statements = statementsOf(view(data1, size1));
  statements.resize(choices.below(statements.size() + 1));
  const Statements others = statementsOf(view(data2, size2));
  const auto from = static_cast<std::ptrdiff_t>(choices.below(others.size() + 1));
  statements.insert(statements.end(), others.begin() + from, others.end());
  return copyTo(joined(statements), out, capacity);
}
