// Long lists as several short ones, so that a reading needs no memory for a long list.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include <vsa/scene/data_type.h>
#include <vsa/syntax.h>

namespace vsa_tools {

/// Delivers the text of another source. A long buffer literal is delivered as several assignments,
/// `a.b = float[65536] {...};` one after another, which together have its numbers and its count: a
/// reading of them succeeds or fails as that of the literal does. After each buffer, long or not,
/// comes an assignment of an empty one, so that the scene keeps no elements. All other tokens stay
/// the same. Comments and white space between tokens may have other places, so positions are not
/// those of the text. What is delivered depends on the tokens only.
class ShortListSource final : public vsa::Source {
 public:
  /// `source` must outlive the last read.
  explicit ShortListSource(vsa::Source& source) : source_(source), reader_(source) {}

  std::size_t read(std::span<char> to) override;
  std::string error() const override { return source_.error(); }

 private:
  void add(const vsa::SyntaxToken& token);
  void addToken(const vsa::SyntaxToken& token, bool beginsBuffer);
  void endToken(const vsa::SyntaxToken& token);
  void flush();
  bool beginBuffer();
  bool mustSplit(const vsa::SyntaxToken& token) const;
  void beginSplitting();
  void addElements(const vsa::SyntaxToken& token);
  void addParts(std::string_view text);
  void addPlainNumbers(std::string_view numbers);
  void addNumber(std::string_view text, bool continues);
  void endElement();

  vsa::Source& source_;
  vsa::SyntaxReader reader_;
  bool isEnded_ = false;
  std::string out_;  // from `taken_` on: to be delivered
  std::size_t taken_ = 0;

  bool isWhole_ = true;        // all tokens of the statement are in `statement_`
  std::string statement_;      // the tokens of the statement, as far as they are kept
  std::size_t wordBegin_ = 0;  // in it: the last word
  std::size_t lastBegin_ = 0;  // in it: the last token
  vsa::SyntaxKind last_ = vsa::SyntaxKind::EndOfText;
  bool isCounted_ = false;   // the last tokens are a word and brackets
  bool isBuffer_ = false;    // the last token is the list of a buffer
  bool endsBuffer_ = false;  // the last token is the semicolon after that

  // The last buffer.
  zn::korvo_sdk::DataType type_ = zn::korvo_sdk::DataType::Null;
  std::string prefix_;           // its statement up to its keyword
  std::uint64_t remaining_ = 0;  // elements that are declared and not delivered

  // While its list is split.
  bool isSplitting_ = false;
  vsa::ListReader list_;
  std::string numbers_;            // of the next assignment
  std::uint64_t numberCount_ = 0;  // in it
  std::uint64_t maxNumbers_ = 0;   // of an assignment
};

}  // namespace vsa_tools
