// Creates a scene from the input bytes through the public interface, and writes it. The scene may
// contain names, values and structures that a text cannot represent. The last byte selects the
// options of the writer.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/fuzz_scene.h"
#include "fuzz/support/written_scene.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

using namespace zn::korvo_sdk;

/// Returns numbers from the bytes of an input. After the end of the input, all numbers are 0.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

  bool isAtEnd() const { return bytes_.empty(); }

  unsigned byte() {
    if (bytes_.empty()) return 0;
    const auto value = static_cast<unsigned char>(bytes_[0]);
    bytes_.remove_prefix(1);
    return value;
  }

  template <class Table>
  const auto& pick(const Table& table) {
    return table[byte() % std::size(table)];
  }

  void fill(void* to, std::size_t size) {
    const std::size_t count = std::min(size, bytes_.size());
    std::memset(to, 0, size);
    std::memcpy(to, bytes_.data(), count);
    bytes_.remove_prefix(count);
  }

 private:
  std::string_view bytes_;
};

constexpr const char* NAMES[] = {
    "a",      "b",        "c",     "d",     "keys",   "remove",  "define",       "with",
    "vec3",   "\xC3\xA9", "float", "_",     "inf",    "true",    "a b",          "",
    "9",      "a\xFF",    "power", "shape", "filter", "samples", "declaredLamp", "intensity",
    "out[0]", "outColor"};
constexpr double REALS[] = {0.0, -0.0, 1.0, 0.1, 1e-5, 1e300, 5e-324, -2.5, 1e5, 123456789.0};
constexpr const char* COMMENTS[] = {"#", "# version: 2", "# time: t", "#\xFF", "x", "# version: x"};

class SceneMaker {
 public:
  SceneMaker(Scene& scene, std::string_view bytes) : scene_(scene), bytes_(bytes) {}

  void make() {
    while (!bytes_.isAtEnd()) step();
  }

 private:
  void step() {
    switch (bytes_.byte() % 8) {
      case 0:
        makeNode();
        break;
      case 1:
        header();
        break;
      case 2:
        link();
        break;
      default:
        if (Input* const input = anyInput()) assign(*input);
    }
  }

  void makeNode() {
    const char* const type = bytes_.pick(NAMES);
    scene_.createNode(type, bytes_.pick(NAMES), "");
  }

  void header() {
    const unsigned choice = bytes_.byte();
    if (choice % 4 == 0) scene_.setFileVersion(choice);
    if (choice % 4 == 1) scene_.setFileTime(bytes_.pick(NAMES));
    if (choice % 4 == 2) scene_.pushFileComment(bytes_.pick(COMMENTS));
    if (choice % 4 == 3) scene_.removeNode(bytes_.pick(NAMES));
  }

  Node* anyNode() {
    return scene_.nodeSlots() == 0 ? nullptr : scene_.nodeAt(bytes_.byte() % scene_.nodeSlots());
  }

  void link() {
    Input* const input = anyInput();
    Node* const node = anyNode();
    if (input == nullptr || node == nullptr) return;
    if (bytes_.byte() % 2 == 0) {
      input->connect(node->output(bytes_.pick(NAMES)));
    } else if (input->type() == AttrType::Null || input->type() == AttrType::Node) {
      input->setNode(node);
    }
  }

  AttrType anyType() { return static_cast<AttrType>(bytes_.byte() % ATTR_TYPE_COUNT); }

  /// Returns an input at any level of a node. Creates an input if there is none. May return null.
  Input* anyInput() {
    Node* const node = anyNode();
    if (node == nullptr) return nullptr;
    interfaces::IInput* input = made(*node);
    for (unsigned depth = bytes_.byte() % 4; depth > 0 && input != nullptr; --depth) {
      if (input->type() == AttrType::Array) {
        if (input->count() < 4) input->appendElement();
        input = input->element(bytes_.byte() % input->count());
      } else if (input->type() == AttrType::Object) {
        input = made(*input);
      }
    }
    return static_cast<Input*>(input);
  }

  template <class Parent>
  interfaces::IInput* made(Parent& parent) {
    const char* const name = bytes_.pick(NAMES);
    if (parent.hasInput(name, AttrType::Null)) return parent.input(name);
    const AttrType type = anyType();
    return type == AttrType::Array ? parent.createArray(name, anyType())
                                   : parent.createInput(name, type);
  }

  double real() {
    if (bytes_.byte() % 2 == 0) return bytes_.pick(REALS);
    double value;
    bytes_.fill(&value, sizeof value);
    return value;
  }

  void assign(Input& input) {
    AttrData data;
    data.type = input.type();
    if (data.type == AttrType::String) {
      data.payload.string = string();
    } else if (data.type == AttrType::Buffer) {
      data.payload.buffer = buffer();
    } else if (data.type == AttrType::Bool) {
      data.payload.boolean = bytes_.byte() % 2 == 0;
    } else if (data.type == AttrType::Int || data.type == AttrType::UInt) {
      bytes_.fill(&data.payload.integer, sizeof data.payload.integer);
    } else {
      for (double& component : data.payload.components) component = real();
    }
    input.assign(data);
  }

  char* string() {
    char text[8] = {};
    bytes_.fill(text, 1 + bytes_.byte() % (sizeof text - 1));
    return ::strdup(text);
  }

  BufferValue buffer() {
    const auto type = static_cast<DataType>(bytes_.byte() % DATA_TYPE_COUNT);
    const std::size_t count = bytes_.byte() % 8;
    const std::size_t size = count * elementBytes(type);
    if (size == 0) return {nullptr, 0, 0, type, 0};
    auto* const memory = static_cast<unsigned char*>(std::malloc(size));
    bytes_.fill(memory, size);
    return {memory, count, size, type, 0};
  }

  Scene& scene_;
  Bytes bytes_;
};

}  // namespace

void writeMadeScene(std::string_view input) {
  const auto [bytes, settings] = splitSettings(input);
  FuzzScene scene;
  try {
    SceneMaker(*scene, bytes).make();
  } catch (const std::runtime_error&) {
    // The scene reached one of its limits. The scene created so far is written.
  }
  static_cast<void>(checkWritten(*scene, writeOptions(settings)));
}

}  // namespace vsa_fuzz
