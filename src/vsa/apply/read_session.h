// ReadSession: the limits, counts and ownership of one reading through the public API. Internal.
//
// The parser calls the session, for example, when a statement begins, before it allocates memory
// for the scene or for a value, and before it assigns a value. The entry points of the plain
// interface attach no session: the pointer of the parser is null, and it makes none of these calls.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>
#include "vsa/apply/assign_info.h"
#include "vsa/lex/statement_scanner.h"

namespace zn::korvo_sdk::impl {

/// Thrown to end a reading without a message of the parser: the reading was cancelled, it exceeded
/// a limit, or a function of the host threw an exception. ReadStopped is not a std::exception, so
/// that no handler treats it as an error of the host.
struct ReadStopped {};

/// The position of a token's last character. Both members are zero before the first token.
struct TextPlace {
  std::int32_t line = 0;
  std::int32_t column = 0;

  bool operator==(const TextPlace&) const = default;
};

class ReadSession {
 public:
  enum class Budget : std::uint8_t { Nodes, Elements, Depth, Memory };
  /// The reason to refuse a buffer.
  enum class Refusal : std::uint8_t {
    BufferBytes,  ///< The buffer is larger than the limit for one buffer.
    /// The buffer is larger than the memory that is left for buffers, or than its compressed text
    /// justifies (see endBuffer).
    Memory,
    /// This buffer and all buffers before it exceed the limit for all buffers.
    BuffersInAll,
  };

  /// Upper bounds. NONE means that there is no bound. `bufferBytes` (of one buffer) and `memory`
  /// are in bytes. `depth` is in levels of inputs.
  struct Limits {
    static constexpr std::uint64_t NONE = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t nodes = NONE;
    std::uint64_t elements = NONE;
    std::uint64_t depth = NONE;
    std::uint64_t bufferBytes = NONE;
    std::uint64_t memory = NONE;
  };

  struct Counts {
    std::uint64_t statements = 0;  ///< The statements that have begun.
    std::uint64_t nodes = 0;       ///< The nodes that the text has created.
    std::uint64_t elements = 0;    ///< The array elements that the text has appended or tried to.
    std::uint64_t values = 0;      ///< The values given to inputs, without those of dropped nodes.
    std::uint64_t links = 0;       ///< The links whose resolution has started.
  };

  ReadSession() = default;
  ReadSession(const ReadSession&) = delete;
  ReadSession& operator=(const ReadSession&) = delete;

  Limits limits;
  Counts counts;
  /// If true, buffer literals are not converted. keepSkipped receives their type and count.
  bool skipsBuffers = false;
  /// If true, the values and links of the nodes for which isDroppedNode returns true are dropped.
  bool dropsNodes = false;
  /// True if the limit of memory is the default limit. The default limit grows by the bytes that
  /// compressed literals expand to. Seven eighths of it also limit the sum of all buffers in the
  /// text. This sum includes buffers whose value is replaced later: zeroing their memory takes
  /// time, even if the memory is freed afterwards.
  bool isDefaultMemory = false;

  // These functions return the position of the parser, for diagnostics.

  /// The position of the token before the current statement. While a link is resolved: the position
  /// of the token before the statement of the link.
  TextPlace statement() const noexcept { return statement_; }
  /// Whether links are being resolved.
  bool isResolving() const noexcept { return isResolving_; }
  /// The input whose link is being resolved. Null before the first link and after the last link of
  /// each table. Between two links it is the input of the first of them.
  interfaces::IInput* link() const noexcept { return link_; }
  /// The current statement if it is an assignment whose path has been read. Null for any other
  /// statement.
  const AssignInfo* assignment() const noexcept {
    if (simple_ == nullptr) return assignment_;
    return simple_->isAssignment() ? simpleInfo_ : nullptr;
  }
  /// The path of `assignment()`. Empty if `assignment()` is null.
  std::span<const Token> path() const noexcept {
    if (simple_ == nullptr) return path_;
    return simple_->isAssignment() ? simple_->path() : std::span<const Token>();
  }

  // The parser calls the following functions. The functions that count nodes, elements or memory
  // throw ReadStopped if a limit would be exceeded.

  /// Begins a statement that is read from tokens. If the statement has already been counted as a
  /// simple statement, it is not counted again.
  void beginStatement(std::int32_t line, std::int32_t column) {
    const bool isAgain = counts.statements != 0 && TextPlace{line, column} == statement_;
    if (isAgain) --counts.statements;
    endAssignment();
    dropValue();
    countStatement(line, column);
  }
  /// Begins the text, before the first statement. `info` will contain the values of simple
  /// statements.
  void beginText(const AssignInfo& info) noexcept {
    simpleInfo_ = &info;
    remaining_ = limits.memory;
  }
  /// Begins a simple statement. `statement` must not change until the next statement begins.
  /// Returns false and has no effect if a limit might be exceeded before the first call of the
  /// scene: if the value is longer than the remaining memory, or if the depth is limited. The
  /// parser then reads the statement from tokens.
  bool beginSimple(const SimpleStatement& statement, std::int32_t line, std::int32_t column) {
    if (statement.literal.text.size() > remaining_ || limits.depth != Limits::NONE) return false;
    simple_ = &statement;
    countStatement(line, column);
    return true;
  }
  /// Begins an assignment. `info` and `path` must not change until the next statement begins.
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
  /// Tells the session the node on the left-hand side of the assignment, so that it knows whether
  /// to drop the value or link.
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
  /// Ends the last link of a table. Called before the inputs of the table are released.
  void endLinks() noexcept { link_ = nullptr; }

  /// Counts the memory of a node. Called before the node is created. `nameBytes` is the size of its
  /// type and its name, or of its name alone for a `define` statement.
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
  /// Counts the memory of a link. Called before the link is stored. `sourceBytes` is the size of
  /// the link's source. Calls dropLink if the node is dropped.
  void chargeLink(interfaces::IInput& input, std::uint64_t sourceBytes) {
    charge(LINK_BYTES + sourceBytes);
    if (isDropped_) dropLink(input);
  }
  void chargeText(std::uint64_t bytes) { charge(TEXT_BYTES + bytes); }
  /// Counts the memory of a buffer. Called when the type, count and size of the buffer are known,
  /// and before its memory is allocated. Returns whether the memory may be allocated. If the result
  /// is false, the buffer is empty and keeps its type. `expandedBytes` is an upper bound of the
  /// size of the decompressed text. It is 0 for a list of numbers.
  bool chargeBuffer(AssignInfo& info, std::uint64_t expandedBytes);
  /// Corrects a default limit of memory after the compressed text of a buffer was decompressed to
  /// `length` bytes. chargeBuffer has raised this limit by an upper bound of the length. If the
  /// corrected limit is exceeded, reports the buffer, frees its memory and makes it empty.
  void endBuffer(AssignInfo& info, std::uint64_t length);

  /// Takes ownership of the memory of a value until the value is assigned or discarded. `memory`
  /// must be from malloc, calloc or realloc. `bytes` is the size for which it was counted.
  void hold(void* memory, std::uint64_t bytes) noexcept {
    dropValue();
    held_ = memory;
    heldBytes_ = bytes;
  }
  /// Counts the value and passes the ownership of its memory to `input`. If the node is dropped,
  /// frees the memory instead and makes a string or buffer empty. Called directly before the value
  /// is assigned to `input`.
  void transferValue(interfaces::IInput& input, AttrData& value) {
    if (held_ != nullptr || isDropped_ || value.type == AttrType::Buffer) {
      return transferMemory(input, value);
    }
    ++counts.values;
  }
  /// Frees the memory of a value that is not assigned, if there is one.
  void dropValue() noexcept {
    if (held_ != nullptr) freeValue();
  }

  /// Asks the host whether to cancel the reading. Called once per STATEMENTS_PER_POLL statements,
  /// once per LINKS_PER_POLL links, and while a long value is converted. May throw ReadStopped.
  virtual void poll() = 0;

  /// Whether the link from `input` to `node` is kept.
  bool mayLink(interfaces::IInput& input, interfaces::INode& node) {
    return !dropsNodes || isKeptLink(input, node);
  }

  /// Whether the input refuses a reference because its type is neither Null nor Node. Always false
  /// for an input of a host's scene.
  bool refusesNodes(interfaces::IInput& input) {
    const AttrType type = input.type();
    return type != AttrType::Null && type != AttrType::Node && isOfLibrary(input);
  }

  /// Makes a buffer empty and stores its count for keepSkipped. Does not free its memory.
  void skipBuffer(AssignInfo& info);

  /// The bytes that are counted for the reading and not released yet.
  std::uint64_t memory() const noexcept { return limits.memory - remaining_; }
  /// Counts memory that will be allocated. Throws ReadStopped if it exceeds the limit.
  void charge(std::uint64_t bytes) {
    if (bytes > remaining_) overcharge(bytes);
    remaining_ -= bytes;
  }
  /// Throws ReadStopped if `bytes` of temporary memory would exceed the limit. Does not count the
  /// bytes.
  void requireMemory(std::uint64_t bytes) {
    if (bytes > remaining_ && limits.memory != Limits::NONE) exceed(Budget::Memory);
  }

 protected:
  ~ReadSession() { dropValue(); }

  /// Raises the limit of memory by `bytes`. The sum must not exceed Limits::NONE.
  void raiseMemory(std::uint64_t bytes) noexcept;

  /// Ends the reading, because it exceeds `budget`. Throws ReadStopped.
  [[noreturn]] virtual void exceed(Budget budget) = 0;
  /// The bytes of the current value of `input`. The input frees these bytes when it gets another
  /// value.
  virtual std::uint64_t bytesHeldBy(interfaces::IInput& input) = 0;
  /// Receives a skipped buffer literal of `count` elements. Called directly before the empty buffer
  /// is assigned to `input`.
  virtual void keepSkipped(interfaces::IInput& input, const AssignInfo& info,
                           std::uint64_t count) = 0;
  /// Reports a refused buffer.
  virtual void refuse(Refusal refusal, const AssignInfo& info) = 0;
  // Except `isOfLibrary`, the session calls the following functions only if `dropsNodes` is set.
  virtual bool isDroppedNode(interfaces::INode& node) = 0;
  virtual void dropLink(interfaces::IInput& input) = 0;
  /// Whether the input belongs to a scene of the library.
  virtual bool isOfLibrary(interfaces::IInput& input) = 0;
  virtual bool isKeptLink(interfaces::IInput& input, interfaces::INode& node) = 0;

 private:
  static constexpr std::uint64_t STATEMENTS_PER_POLL = 64;
  static constexpr std::uint64_t LINKS_PER_POLL = 1024;
  // The estimated bytes of each object in the library's scene, including its slots in lists and
  // tables.
  static constexpr std::uint64_t NODE_BYTES = 96;
  static constexpr std::uint64_t INPUT_BYTES = 64;
  static constexpr std::uint64_t LINK_BYTES = 64;
  static constexpr std::uint64_t TEXT_BYTES = 32;
  // When an input gets another value, the bytes of its previous value are subtracted from the count
  // only in two cases: the new value is a buffer, or it is a string whose literal has at least this
  // size. Otherwise they stay counted.
  static constexpr std::uint64_t MIN_REPLACED_BYTES = 256;

  void freeValue() noexcept;
  void transferMemory(interfaces::IInput& input, AttrData& value);
  void overcharge(std::uint64_t bytes);
  void lowerMemory(std::uint64_t bytes) noexcept;
  bool admitsBuffer(const AssignInfo& info);
  void release(std::uint64_t bytes) noexcept;
  void countStatement(std::int32_t line, std::int32_t column) {
    statement_ = {line, column};
    if (++counts.statements % STATEMENTS_PER_POLL == 0) poll();
  }
  // The number of names and indices in the path. The node's name is not counted.
  std::uint64_t inputsOnPath() const noexcept;

  TextPlace statement_;
  interfaces::IInput* link_ = nullptr;
  // The current statement if it is simple, otherwise null.
  const SimpleStatement* simple_ = nullptr;
  const AssignInfo* simpleInfo_ = nullptr;
  // The current assignment if it is read from tokens, otherwise null.
  const AssignInfo* assignment_ = nullptr;
  std::span<const Token> path_;
  void* held_ = nullptr;
  std::uint64_t heldBytes_ = 0;
  // The bytes of limits.memory that are not used.
  std::uint64_t remaining_ = 0;
  // The size of all buffers of the text so far, without refused and skipped buffers.
  std::uint64_t bufferBytes_ = 0;
  // The amount by which the last buffer raised the limit of memory.
  std::uint64_t raisedBytes_ = 0;
  // The number of elements of the buffer that was skipped or refused last.
  std::uint64_t skippedCount_ = 0;
  bool isResolving_ = false;
  // Whether the node of the current assignment is dropped.
  bool isDropped_ = false;
};

}  // namespace zn::korvo_sdk::impl
