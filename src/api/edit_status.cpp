#include <vsa/edit_status.h>

#include <cstddef>
#include <iterator>
#include <new>
#include <stdexcept>

namespace vsa {

namespace {

struct Row {
  const char* name;
  const char* message;
};

// The name and the message of each error. The index of a row is the value of the EditError.
constexpr Row ROWS[] = {
    {"none", ""},
    {"missing", "the node or input does not exist"},
    {"removed", "the node or input was removed"},
    {"other-scene", "the node belongs to another scene"},
    {"not-an-array", "the input is not an array"},
    {"not-an-object", "the input is not an object"},
    {"other-element-type", "the array's elements are of another type"},
    {"not-declared", "the node's type declares no such input or output"},
    {"declared-type", "the node's type declares another type for the input"},
    {"takes-no-value", "the input takes links only"},
    {"too-deep", "the input would lie deeper than the scene's limit"},
    {"too-many", "an array holds at most 4294967295 elements"},
    {"bad-name",
     "a name is a letter or _, then letters, digits and _, and not true, false or null"},
    {"name-taken", "there is a node of that name"},
    {"former-name", "the node's type declares the name as a former name"},
    {"plus-infinity", "a text has plus infinity in lists only"},
    {"not-a-number", "a text has no NaN of these bits here"},
    {"nul-character", "a text cannot have a NUL character"},
    {"bad-element-type", "no array has elements of that type"},
    {"bad-buffer-type", "a text has no buffers of that type"},
    {"buffer-size", "the memory is not a number of elements of that type"},
    {"bad-comment", "a comment is one line without a byte 0xFF"},
    {"bad-version-comment", "a comment with 'version:' must have a number after its first colon"},
    {"bad-time",
     "a time is one line, has no white space at its ends and does not contain 'version:'"},
    {"out-of-memory", "out of memory"},
};
static_assert(std::size(ROWS) == static_cast<std::size_t>(EditError::OutOfMemory) + 1);

}  // namespace

const char* name(EditError error) noexcept {
  const auto row = static_cast<std::size_t>(error);
  return row < std::size(ROWS) ? ROWS[row].name : "unknown";
}

const char* Status::message() const noexcept {
  const auto row = static_cast<std::size_t>(error_);
  return row < std::size(ROWS) ? ROWS[row].message : "unknown";
}

void Status::orThrow() const {
  if (error_ == EditError::OutOfMemory) throw std::bad_alloc();
  if (error_ != EditError::None) throw std::invalid_argument(message());
}

}  // namespace vsa
