// RangeRules: finds the source range of a problem by a rule for each kind of problem. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "api/reading/source_range/number_fields.h"
#include "api/reading/source_range/range_finder.h"
#include "api/reading/source_range/statement_tokens.h"

namespace vsa {

/// Whether an input path may contain a token of this type.
bool isPathToken(StatementTokens::Type type);

/// The parts of an assignment, `path "=" value ";"` or `path "|" "=" source ";"`. Parts that the
/// tokens do not contain are empty.
struct Assignment {
  explicit Assignment(const StatementTokens& tokens);

  std::size_t pathEnd = 0;  // the index of the token after the path
  std::size_t value = 0;    // the index of the first token of the value
  std::size_t valueEnd = 0;
};

class RangeRules {
 public:
  using Found = std::optional<SourceRange>;

  RangeRules(const Problem& problem, const StatementTokens& tokens)
      : problem_(problem), tokens_(tokens), parts_(tokens) {}

  Found find() const;

 private:
  Found whole(std::size_t token) const { return tokens(token, token + 1); }
  Found tokens(std::size_t begin, std::size_t end) const;
  Found placeAfter(std::size_t token) const;
  Found tokenOrPlace(std::size_t token) const;
  Found opening(std::size_t token) const;
  Found value() const { return tokens(parts_.value, parts_.valueEnd); }
  Found path() const { return tokens(0, parts_.pathEnd); }
  Found number(std::size_t list, const NumberField& field) const;
  Found statement() const;

  Found invalidCharacter() const;
  Found numberWith(const StatementTokens::Item& invalid, std::uint64_t at) const;
  Found badToken() const;
  bool opensBlock(std::size_t token) const;
  bool isCommentInList(std::size_t token, std::uint64_t at) const;
  Found missingSemicolon(std::size_t found) const;
  bool beginsStatement(std::size_t token) const;
  Found wrongList(std::size_t found) const;
  Found badValue(std::size_t found) const;
  Found badTuple() const;
  Found unrecognized() const;
  std::size_t tokensThatFit(std::size_t head) const;
  Found typeClash() const;
  Found badIndex() const;
  Found surplusNumber() const;
  Found unreadableNumber() const;
  Found overLimit() const;

  // Whether `noticed` is the start of the statement, as for a link, which is resolved later.
  bool isNoticedBeforeStatement() const { return problem_.noticed <= tokens_[0].begin; }
  bool expects(std::string_view what) const {
    return problem_.diagnostic.argument("expected") == what;
  }
  bool isOnLaterLine(std::size_t token) const {
    return token > 0 && tokens_[token].firstLine > tokens_[token - 1].lastLine;
  }
  std::size_t firstInput() const { return tokens_[0].type == StatementTokens::Type::Dot ? 1 : 2; }
  std::size_t pathTokenAfter(std::string_view inputPath) const;

  const Problem& problem_;
  const StatementTokens& tokens_;
  const Assignment parts_;
};

}  // namespace vsa
