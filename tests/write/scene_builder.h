// SceneBuilder: builds scenes in a program, even with values that a text cannot represent.
#pragma once

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include <vsa/model/scene.h>

namespace vsa_tests {

inline constexpr double INF = std::numeric_limits<double>::infinity();
inline constexpr double NAN_OF_TEXT = std::numeric_limits<double>::quiet_NaN();

/// A scene with one node `n` of type `thing`, and functions that add inputs to it.
class SceneBuilder {
 public:
  using AttrType = zn::korvo_sdk::AttrType;
  using DataType = zn::korvo_sdk::DataType;
  using Input = zn::korvo_sdk::Input;

  SceneBuilder() { scene.setFileVersion(1); }

  zn::korvo_sdk::Node& node(const char* type, const char* name) {
    return *scene.createNode(type, name, "");
  }

  Input& input(const char* name, AttrType type) { return *n.createInput(name, type); }
  Input& array(const char* name, AttrType elementType) { return *n.createArray(name, elementType); }

  static void set(Input& input, const zn::korvo_sdk::AttrData& value) { input.assign(value); }

  static void setInteger(Input& input, std::int64_t value) {
    zn::korvo_sdk::AttrData data;
    data.type = input.type();
    data.payload.integer = value;
    input.assign(data);
  }

  static void setReal(Input& input, double value) {
    zn::korvo_sdk::AttrData data;
    data.type = AttrType::Real;
    data.payload.real = value;
    input.assign(data);
  }

  static void setString(Input& input, const std::string& value) {
    zn::korvo_sdk::AttrData data;
    data.type = AttrType::String;
    data.payload.string = ::strdup(value.c_str());
    input.assign(data);
  }

  static void setComponents(Input& input, const std::vector<double>& values) {
    zn::korvo_sdk::AttrData data;
    data.type = input.type();
    std::copy(values.begin(), values.end(), data.payload.components);
    input.assign(data);
  }

  /// Sets a buffer with a copy of `size` bytes, which are elements of `type`.
  static void setBuffer(Input& input, DataType type, const void* bytes, std::size_t size) {
    zn::korvo_sdk::AttrData data;
    data.type = AttrType::Buffer;
    auto* const memory = size == 0 ? nullptr : static_cast<unsigned char*>(std::malloc(size));
    if (size != 0) std::memcpy(memory, bytes, size);
    const std::size_t each = zn::korvo_sdk::elementBytes(type);
    data.payload.buffer = {memory, each == 0 ? 0 : size / each, size, type, 0};
    input.assign(data);
  }

  template <class Number>
  static void setBuffer(Input& input, DataType type, const std::vector<Number>& numbers) {
    setBuffer(input, type, numbers.data(), numbers.size() * sizeof(Number));
  }

  /// Adds an input that needs some megabytes of text.
  void fillLarge() {
    setBuffer(input("x", AttrType::Buffer), DataType::Double, std::vector<double>(1000000, 0.1));
  }

  zn::korvo_sdk::Scene scene;
  zn::korvo_sdk::Node& n = node("thing", "n");
};

}  // namespace vsa_tests
