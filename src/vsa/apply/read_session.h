// ReadSession: the limits, counts and ownership of one reading through the public API. Internal.
//
// The plain entry points attach no session: the parser then tests one null pointer for each hook.
// With a session, the parser calls it before it allocates memory and before it assigns a value.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>
#include "vsa/apply/assign_info.h"
#include "vsa/lex/statement_scanner.h"

namespace zn::korvo_sdk::impl {

/// Thrown to end a reading without a message of the parser: cancelled, or over a limit. It is not a
/// std::exception, so that no handler treats it as an error of the host.
struct ReadStopped {};

/// Position of a token's last character. Zero before the first token.
struct TextPlace {
  std::int32_t line = 0;
  std::int32_t column = 0;

  bool operator==(const TextPlace&) const = default;
};

class ReadSession {
 public:
  enum class Budget : std::uint8_t { Nodes, Elements, Depth, Memory };
  /// Why a buffer is left out.
  enum class Refusal : std::uint8_t {
    BufferBytes,   ///< It is larger than the limit for one buffer.
    Memory,        ///< It is larger than the remaining memory.
    BuffersInAll,  ///< All buffers so far and this one are larger than their limit.
  };

  /// Upper bounds. Memory is in bytes, depth in levels of inputs.
  struct Limits {
    static constexpr std::uint64_t NONE = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t nodes = NONE;
    std::uint64_t elements = NONE;
    std::uint64_t depth = NONE;
    std::uint64_t bufferBytes = NONE;
    std::uint64_t memory = NONE;
  };

  struct Counts {
    std::uint64_t statements = 0;
    std::uint64_t nodes = 0;
    std::uint64_t elements = 0;
    std::uint64_t values = 0;
    std::uint64_t links = 0;  ///< Links whose resolution has started.
  };

  ReadSession() = default;
  ReadSession(const ReadSession&) = delete;
  ReadSession& operator=(const ReadSession&) = delete;

  Limits limits;
  Counts counts;
  /// Buffer literals are not converted. Their type and count are passed to keepSkipped.
  bool skipsBuffers = false;
  /// Values and links of the nodes for which isDroppedNode is true are not kept.
  bool dropsNodes = false;
  /// The limit of memory is the default. It grows by the bytes that compressed literals expand to.
  /// It also bounds the sum of all buffers of the text, replaced ones included, because clearing
  /// their memory takes time.
  bool isDefaultMemory = false;

  // The position of the parser, for diagnostics.

  /// The position of the token before the current statement. During the resolution of a link, it is
  /// the position of the token before the link's statement.
  TextPlace statement() const noexcept { return statement_; }
  /// Whether links are being resolved.
  bool isResolving() const noexcept { return isResolving_; }
  /// The input whose link is being resolved; otherwise null.
  interfaces::IInput* link() const noexcept { return link_; }
  /// The current statement if it is an assignment whose path was read; otherwise null.
  const AssignInfo* assignment() const noexcept {
    if (simple_ == nullptr) return assignment_;
    return simple_->isAssignment() ? simpleInfo_ : nullptr;
  }
  /// The path of `assignment()`; empty if that is null.
  std::span<const Token> path() const noexcept {
    if (simple_ == nullptr) return path_;
    return simple_->isAssignment() ? simple_->path() : std::span<const Token>();
  }

  // The parser calls these functions. Those that count memory throw ReadStopped if a limit does not
  // allow it.

  /// Called before a statement is read from its tokens. A statement that was counted already,
  /// because it began as a simple one, is not counted again.
  void beginStatement(std::int32_t line, std::int32_t column) {
    const bool isAgain = counts.statements != 0 && TextPlace{line, column} == statement_;
    if (isAgain) --counts.statements;
    endAssignment();
    dropValue();
    countStatement(line, column);
  }
  /// Called before the first statement. `info` has the values of simple statements.
  void beginText(const AssignInfo& info) noexcept {
    simpleInfo_ = &info;
    remaining_ = limits.memory;
  }
  /// Like beginStatement, for a simple statement. `statement` must not change until the next
  /// statement begins. Returns false and has no effect if the statement may exceed a limit before
  /// it calls the scene.
  bool beginSimple(const SimpleStatement& statement, std::int32_t line, std::int32_t column) {
    if (statement.value.size() > remaining_ || limits.depth != Limits::NONE) return false;
    simple_ = &statement;
    countStatement(line, column);
    return true;
  }
  /// `info` and `path` must not change until the next statement begins.
  void beginAssignment(const AssignInfo& info, std::span<const Token> path) {
    assignment_ = &info;
    path_ = path;
    if (limits.depth != Limits::NONE && inputsOnPath() > limits.depth) exceed(Budget::Depth);
  }
  void endAssignment() noexcept {
    simple_ = nullptr;
    assignment_ = nullptr;
    path_ = {};
  }
  /// `node` is the node on the left-hand side of the assignment.
  void beginTarget(interfaces::INode& node) {
    if (dropsNodes) isDropped_ = isDroppedNode(node);
  }
  void beginResolution() noexcept {
    dropValue();
    endAssignment();
    isResolving_ = true;
  }
  void beginLink(interfaces::IInput& input, TextPlace place) {
    link_ = &input;
    statement_ = place;
    if (++counts.links % LINKS_PER_POLL == 0) poll();
  }

  /// Called before a node is created. `nameBytes`: the size of its type and its name.
  void chargeNode(std::uint64_t nameBytes) {
    if (counts.nodes >= limits.nodes) exceed(Budget::Nodes);
    charge(NODE_BYTES + nameBytes);
  }
  void chargeInput(std::uint64_t nameBytes) { charge(INPUT_BYTES + nameBytes); }
  void chargeElement() {
    if (counts.elements >= limits.elements) exceed(Budget::Elements);
    charge(INPUT_BYTES);
    ++counts.elements;
  }
  /// Called before a link is stored. `sourceBytes`: the size of the source in the text.
  void chargeLink(interfaces::IInput& input, std::uint64_t sourceBytes) {
    charge(LINK_BYTES + sourceBytes);
    if (isDropped_) dropLink(input);
  }
  void chargeText(std::uint64_t bytes) { charge(TEXT_BYTES + bytes); }
  /// Called when type, count and size of a buffer are known, before its memory is allocated.
  /// Returns whether it may be allocated. If not, the input gets an empty buffer of the type.
  /// `expandedBytes`: an upper bound of the size of a decompressed text; 0 for a list.
  bool chargeBuffer(AssignInfo& info, std::uint64_t expandedBytes);
  /// Called when the compressed text of the buffer was decompressed to `length` bytes. If these are
  /// too few to justify the memory of the buffer, frees it and makes the buffer empty.
  void endBuffer(AssignInfo& info, std::uint64_t length);

  /// Takes ownership of the memory of a value until it is assigned. `memory` is from malloc or
  /// calloc.
  void hold(void* memory, std::uint64_t bytes) noexcept {
    dropValue();
    held_ = memory;
    heldBytes_ = bytes;
  }
  /// Called regularly while a long value is converted. May throw ReadStopped.
  void continueValue() { poll(); }
  /// Called right before the value is assigned to `input`, which takes ownership of its memory.
  void transferValue(interfaces::IInput& input, AttrData& value) {
    if (held_ != nullptr || isDropped_ || value.type == AttrType::Buffer) {
      return transferMemory(input, value);
    }
    ++counts.values;
  }
  /// Called when the value is not assigned: frees its memory.
  void discardValue() noexcept { dropValue(); }

  /// Whether the link from `input` to `node` is kept. Otherwise the input is cleared.
  bool mayLink(interfaces::IInput& input, interfaces::INode& node) {
    return !dropsNodes || isKeptLink(input, node);
  }

  /// Whether the input does not accept a reference because its type is not Null or Node. False for
  /// an input of a host's scene.
  bool refusesNodes(interfaces::IInput& input) {
    const AttrType type = input.type();
    return type != AttrType::Null && type != AttrType::Node && isOfLibrary(input);
  }

  /// Makes the buffer of an unconverted literal empty, and keeps its count for keepSkipped.
  void skipBuffer(AssignInfo& info);

  /// The bytes counted for the reading that are still in use.
  std::uint64_t memory() const noexcept { return limits.memory - remaining_; }
  /// Counts memory that will be allocated.
  void charge(std::uint64_t bytes) {
    if (bytes > remaining_) [[unlikely]]
      overcharge(bytes);
    remaining_ -= bytes;
  }
  /// Throws ReadStopped if `bytes` of temporary memory would exceed the limit. Does not count them.
  void requireMemory(std::uint64_t bytes) {
    if (bytes > remaining_ && limits.memory != Limits::NONE) [[unlikely]]
      exceed(Budget::Memory);
  }

 protected:
  ~ReadSession() { dropValue(); }

  /// Raises the limit of memory.
  void raiseMemory(std::uint64_t bytes) noexcept;

  /// Throws ReadStopped.
  [[noreturn]] virtual void exceed(Budget budget) = 0;
  /// Called every few statements and links.
  virtual void poll() = 0;
  /// The bytes of the value of `input`, which the input frees when another value is assigned.
  virtual std::uint64_t bytesHeldBy(interfaces::IInput& input) = 0;
  /// Called right before a skipped buffer literal of `count` elements is assigned to `input`.
  virtual void keepSkipped(interfaces::IInput& input, const AssignInfo& info,
                           std::uint64_t count) = 0;
  /// Reports a buffer that is left out.
  virtual void refuse(Refusal refusal, const AssignInfo& info) = 0;
  // Except `isOfLibrary`, these are called only if `dropsNodes` is set.
  virtual bool isDroppedNode(interfaces::INode& node) = 0;
  virtual void dropLink(interfaces::IInput& input) = 0;
  /// Whether the input belongs to a scene of the library.
  virtual bool isOfLibrary(interfaces::IInput& input) = 0;
  virtual bool isKeptLink(interfaces::IInput& input, interfaces::INode& node) = 0;

 private:
  static constexpr std::uint64_t STATEMENTS_PER_POLL = 64;
  static constexpr std::uint64_t LINKS_PER_POLL = 1024;
  // The memory of each object in the library's scene, including its slots in lists and tables.
  static constexpr std::uint64_t NODE_BYTES = 96;
  static constexpr std::uint64_t INPUT_BYTES = 64;
  static constexpr std::uint64_t LINK_BYTES = 64;
  static constexpr std::uint64_t TEXT_BYTES = 32;
  // The memory of a replaced value is subtracted only if the new one has at least this size.
  static constexpr std::uint64_t MIN_REPLACED_BYTES = 256;

  void dropValue() noexcept {
    if (held_ != nullptr) freeValue();
  }
  void freeValue() noexcept;
  void transferMemory(interfaces::IInput& input, AttrData& value);
  void overcharge(std::uint64_t bytes);
  bool admitsBuffer(const AssignInfo& info);
  void release(std::uint64_t bytes) noexcept;
  void countStatement(std::int32_t line, std::int32_t column) {
    statement_ = {line, column};
    if (++counts.statements % STATEMENTS_PER_POLL == 0) poll();
  }
  // The number of names and indices in the path, without the node's name.
  std::uint64_t inputsOnPath() const noexcept;

  TextPlace statement_;
  interfaces::IInput* link_ = nullptr;
  const SimpleStatement* simple_ = nullptr;  // the current statement if simple, otherwise null
  const AssignInfo* simpleInfo_ = nullptr;
  const AssignInfo* assignment_ = nullptr;  // the current assignment if it is not simple
  std::span<const Token> path_;
  void* held_ = nullptr;
  std::uint64_t heldBytes_ = 0;
  std::uint64_t remaining_ = 0;     // bytes of limits.memory that are not counted yet
  std::uint64_t bufferBytes_ = 0;   // size of all buffers of the text so far
  std::uint64_t raisedBytes_ = 0;   // the increase of the limit of memory for the last buffer
  std::uint64_t skippedCount_ = 0;  // number of elements of the skipped buffer
  bool isResolving_ = false;
  bool isDropped_ = false;  // the node of the current assignment is not kept
};

}  // namespace zn::korvo_sdk::impl
