// ReadSession: the limits, counts and ownership of one reading through the public API. Internal.
//
// The plain entry points attach none: the parser then tests one null pointer for each hook. With a
// session, the parser calls it before it takes memory and before it hands a value to the scene.
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
  /// Why a buffer is left out: it, or it and those before it, are larger than a limit.
  enum class Refusal : std::uint8_t { BufferBytes, Memory, BuffersInAll };

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
    std::uint64_t links = 0;  ///< Links whose resolution has begun.
  };

  ReadSession() = default;
  ReadSession(const ReadSession&) = delete;
  ReadSession& operator=(const ReadSession&) = delete;

  Limits limits;
  Counts counts;
  bool skipsBuffers = false;  ///< Buffer literals are described and not converted.
  bool dropsNodes = false;    ///< Values and links of some nodes are not kept.
  /// The limit of memory grows by what literals expand to, and bounds the buffers of the text in
  /// all, replaced ones included: each costs the time to clear its memory.
  bool isDefaultMemory = false;

  // Where the parser is. For diagnostics.

  /// The token consumed last before the current statement; for a link being resolved, before the
  /// statement of the link.
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
  /// Its path; empty if there is none.
  std::span<const Token> path() const noexcept {
    if (simple_ == nullptr) return path_;
    return simple_->isAssignment() ? simple_->path() : std::span<const Token>();
  }

  // The parser calls these. Those that take memory throw ReadStopped before it is taken.

  /// Called twice for a statement that the parser reads again, from its tokens: it counts once.
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
  /// The same for a simple statement, which was not begun before and stays as it is until the next
  /// one begins. Returns false, and begins nothing, if it may meet a limit before it calls the
  /// scene.
  bool beginSimple(const SimpleStatement& statement, std::int32_t line, std::int32_t column) {
    if (statement.value.size() > remaining_ || limits.depth != Limits::NONE) return false;
    simple_ = &statement;
    countStatement(line, column);
    return true;
  }
  /// Both stay as they are until the next statement begins.
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
  /// The node that the assignment is for.
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

  /// `nameBytes`: of type and name together.
  void takeNode(std::uint64_t nameBytes) {
    if (counts.nodes >= limits.nodes) exceed(Budget::Nodes);
    charge(NODE_BYTES + nameBytes);
  }
  void takeInput(std::uint64_t nameBytes) { charge(INPUT_BYTES + nameBytes); }
  void takeElement() {
    if (counts.elements >= limits.elements) exceed(Budget::Elements);
    charge(INPUT_BYTES);
    ++counts.elements;
  }
  /// `sourceBytes`: of the source as it is written.
  void takeLink(interfaces::IInput& input, std::uint64_t sourceBytes) {
    charge(LINK_BYTES + sourceBytes);
    if (isDropped_) dropLink(input);
  }
  void takeText(std::uint64_t bytes) { charge(TEXT_BYTES + bytes); }
  /// Called when type, count and size of a buffer are known, before its memory is taken. Returns
  /// whether it may be. If not, the input gets a buffer of the type without elements.
  /// `expandedBytes`: an upper bound of what its compressed text expands to; 0 for a list.
  bool takeBuffer(AssignInfo& info, std::uint64_t expandedBytes);
  /// Called when the compressed text of the buffer has expanded to `length` bytes, which may be too
  /// few for the memory that it took. The buffer then becomes one without elements.
  void endBuffer(AssignInfo& info, std::uint64_t length);

  /// Owns the memory of a value until an input takes it. `memory` came from malloc or calloc.
  void hold(void* memory, std::uint64_t bytes) noexcept {
    dropValue();
    held_ = memory;
    heldBytes_ = bytes;
  }
  /// Called from time to time while a long value is converted. May throw ReadStopped.
  void continueValue() { poll(); }
  /// Called right before the value is assigned to `input`, which owns its memory then.
  void handOver(interfaces::IInput& input, AttrData& value) {
    if (held_ != nullptr || isDropped_ || value.type == AttrType::Buffer) {
      return handOverMemory(input, value);
    }
    ++counts.values;
  }
  /// Called when the value is not assigned: frees its memory.
  void refuseValue() noexcept { dropValue(); }

  /// Whether a link between the two is to be made. Otherwise the input is cleared.
  bool mayLink(interfaces::IInput& input, interfaces::INode& node) {
    return !dropsNodes || isKeptLink(input, node);
  }

  /// Whether the input is known to take no reference, because it has a value of another type.
  bool refusesNodes(interfaces::IInput& input) {
    const AttrType type = input.type();
    return type != AttrType::Null && type != AttrType::Node && isOfLibrary(input);
  }

  /// Describes a buffer literal that is not converted.
  void skipBuffer(AssignInfo& info);

  /// Bytes that the reading has taken and that are still in use, as far as they are known.
  std::uint64_t memory() const noexcept { return limits.memory - remaining_; }
  /// Counts memory that the reading is about to take.
  void charge(std::uint64_t bytes) {
    if (bytes > remaining_) [[unlikely]]
      overcharge(bytes);
    remaining_ -= bytes;
  }
  /// Throws ReadStopped if `bytes` more, which are needed for a while, go over the limit.
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
  /// Bytes of the value that `input` holds and will free when it is given another.
  virtual std::uint64_t bytesHeldBy(interfaces::IInput& input) = 0;
  /// A buffer literal of `count` elements that is skipped is about to be assigned to `input`.
  virtual void keepSkipped(interfaces::IInput& input, const AssignInfo& info,
                           std::uint64_t count) = 0;
  /// Reports a buffer that is left out.
  virtual void refuse(Refusal refusal, const AssignInfo& info) = 0;
  // For `dropsNodes`.
  virtual bool isDroppedNode(interfaces::INode& node) = 0;
  virtual void dropLink(interfaces::IInput& input) = 0;
  /// Whether the input belongs to a scene of the library.
  virtual bool isOfLibrary(interfaces::IInput& input) = 0;
  virtual bool isKeptLink(interfaces::IInput& input, interfaces::INode& node) = 0;

 private:
  static constexpr std::uint64_t STATEMENTS_PER_POLL = 64;
  static constexpr std::uint64_t LINKS_PER_POLL = 1024;
  // What the library's scene takes for each, with its place in lists and tables.
  static constexpr std::uint64_t NODE_BYTES = 96;
  static constexpr std::uint64_t INPUT_BYTES = 64;
  static constexpr std::uint64_t LINK_BYTES = 64;
  static constexpr std::uint64_t TEXT_BYTES = 32;
  // A shorter string does not subtract the memory of the value that it replaces.
  static constexpr std::uint64_t MIN_REPLACED_BYTES = 256;

  void dropValue() noexcept {
    if (held_ != nullptr) freeValue();
  }
  void freeValue() noexcept;
  void handOverMemory(interfaces::IInput& input, AttrData& value);
  void overcharge(std::uint64_t bytes);
  bool admitsBuffer(const AssignInfo& info);
  void release(std::uint64_t bytes) noexcept;
  void countStatement(std::int32_t line, std::int32_t column) {
    statement_ = {line, column};
    if (++counts.statements % STATEMENTS_PER_POLL == 0) poll();
  }
  // All names and indices on the path but the node's name.
  std::uint64_t inputsOnPath() const noexcept;

  TextPlace statement_;
  interfaces::IInput* link_ = nullptr;
  const SimpleStatement* simple_ = nullptr;  // the current statement, if it is simple
  const AssignInfo* simpleInfo_ = nullptr;
  const AssignInfo* assignment_ = nullptr;  // of a statement that is not simple
  std::span<const Token> path_;
  void* held_ = nullptr;
  std::uint64_t heldBytes_ = 0;
  std::uint64_t remaining_ = 0;     // of limits.memory
  std::uint64_t bufferBytes_ = 0;   // of all buffers of the text
  std::uint64_t raisedBytes_ = 0;   // what the limit of memory grew by for the last buffer
  std::uint64_t skippedCount_ = 0;  // elements of the buffer that is skipped
  bool isResolving_ = false;
  bool isDropped_ = false;  // the node of the current assignment is not kept
};

}  // namespace zn::korvo_sdk::impl
