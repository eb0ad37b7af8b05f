// Writers of generated scenes, for VSA and for each format that a peer reads. The generators pass
// reals and lists as digits and not as values, so that every format contains the same digits. A
// writer leaves out what its format cannot represent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace bench {

enum class Format {
  Vsa,
  // The format of `vsa dump`, which contains the type of every input. For RapidJSON.
  Json,
  // Compact JSON. A boolean, number or string is written without its type, because JSON itself
  // distinguishes these types. For simdjson and RapidJSON.
  CompactJson,
  Osgt,  // For OpenSceneGraph.
  Iv,    // For Coin.
  Obj    // For tinyobjloader. Contains only meshes.
};

// A list of numbers as text. Single blanks separate the numbers.
struct NumberList {
  std::string digits;
  size_t componentCount = 0;
};

class SceneWriter {
 public:
  virtual ~SceneWriter() = default;

  // Writes a comment of one line between nodes. `text` must not contain the comment mark.
  virtual void comment(std::string_view text) = 0;

  // Starts a node. All inputs up to endNode belong to it.
  virtual void beginNode(std::string_view type, std::string_view name) = 0;
  virtual void endNode() = 0;

  virtual void boolean(std::string_view input, bool value) = 0;
  virtual void integer(std::string_view input, int64_t value) = 0;

  // Writes a real. `digits` must contain a decimal point.
  virtual void real(std::string_view input, std::string_view digits) = 0;

  // Writes a string. `text` is UTF-8 without escape sequences. The writer adds the escape
  // sequences.
  virtual void string(std::string_view input, std::string_view text) = 0;

  // Writes a tuple. `keyword` is a VSA type such as vec3 or rgba. `digits` has the form of
  // NumberList::digits.
  virtual void tuple(std::string_view input, std::string_view keyword, std::string_view digits) = 0;

  // Writes a buffer. `keyword` is the VSA element type. An element has `width` components.
  virtual void buffer(std::string_view input, std::string_view keyword, size_t width,
                      const NumberList& numbers) = 0;

  // Writes a compressed buffer of `elementCount` elements. `stream` is the zlib stream of the
  // elements.
  virtual void compressed(std::string_view input, std::string_view keyword, size_t elementCount,
                          std::string_view stream) = 0;

  virtual void reference(std::string_view input, std::string_view node) = 0;
  virtual void connection(std::string_view input, std::string_view node,
                          std::string_view output) = 0;

  // Returns the text. The writer cannot be used afterwards.
  virtual std::string finish() = 0;
};

std::unique_ptr<SceneWriter> makeWriter(Format format);

// These functions create the writers of the formats. makeWriter calls one of them.
std::unique_ptr<SceneWriter> makeVsaWriter();
std::unique_ptr<SceneWriter> makeJsonWriter();
std::unique_ptr<SceneWriter> makeCompactJsonWriter();
std::unique_ptr<SceneWriter> makeOsgtWriter();
std::unique_ptr<SceneWriter> makeIvWriter();
std::unique_ptr<SceneWriter> makeObjWriter();

// Appends the parts to `to`.
void append(std::string& to, std::initializer_list<std::string_view> parts);

// Appends the text in double quotes with the escape sequences of JSON. The VSA writer uses the
// function, too: the escape sequences that occur in the generated texts are the same in JSON and
// VSA.
void appendJsonString(std::string& to, std::string_view text);

// Appends the numbers as a JSON array.
void appendJsonArray(std::string& to, std::string_view digits);

// Returns the number of components of the tuple type `keyword` as a digit, for example "3" for
// pos3. Other formats name their vector types by this digit, such as SFVec3f. `keyword` must not be
// a matrix.
std::string_view vectorSize(std::string_view keyword);

// Returns the text in double quotes. Inserts a backslash before each quote and backslash.
std::string quoted(std::string_view text);

// Calls use(number, index) for every number of a list.
template <class Use>
void eachNumber(std::string_view digits, Use use) {
  size_t index = 0;
  while (!digits.empty()) {
    const size_t blank = digits.find(' ');
    use(digits.substr(0, blank), index++);
    if (blank == std::string_view::npos) return;
    digits.remove_prefix(blank + 1);
  }
}

}  // namespace bench
