#include "tools/vsa/merge/definitions.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace vsa_tools {

using vsa::SyntaxKind;
using vsa::SyntaxToken;

namespace {

// Returns whether a word is the directive `define`, in any letter case.
bool isDefineWord(std::string_view word) {
  constexpr std::string_view DEFINE = "define";
  if (word.size() != DEFINE.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if ((word[i] | 0x20) != DEFINE[i]) return false;
  }
  return true;
}

// Continues the FNV-1a hash `hash`.
std::uint64_t continuedHash(std::string_view bytes, std::uint64_t hash) {
  for (const char byte : bytes) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  }
  return hash;
}

}  // namespace

bool canShare(const Definition& a, const Definition& b) {
  return a.isEmpty || b.isEmpty || (a.hash == b.hash && !a.appends);
}

void moveLinked(const Definitions& definitions, std::set<std::string>& shared,
                std::set<std::string>& clashes) {
  std::multimap<std::string, std::string> usersOf;  // the names in `shared` by the nodes they use
  for (const std::string& name : shared) {
    for (const std::string& word : definitions.at(name).firstWords) usersOf.emplace(word, name);
  }
  std::vector<std::string> added(clashes.begin(), clashes.end());
  while (!added.empty()) {
    const std::string clash = std::move(added.back());
    added.pop_back();
    const auto [begin, end] = usersOf.equal_range(clash);
    for (auto user = begin; user != end; ++user) {
      if (shared.erase(user->second) == 0) continue;
      clashes.insert(user->second);
      added.push_back(user->second);
    }
  }
}

void DefinitionReader::add(const SyntaxToken& token) {
  if (token.kind == SyntaxKind::Comment || token.kind == SyntaxKind::EndOfText) return;
  if (definition_ == nullptr && index_ < 2) begin(token);
  if (definition_ != nullptr) addToAssignment(token);
  if (!token.isLast) return;
  isFirstOfValue_ = token.is('=');
  ++index_;
  if (token.is(';') || token.is(':')) end(token);
}

// Receives a piece of the first or second token of a statement.
void DefinitionReader::begin(const SyntaxToken& token) {
  if (token.kind == SyntaxKind::Word) {
    (index_ == 0 ? first_ : second_) += token.text;
  } else if (token.is('.')) {
    beginAssignment(index_ == 0 ? withNode_ : first_);
  }
}

void DefinitionReader::beginAssignment(const std::string& node) {
  constexpr std::uint64_t FNV_OFFSET = 0xCBF29CE484222325;
  const auto found = definitions_.find(node);
  if (found == definitions_.end()) return;
  definition_ = &found->second;
  if (!definition_->isEmpty) return;
  definition_->isEmpty = false;
  definition_->hash = FNV_OFFSET;
}

void DefinitionReader::addToAssignment(const SyntaxToken& token) {
  const bool isIndex = token.kind == SyntaxKind::Brackets;
  if (isIndex && token.text.find('*') != std::string_view::npos) definition_->appends = true;
  if (isFirstOfValue_ && token.kind == SyntaxKind::Word) {
    firstWord_ += token.text;
    if (token.isLast) definition_->firstWords.insert(std::exchange(firstWord_, {}));
  }
  bytes_.beginPiece(token);
  while (!bytes_.numbers().empty()) {
    hashBytes();
    bytes_.moveNumbers(std::size_t{1} << 16);
  }
  hashBytes();
  bytes_.endPiece();
  hashBytes();
}

void DefinitionReader::hashBytes() {
  definition_->hash = continuedHash(bytes_.bytes(), definition_->hash);
  bytes_.take(bytes_.bytes().size());
}

void DefinitionReader::end(const SyntaxToken& token) {
  const bool isDirective = index_ == 3 && !first_.empty() && !second_.empty();
  if (isDirective && token.is(':')) withNode_ = second_;
  if (isDirective && token.is(';') && isDefineWord(first_)) definitions_.try_emplace(second_);
  index_ = 0;
  first_.clear();
  second_.clear();
  definition_ = nullptr;
}

}  // namespace vsa_tools
