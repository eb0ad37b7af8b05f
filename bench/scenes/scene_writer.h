// Writers of generated scenes, one for each format that a peer reads. The generators pass numbers
// as digits, not as values, so that every format contains the same digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace bench {

enum class Format {
  Vsa,
  Json,         // RapidJSON; the format of `vsa dump`, every input with its type
  CompactJson,  // simdjson, RapidJSON; without types that JSON distinguishes itself
  Osgt,         // OpenSceneGraph
  Iv,           // Coin
  Obj           // tinyobjloader; meshes only
};

// Numbers as text, separated by single blanks.
struct NumberList {
  std::string digits;
  size_t componentCount = 0;
};

class SceneWriter {
 public:
  virtual ~SceneWriter() = default;

  // Writes a comment of one line between nodes. `text` has no comment mark.
  virtual void comment(std::string_view text) = 0;

  // Starts a node. The following inputs belong to it, up to endNode.
  virtual void beginNode(std::string_view type, std::string_view name) = 0;
  virtual void endNode() = 0;

  virtual void boolean(std::string_view input, bool value) = 0;
  virtual void integer(std::string_view input, int64_t value) = 0;

  // `digits` has a decimal point.
  virtual void real(std::string_view input, std::string_view digits) = 0;

  // `text` is UTF-8 without escapes; the writer adds them.
  virtual void string(std::string_view input, std::string_view text) = 0;

  // `keyword` is a VSA type such as vec3 or rgba, `digits` are as in NumberList.
  virtual void tuple(std::string_view input, std::string_view keyword, std::string_view digits) = 0;

  // `keyword` is the VSA element type; an element has `width` components.
  virtual void buffer(std::string_view input, std::string_view keyword, size_t width,
                      const NumberList& numbers) = 0;

  // Writes a buffer of `elementCount` elements as a zlib stream of its bytes.
  virtual void compressed(std::string_view input, std::string_view keyword, size_t elementCount,
                          std::string_view stream) = 0;

  virtual void reference(std::string_view input, std::string_view node) = 0;
  virtual void connection(std::string_view input, std::string_view node,
                          std::string_view output) = 0;

  // Returns the text. The writer cannot be used afterwards.
  virtual std::string finish() = 0;
};

std::unique_ptr<SceneWriter> makeWriter(Format format);

// The writers of the formats; makeWriter selects one.
std::unique_ptr<SceneWriter> makeVsaWriter();
std::unique_ptr<SceneWriter> makeJsonWriter();
std::unique_ptr<SceneWriter> makeCompactJsonWriter();
std::unique_ptr<SceneWriter> makeOsgtWriter();
std::unique_ptr<SceneWriter> makeIvWriter();
std::unique_ptr<SceneWriter> makeObjWriter();

// Appends the parts.
void append(std::string& to, std::initializer_list<std::string_view> parts);

// Appends the text in double quotes with the escapes of JSON, which VSA shares for the generated
// texts.
void appendJsonString(std::string& to, std::string_view text);

// Appends the numbers as a JSON array.
void appendJsonArray(std::string& to, std::string_view digits);

// The digit in the name of a vector type with as many components as the tuple: "3" for pos3.
std::string_view vectorSize(std::string_view keyword);

// The text in double quotes, with a backslash before quotes and backslashes.
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
