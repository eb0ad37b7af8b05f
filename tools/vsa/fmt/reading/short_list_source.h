// A text in parts with short lists, so that a reading needs little memory.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include <vsa/scene/data_type.h>
#include <vsa/syntax.h>
#include "tools/vsa/fmt/reading/declared_nodes.h"

namespace vsa_tools {

/// Delivers the text of another source. A long buffer literal is delivered as several assignments,
/// `a.b = float[65536] {...};` one after another, which together have its numbers and its count: a
/// reading of them succeeds or fails as that of the literal does. After each buffer, long or not,
/// comes an assignment of an empty one, so that the scene keeps no elements. A buffer that is
/// appended to an array, `a.b[*] = ...`, stays as it is. All other tokens stay the same. Comments
/// and white space between tokens have other places, so positions are not those of the text.
///
/// A long text is delivered in parts, each for another scene. A part begins with the declaration of
/// a node. The text ends early at a statement that changes a node of an earlier part, because
/// whether it succeeds may depend on what that part assigned.
///
/// The delivered text depends on the tokens only.
class ShortListSource final : public vsa::Source {
 public:
  /// The scene of a part of this size takes 35 MB if the text has small nodes, and 50 MB if it has
  /// links.
  static constexpr std::uint64_t PART_BYTES = 16 << 20;

  /// `source` must outlive the last read. A part that is as long as `partBytes` ends before the
  /// next declaration.
  explicit ShortListSource(vsa::Source& source, std::uint64_t partBytes = PART_BYTES)
      : source_(source), reader_(source), maxPartBytes_(partBytes) {}

  /// Returns 0 at the end of the part.
  std::size_t read(std::span<char> to) override;
  /// Continues with the next part. Returns false if there is none, or if the current part was not
  /// read to its end.
  bool nextPart();
  /// Whether the text ended early.
  bool endedEarly() const { return endedEarly_; }
  std::string error() const override { return source_.error(); }

 private:
  void add(const vsa::SyntaxToken& token);
  void addToken(const vsa::SyntaxToken& token, bool beginsBuffer);
  void endToken(const vsa::SyntaxToken& token);
  void endBeginning(const vsa::SyntaxToken& token);
  void endDeclaration(bool isWith);
  void endStatement();
  void change(std::string_view node);
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
  std::string out_;  // text of the part; what is after `taken_` is still to be delivered
  std::size_t taken_ = 0;

  std::uint64_t maxPartBytes_;
  bool isPartEnded_ = false;
  std::uint64_t partBytes_ = 0;    // bytes of the part's tokens, apart from list contents
  std::uint64_t bytesBefore_ = 0;  // `partBytes_` at the end of the last statement
  DeclaredNodes nodes_;
  std::string declared_;  // the node that begins the next part
  bool isWithOfEarlierPart_ =
      false;  // whether paths that begin with "." belong to a node of an earlier part
  bool endedEarly_ = false;

  std::size_t tokenCount_ = 0;  // the number of tokens of the statement
  std::size_t firstEnd_ = 0;    // the end of the first token in `statement_`
  std::size_t secondEnd_ = 0;   // the end of the second token; 0 if it is not a word
  char lastChar_ = '\0';        // the last token if it is punctuation
  bool isWhole_ = true;         // whether all tokens of the statement are in `statement_`
  std::string statement_;       // the tokens of the statement that are kept
  std::size_t wordBegin_ = 0;   // the beginning of the last word in `statement_`
  std::size_t lastBegin_ = 0;   // the beginning of the last token in `statement_`
  vsa::SyntaxKind last_ = vsa::SyntaxKind::EndOfText;
  bool isCounted_ = false;   // whether the last tokens are a word and brackets
  bool isBuffer_ = false;    // whether the last token is the list of a buffer
  bool endsBuffer_ = false;  // whether the last token is the semicolon after a buffer

  // The properties of the last buffer.
  zn::korvo_sdk::DataType type_ = zn::korvo_sdk::DataType::Null;
  std::string prefix_;           // the statement of the buffer up to the keyword
  std::uint64_t remaining_ = 0;  // the number of elements that are declared and not delivered

  // The state while the list of that buffer is split.
  bool isSplitting_ = false;
  vsa::ListReader list_;
  std::string numbers_;            // the numbers of the next assignment
  std::uint64_t numberCount_ = 0;  // the number of numbers in `numbers_`
  std::uint64_t maxNumbers_ = 0;   // the maximum number of numbers in an assignment
};

}  // namespace vsa_tools
