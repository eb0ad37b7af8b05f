// ShortListSource: delivers a text in parts and with short lists, so that a reading needs little
// memory.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <vsa/read.h>
#include <vsa/scene/data_type.h>
#include <vsa/syntax.h>
#include "tools/vsa/fmt/reading/declared_nodes.h"

namespace vsa_tools {

/// Delivers the text of another source with short lists.
///
/// A long buffer literal is replaced by several assignments such as `a.b = float[65536] {...};`.
/// They have the same numbers and the same total count as the literal. Reading them fails if and
/// only if reading the literal fails. After each buffer, long or short, there is an assignment of
/// an empty buffer, so that the scene keeps no elements. Exceptions: a buffer with a count of 0,
/// with blanks in the brackets of its count, or with more than 1 MiB of its statement before it,
/// and one that is appended to an array, as in `a.b[*] = ...`. They are not changed. A list that
/// begins with a period, as compressed data does, is not split. Comments without "version:" are not
/// delivered, unless they are so long that they come in pieces. The others and the white space
/// between tokens may move, so positions differ from those of the text. All other tokens are the
/// same. The delivered text depends only on the tokens and on the white space in their lists, which
/// changes no element.
///
/// A long text is delivered in parts, and each part must be read into another scene. Each part but
/// the first begins with the declaration of a node. The text ends early at a statement that changes
/// a node of an earlier part: that part may have assigned a value that makes the statement fail.
class ShortListSource final : public vsa::Source {
 public:
  /// The default size of a part. The scene of such a part takes 35 MB if the text has small nodes,
  /// and 50 MB if it has links.
  static constexpr std::uint64_t PART_BYTES = 16 << 20;

  /// Receives the tokens of the original text, one after another. Receives a long token in pieces
  /// (see vsa::SyntaxToken).
  using TokenObserver = std::function<void(const vsa::SyntaxToken&)>;

  /// `source` must outlive the last read. When a part has `partBytes` bytes, it ends before the
  /// next declaration of a node that is not declared yet. `partBytes` counts a list as 32 bytes, a
  /// list that is split and the declaration at the beginning of a later part as none, and adds the
  /// element count of a buffer that is appended to an array. `observer` is called with each token
  /// that is read.
  explicit ShortListSource(vsa::Source& source, std::uint64_t partBytes = PART_BYTES,
                           TokenObserver observer = {})
      : source_(source),
        reader_(source),
        observer_(std::move(observer)),
        maxPartBytes_(partBytes) {}

  /// Returns 0 at the end of the part, and after endedEarly() has become true.
  std::size_t read(std::span<char> to) override;
  /// Begins the next part. Returns false if there is none, or if the current part was not read to
  /// its end.
  bool nextPart();
  /// Whether the text ended at a statement that changes a node of an earlier part.
  bool endedEarly() const { return endedEarly_; }
  std::string error() const override { return source_.error(); }

 private:
  vsa::SyntaxToken next();
  void add(const vsa::SyntaxToken& token);
  void addToken(const vsa::SyntaxToken& token, bool beginsBuffer);
  void endToken(const vsa::SyntaxToken& token);
  void endBeginning(const vsa::SyntaxToken& token);
  void endDeclaration(bool isWith);
  void endStatement();
  void beginStatement();
  void change(std::string_view node);
  void declare(std::string_view node);
  void endPending();
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
  TokenObserver observer_;
  bool isEnded_ = false;
  std::string out_;  // the text of the part: `taken_` bytes of it are delivered
  std::size_t taken_ = 0;

  std::uint64_t maxPartBytes_;
  bool isPartEnded_ = false;
  std::uint64_t partBytes_ = 0;    // the size of the part's tokens, with LIST_BYTES for each list
  std::uint64_t bytesBefore_ = 0;  // the value of `partBytes_` after the last statement
  DeclaredNodes nodes_;
  std::string changed_;               // the last node that a statement of the part changes
  bool isPending_ = false;            // whether `changed_` is declared, but not in `nodes_` yet
  std::size_t pendingBegin_ = 0;      // the size of `out_` before that declaration
  std::string declared_;              // the first node that the next part declares
  bool isWithOfEarlierPart_ = false;  // whether the with node is of an earlier part
  bool endedEarly_ = false;

  std::size_t tokenCount_ = 0;  // the number of tokens of the statement
  std::size_t firstEnd_ = 0;    // the end of the first token, or 0 if it is not a word
  std::size_t secondEnd_ = 0;   // the end of the second token, or 0 unless both are words
  char lastChar_ = '\0';        // the last token if it is punctuation
  bool isWhole_ = true;         // whether `statement_` has all tokens of the statement
  std::string statement_;       // the tokens of the statement that are kept
  std::size_t wordBegin_ = 0;   // the beginning of the last word in `statement_`
  std::size_t lastBegin_ = 0;   // the beginning of the last token in `statement_`
  vsa::SyntaxKind last_ = vsa::SyntaxKind::EndOfText;
  bool isCounted_ = false;   // whether a word and brackets are the last tokens
  bool isBuffer_ = false;    // whether the last token is the list of a buffer
  bool endsBuffer_ = false;  // whether the last token is the semicolon after a buffer

  // The last buffer.
  zn::korvo_sdk::DataType type_ = zn::korvo_sdk::DataType::Null;
  std::string prefix_;           // the text of its statement up to the keyword
  std::uint64_t remaining_ = 0;  // how many declared elements are not delivered yet

  // The state while the list of the last buffer is split.
  bool isSplitting_ = false;
  vsa::ListReader list_;
  std::string numbers_;            // the numbers of the next assignment
  std::uint64_t numberCount_ = 0;  // how many numbers are in `numbers_`
  std::uint64_t maxNumbers_ = 0;   // how many numbers an assignment may have
};

}  // namespace vsa_tools
