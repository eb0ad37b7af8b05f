// Long lists as several short ones, so that a reading needs no memory for a long list.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <vsa/read.h>
#include <vsa/syntax.h>

namespace vsa_tools {

/// Delivers the text of another source. A long buffer literal is delivered as several assignments,
/// `a.b = float[65536] {...};` one after another, which together have its numbers and its count: a
/// reading of them succeeds or fails as that of the literal does. All other tokens stay the same.
/// Comments and white space between tokens may have other places, so positions are not those of the
/// text.
class ShortListSource final : public vsa::Source {
 public:
  /// `source` must outlive the last read.
  explicit ShortListSource(vsa::Source& source) : source_(source), reader_(source) {}

  std::size_t read(std::span<char> to) override;
  std::string error() const override { return source_.error(); }

 private:
  void add(const vsa::SyntaxToken& token);
  void addToken(const vsa::SyntaxToken& token);
  bool beginList(const vsa::SyntaxToken& token);
  void addElements(const vsa::SyntaxToken& token);
  void endElement();
  void flush();

  vsa::Source& source_;
  vsa::SyntaxReader reader_;
  bool isEnded_ = false;
  std::string out_;  // from `taken_` on: to be delivered
  std::size_t taken_ = 0;

  bool isWhole_ = true;          // all tokens of the statement are in `statement_`
  std::string statement_;        // the tokens of the statement, as far as they are kept
  std::size_t prefixBytes_ = 0;  // of them, those before the brackets
  std::string keyword_;          // the last word
  std::string count_;            // the brackets behind it

  // While a list is split.
  bool isSplitting_ = false;
  vsa::ListReader list_;
  std::string prefix_;             // the statement up to its keyword
  std::string numbers_;            // of the next assignment
  std::uint64_t numberCount_ = 0;  // in it
  std::uint64_t maxNumbers_ = 0;   // of an assignment
  std::uint64_t components_ = 1;
  std::uint64_t remaining_ = 0;  // elements that are declared and not delivered
};

}  // namespace vsa_tools
