// The candidates of the reader: reads of whole texts, with a check of the scenes, and single
// stages.
#include "bench/ours/our_reader.h"

#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include <vsa/foundation/file.h>
#include <vsa/parse.h>
#include <vsa/read.h>
#include "foundation/compression/inflate.h"
#include "foundation/numbers/number_list.h"

namespace bench {
namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::BufferValue;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Scene;

template <class Number>
uint64_t sumOf(const BufferValue& buffer) {
  uint64_t sum = 0;
  for (uint64_t at = 0; at < buffer.bytes; at += sizeof(Number)) {
    Number bits;
    std::memcpy(&bits, buffer.memory + at, sizeof bits);
    sum += bits;
  }
  return sum;
}

void countBuffer(Expected& found, const BufferValue& buffer) {
  const size_t width = componentBytes(buffer.type);
  found.numbers += width == 0 ? 0 : buffer.bytes / width;
  found.elementBytes += buffer.bytes;
  found.bufferSum += width == 1 ? sumOf<uint8_t>(buffer) : sumOf<uint32_t>(buffer);
}

void countString(Expected& found, const Input& input) {
  ++found.strings;
  found.stringBytes += std::strlen(input.string());
}

void countComponents(Expected& found, const Input& input) {
  for (unsigned i = 0; i < componentCount(input.type()); ++i) {
    found.scalarSum += std::bit_cast<uint64_t>(input.components()[i]);
  }
}

// Counts the elements of an array as inputs, and not the array itself.
void countInput(Expected& found, Input& input) {
  if (input.type() == AttrType::Array) {
    for (uint64_t i = 0; i < input.count(); ++i) countInput(found, *input.element(i));
    return;
  }
  ++found.inputs;
  if (input.connection() != nullptr) ++found.connections;
  switch (input.type()) {
    case AttrType::Bool:
      found.scalarSum += input.boolean() ? 1 : 0;
      break;
    case AttrType::Int:
      found.scalarSum += static_cast<uint64_t>(input.integer());
      break;
    case AttrType::Real:
      found.scalarSum += std::bit_cast<uint64_t>(input.real());
      break;
    case AttrType::String:
      countString(found, input);
      break;
    case AttrType::Buffer:
      countBuffer(found, input.buffer());
      break;
    case AttrType::Node:
      if (input.node() != nullptr) ++found.references;
      break;
    default:
      countComponents(found, input);
      break;
  }
}

Expected valuesOf(const Scene& scene) {
  Expected found;
  found.comments = scene.fileCommentCount();
  found.nodes = scene.nodeCount();
  for (uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    const Node* const node = scene.nodeAt(slot);
    for (uint64_t i = 0; i < node->inputCount(); ++i) countInput(found, *node->inputAt(i));
  }
  return found;
}

template <class Number>
Candidate numberRun(const char* name, const NumberList& numbers) {
  const auto out = std::make_shared<std::vector<Number>>(numbers.componentCount);
  const auto convert = [&numbers, out] {
    const char* const from = numbers.digits.data();
    return zn::readNumberRun(from, from + numbers.digits.size(), out->data(), out->size()).count;
  };
  requireCount(name, "numbers", convert(), numbers.componentCount);
  return {name, [convert] {
            const Stopwatch watch;
            convert();
            return watch.seconds();
          }};
}

using Memory = std::unique_ptr<unsigned char, void (*)(void*)>;

Memory inflated(const std::string& stream, size_t size, size_t& length) {
  Memory out{static_cast<unsigned char*>(std::calloc(size, 1)), std::free};
  zn::inflateStream(reinterpret_cast<const unsigned char*>(stream.data()), stream.size(), out.get(),
                    size, length);
  return out;
}

}  // namespace

void readString(Scene& scene, const zn::String& text) {
  if (!zn::korvo_sdk::impl::parseString(&scene, text)) {
    throw std::runtime_error("the reader did not read the text");
  }
}

void readFile(Scene& scene, const std::string& path) {
  const zn::File file = zn::File::open(path.c_str());
  if (!file.isOpen() || !zn::korvo_sdk::impl::parseVsa(&scene, file, true)) {
    throw std::runtime_error("the reader did not read " + path);
  }
}

namespace {

void requireComplete(const vsa::ReadOutcome& outcome) {
  if (!outcome.isComplete()) throw std::runtime_error("the public API: " + outcome.message);
}

zn::korvo_sdk::interfaces::IScene& interfaceOf(Scene& scene) {
  return scene;
}

}  // namespace

void readText(Scene& scene, std::string_view text) {
  requireComplete(vsa::readTextInto(interfaceOf(scene), text));
}

void readPath(Scene& scene, const std::string& path) {
  requireComplete(vsa::readFileInto(interfaceOf(scene), path));
}

void requireScene(const Scene& scene, const Expected& expected) {
  const Expected found = valuesOf(scene);
  const char* const who = "the reader";
  requireCount(who, "nodes", found.nodes, expected.nodes);
  requireCount(who, "comments", found.comments, expected.comments);
  requireCount(who, "inputs", found.inputs, expected.inputs);
  requireCount(who, "references", found.references, expected.references);
  requireCount(who, "connections", found.connections, expected.connections);
  requireCount(who, "strings", found.strings, expected.strings);
  requireCount(who, "characters in strings", found.stringBytes, expected.stringBytes);
  requireCount(who, "numbers", found.numbers, expected.numbers);
  requireCount(who, "bytes of elements", found.elementBytes, expected.elementBytes);
  requireCount(who, "as the sum of all elements", found.bufferSum, expected.bufferSum);
  requireCount(who, "as the sum of all scalars", found.scalarSum, expected.scalarSum);
}

Candidate sceneCandidate(std::string name, std::function<void(Scene&)> fill) {
  return {std::move(name), [fill = std::move(fill)] {
            Scene scene;
            const Stopwatch watch;
            fill(scene);
            return watch.seconds();
          }};
}

Candidate stringReader(const Text& vsa) {
  const zn::String text(vsa.text.data(), vsa.text.size());
  Scene checked;
  readString(checked, text);
  requireScene(checked, vsa.expected);
  return sceneCandidate("VSA reader", [text](Scene& scene) { readString(scene, text); });
}

Candidate fileReader(const Text& vsa, const std::string& path) {
  Scene checked;
  readFile(checked, path);
  requireScene(checked, vsa.expected);
  return sceneCandidate("VSA reader, from a file", [path](Scene& scene) { readFile(scene, path); });
}

Candidate textReader(const Text& vsa) {
  Scene checked;
  readText(checked, vsa.text);
  requireScene(checked, vsa.expected);
  return sceneCandidate("public API", [&vsa](Scene& scene) { readText(scene, vsa.text); });
}

Candidate pathReader(const Text& vsa, const std::string& path) {
  Scene checked;
  readPath(checked, path);
  requireScene(checked, vsa.expected);
  return sceneCandidate("public API, from a file", [path](Scene& scene) { readPath(scene, path); });
}

Candidate floatRun(const NumberList& numbers) {
  return numberRun<float>("VSA reader, conversion alone", numbers);
}

Candidate intRun(const NumberList& numbers) {
  return numberRun<int>("VSA reader, conversion alone", numbers);
}

Candidate ourInflate(const std::string& stream, const std::string& bytes) {
  size_t length = 0;
  const Memory checked = inflated(stream, bytes.size(), length);
  if (length != bytes.size() || std::memcmp(checked.get(), bytes.data(), length) != 0) {
    throw std::runtime_error("the reader's inflate: wrong bytes");
  }
  return {"VSA reader", [&stream, size = bytes.size()] {
            size_t count = 0;
            const Stopwatch watch;
            const Memory out = inflated(stream, size, count);
            return watch.seconds();
          }};
}

}  // namespace bench
