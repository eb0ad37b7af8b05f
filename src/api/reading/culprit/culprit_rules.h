// The rules by which the culprit of a mistake is found: one for each kind of mistake. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "api/reading/culprit/culprit_finder.h"
#include "api/reading/culprit/number_fields.h"
#include "api/reading/culprit/statement_tokens.h"

namespace vsa {

/// Whether a token of that type may stand in an input path.
bool isPathToken(StatementTokens::Type type);

/// The parts of an assignment: `path "=" value ";"` or `path "|" "=" source ";"`, as far as it
/// goes.
struct Assignment {
  explicit Assignment(const StatementTokens& tokens);

  std::size_t pathEnd = 0;  // the token behind the path
  std::size_t value = 0;    // the first token of the value
  std::size_t valueEnd = 0;
};

class CulpritRules {
 public:
  using Found = std::optional<Culprit>;

  CulpritRules(const Mistake& mistake, const StatementTokens& tokens)
      : mistake_(mistake), tokens_(tokens), parts_(tokens) {}

  Found find() const;

 private:
  Found whole(std::size_t token) const { return tokens(token, token + 1); }
  Found tokens(std::size_t begin, std::size_t end) const;
  Found placeBehind(std::size_t token) const;
  Found tokenOrPlace(std::size_t token) const;
  Found opening(std::size_t token) const;
  Found value() const { return tokens(parts_.value, parts_.valueEnd); }
  Found path() const { return tokens(0, parts_.pathEnd); }
  Found number(std::size_t list, const NumberField& field) const;

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

  // Whether the text ends inside the token, a string or a list.
  bool isCutOff(std::size_t token) const {
    return tokens_[token].type == StatementTokens::Type::Eof &&
           tokens_[token].text.startsWith("UNEXPECTED", false);
  }
  bool expects(std::string_view what) const {
    return mistake_.message.starts_with("expected '" + std::string(what) + "'");
  }
  bool isOnLaterLine(std::size_t token) const {
    return token > 0 && tokens_[token].firstLine > tokens_[token - 1].lastLine;
  }
  std::size_t firstInput() const { return tokens_[0].type == StatementTokens::Type::Dot ? 1 : 2; }
  std::size_t pathTokenBehind(std::string_view inputPath) const;

  const Mistake& mistake_;
  const StatementTokens& tokens_;
  const Assignment parts_;
};

}  // namespace vsa
