// The node type that the test cases and the fuzzers declare. All other types in their texts are
// open.
#pragma once

#include <vsa/scene/node_type.h>

namespace vsa_tests {

/// Registers the node type `declaredLamp`. Later calls do nothing. The type has everything that a
/// declaration can contain: an enumeration, an input that accepts only links, an array, a buffer,
/// an output, and former names.
inline void declareLamp() {
  using namespace zn::korvo_sdk;
  static const bool once = [] {
    NodeType lamp;
    lamp.name = "declaredLamp";
    lamp.inputs = {
        {"power", AttrType::Real, {}, {}, {}, false},
        {"shape", AttrType::String, {}, {}, {"point", "spot"}, false},
        {"filter", AttrType::Rgba, {}, {}, {}, true},
        {"samples", AttrType::Buffer, {}, DataType::Float, {}, false},
        {"keys", AttrType::Array, AttrType::Real, {}, {}, false},
    };
    lamp.outputs = {"outColor"};
    lamp.formerInputs = {{"intensity", "power"}};
    lamp.formerOutputs = {{"color", "outColor"}};
    registerNodeType(lamp);
    return true;
  }();
  static_cast<void>(once);
}

}  // namespace vsa_tests
