// Recorder: writes a generated scene with a SceneWriter, and counts the values that a reader must
// find in it.
#pragma once

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "bench/scenes/text_generator.h"

namespace bench {

template <class Number>
Number numberFrom(std::string_view digits) {
  Number value{};
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

// Returns the stem and the index as a name, such as "mesh_000007".
inline std::string numbered(const char* stem, size_t index) {
  char name[64];
  std::snprintf(name, sizeof name, "%s_%06zu", stem, index);
  return name;
}

// Each function calls the corresponding function of the writer and updates the expected values.
class Recorder {
 public:
  explicit Recorder(Format format) : writer(makeWriter(format)) {
    // The VSA writer starts with two comments: the version and the time.
    if (format == Format::Vsa) comments(2);
  }

  void comment(std::string_view text) {
    writer->comment(text);
    comments(1);
  }

  void beginNode(std::string_view type, std::string_view name) {
    writer->beginNode(type, name);
    ++expected.nodes;
    ++expected.statements;
  }

  void endNode() { writer->endNode(); }

  void boolean(std::string_view input, bool value) {
    writer->boolean(input, value);
    assigned(value ? 1 : 0);
  }

  void integer(std::string_view input, int64_t value) {
    writer->integer(input, value);
    assigned(static_cast<uint64_t>(value));
  }

  void real(std::string_view input, std::string_view digits) {
    writer->real(input, digits);
    assigned(std::bit_cast<uint64_t>(numberFrom<double>(digits)));
  }

  void string(std::string_view input, std::string_view text) {
    writer->string(input, text);
    assigned(0);
    ++expected.strings;
    expected.stringBytes += text.size();
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) {
    writer->tuple(input, keyword, digits);
    assigned(0);
    eachNumber(digits, [&](std::string_view number, size_t) {
      expected.scalarSum += std::bit_cast<uint64_t>(numberFrom<double>(number));
    });
  }

  void floats(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& list) {
    buffer(input, keyword, width, list);
    eachNumber(list.digits, [&](std::string_view number, size_t) {
      expected.bufferSum += std::bit_cast<uint32_t>(numberFrom<float>(number));
    });
  }

  void ints(std::string_view input, const NumberList& list) {
    buffer(input, "int32", 1, list);
    eachNumber(list.digits, [&](std::string_view number, size_t) {
      expected.bufferSum += static_cast<uint32_t>(numberFrom<int32_t>(number));
    });
  }

  void image(std::string_view input, const std::string& bytes) {
    const std::string stream = zlibStream(bytes);
    writer->compressed(input, "rgba8", bytes.size() / 4, stream);
    assigned(0);
    expected.numbers += bytes.size();
    expected.elementBytes += bytes.size();
    expected.largestLiteral = std::max(expected.largestLiteral, 2 * stream.size());
    for (const char byte : bytes) expected.bufferSum += static_cast<unsigned char>(byte);
  }

  void reference(std::string_view input, std::string_view node) {
    writer->reference(input, node);
    assigned(0);
    ++expected.references;
  }

  void connection(std::string_view input, std::string_view node, std::string_view output) {
    writer->connection(input, node, output);
    assigned(0);
    ++expected.connections;
  }

  Text finish() { return {writer->finish(), expected}; }

  // The number of characters in all number lists so far. geo() ends the scene when this number
  // reaches the requested size. It does not use the size of the text, because that depends on the
  // format: every format must get the same scene.
  size_t listCharacters = 0;

 private:
  void comments(size_t count) {
    expected.comments += count;
    expected.statements += count;
  }

  void assigned(uint64_t sum) {
    ++expected.statements;
    ++expected.inputs;
    expected.scalarSum += sum;
  }

  void buffer(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& list) {
    writer->buffer(input, keyword, width, list);
    assigned(0);
    expected.numbers += list.componentCount;
    expected.elementBytes += 4 * list.componentCount;
    expected.largestLiteral = std::max(expected.largestLiteral, list.digits.size());
    listCharacters += list.digits.size();
  }

  std::unique_ptr<SceneWriter> writer;
  Expected expected;
};

}  // namespace bench
