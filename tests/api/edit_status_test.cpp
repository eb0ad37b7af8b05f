// Tests of the names and messages of the errors that a change of a scene can have.
#include <gtest/gtest.h>

#include <iterator>

#include <vsa/edit_status.h>

namespace {

using vsa::EditError;

struct Row {
  EditError error;
  const char* name;
  const char* message;
};

TEST(EditStatus, NamesAndMessages) {
  using enum EditError;
  const Row rows[] = {
      {None, "none", ""},
      {Missing, "missing", "the node or input does not exist"},
      {Removed, "removed", "the node or input was removed"},
      {OtherScene, "other-scene", "the node belongs to another scene"},
      {NotAnArray, "not-an-array", "the input is not an array"},
      {NotAnObject, "not-an-object", "the input is not an object"},
      {OtherElementType, "other-element-type", "the array's elements are of another type"},
      {NotDeclared, "not-declared", "the node's type declares no such input or output"},
      {DeclaredType, "declared-type", "the node's type declares another type for the input"},
      {TakesNoValue, "takes-no-value", "the input takes links only"},
      {TooDeep, "too-deep", "the input would lie deeper than the scene's limit"},
      {TooMany, "too-many", "an array holds at most 4294967295 elements"},
      {BadName, "bad-name",
       "a name is a letter or _, then letters, digits and _, and not true, false or null"},
      {NameTaken, "name-taken", "there is a node of that name"},
      {FormerName, "former-name", "the node's type declares the name as a former name"},
      {PlusInfinity, "plus-infinity", "a text has plus infinity in lists only"},
      {NotANumber, "not-a-number", "a text has no NaN of these bits here"},
      {NulCharacter, "nul-character", "a text cannot have a NUL character"},
      {BadElementType, "bad-element-type", "no array has elements of that type"},
      {BadBufferType, "bad-buffer-type", "a text has no buffers of that type"},
      {BufferSize, "buffer-size", "the memory is not a number of elements of that type"},
      {BadComment, "bad-comment", "a comment is one line without a byte 0xFF"},
      {BadVersionComment, "bad-version-comment",
       "a comment with 'version:' must have a number after its first colon"},
      {BadTime, "bad-time",
       "a time is one line, has no white space at its ends and does not contain 'version:'"},
      {OutOfMemory, "out-of-memory", "out of memory"},
  };
  EXPECT_EQ(std::size(rows), static_cast<std::size_t>(OutOfMemory) + 1);
  for (const Row& row : rows) {
    EXPECT_STREQ(vsa::name(row.error), row.name);
    EXPECT_STREQ(vsa::Status(row.error).message(), row.message);
  }
}

}  // namespace
