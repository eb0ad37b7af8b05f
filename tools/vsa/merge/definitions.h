// DefinitionReader: finds what a text assigns to the nodes of its `define` statements.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>

#include <vsa/syntax.h>
#include "tools/vsa/fmt/comparison/token_bytes.h"

namespace vsa_tools {

/// The assignments of a text to a node that it defines.
struct Definition {
  bool isEmpty = true;
  /// A hash of their tokens, in their order. The name of the node is not part of it, so
  /// `settings.unit = "m";` and `.unit = "m";` have the same hash.
  std::uint64_t hash = 0;
  /// Whether one of them appends an element to an array. Reading it twice appends two elements.
  bool appends = false;
  /// The first words of their values. Among them are the names of all nodes that they link to.
  std::set<std::string> firstWords;
};

/// Definitions by the name of the node.
using Definitions = std::map<std::string, Definition, std::less<>>;

/// Returns whether reading both definitions, one after the other, gives the same node as reading
/// one of them: one is empty, or both have the same tokens and append nothing.
bool canShare(const Definition& a, const Definition& b);

/// Moves names from `shared` to `clashes`: those whose definitions link to a node of `clashes`,
/// also to one that is moved. `definitions` must have all names in `shared`.
void moveLinked(const Definitions& definitions, std::set<std::string>& shared,
                std::set<std::string>& clashes);

/// Receives the tokens of a valid text, one after another.
class DefinitionReader {
 public:
  void add(const vsa::SyntaxToken& token);
  /// The definitions that were read so far.
  const Definitions& definitions() const { return definitions_; }

 private:
  void begin(const vsa::SyntaxToken& token);
  void beginAssignment(const std::string& node);
  void addToAssignment(const vsa::SyntaxToken& token);
  void hashBytes();
  void end(const vsa::SyntaxToken& token);

  Definitions definitions_;
  std::string withNode_;
  // The state of the statement that is read.
  std::size_t index_ = 0;             // the index of the next token
  std::string first_, second_;        // its first two tokens, each empty if it is not a word
  Definition* definition_ = nullptr;  // where the assignment belongs, or null
  TokenBytes bytes_;                  // the tokens of the assignment
  bool isFirstOfValue_ = false;       // whether the next token is the first one after the "="
  std::string firstWord_;             // that token if it is a word
};

}  // namespace vsa_tools
