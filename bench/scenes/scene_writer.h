// How a generated scene becomes a text. The generators tell a SceneWriter what the scene holds, and
// each format has a writer, so that one scene can be had in every format that a peer reads.
//
// Numbers arrive as digits, not as values: every format then carries exactly the same digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace bench {

enum class Format {
  Vsa,
  Json,         // RapidJSON; the form of `vsa dump`, every input with its type
  CompactJson,  // simdjson, RapidJSON; types left out where JSON has its own
  Osgt,         // OpenSceneGraph
  Iv,           // Coin
  Obj           // tinyobjloader; meshes only
};

// Numbers as text, separated by single blanks, none before the first or after the last.
struct NumberList {
  std::string digits;
  size_t componentCount = 0;
};

class SceneWriter {
 public:
  virtual ~SceneWriter() = default;

  // A remark of one line, without the mark that opens it. Stands between nodes.
  virtual void comment(std::string_view text) = 0;

  // Opens a node; the inputs that follow are its own, up to endNode.
  virtual void beginNode(std::string_view type, std::string_view name) = 0;
  virtual void endNode() = 0;

  virtual void boolean(std::string_view input, bool value) = 0;
  virtual void integer(std::string_view input, int64_t value) = 0;

  // digits has a decimal point.
  virtual void real(std::string_view input, std::string_view digits) = 0;

  // text is UTF-8 as the user sees it; the writer escapes it.
  virtual void string(std::string_view input, std::string_view text) = 0;

  // keyword is the VSA type, vec3 or rgba for example; digits as in NumberList.
  virtual void tuple(std::string_view input, std::string_view keyword, std::string_view digits) = 0;

  // keyword is the VSA element type; an element has width components.
  virtual void buffer(std::string_view input, std::string_view keyword, size_t width,
                      const NumberList& numbers) = 0;

  // A buffer of elementCount elements as a zlib stream of its bytes.
  virtual void compressed(std::string_view input, std::string_view keyword, size_t elementCount,
                          std::span<const unsigned char> stream) = 0;

  virtual void reference(std::string_view input, std::string_view node) = 0;
  virtual void connection(std::string_view input, std::string_view node,
                          std::string_view output) = 0;

  // The finished text; the writer is spent afterwards.
  virtual std::string finish() = 0;
};

std::unique_ptr<SceneWriter> makeWriter(Format format);

// One for each format; makeWriter chooses.
std::unique_ptr<SceneWriter> makeVsaWriter();
std::unique_ptr<SceneWriter> makeJsonWriter();
std::unique_ptr<SceneWriter> makeCompactJsonWriter();
std::unique_ptr<SceneWriter> makeOsgtWriter();
std::unique_ptr<SceneWriter> makeIvWriter();
std::unique_ptr<SceneWriter> makeObjWriter();

// Appends bytes as hexadecimal, two lower-case digits a byte.
void appendHex(std::string& to, std::span<const unsigned char> bytes);

// Appends text in double quotes, escaped as JSON wants it.
void appendJsonString(std::string& to, std::string_view text);

// Calls use(word, index) for every number of a list.
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
