// The table of data types. Each row contains the display name, the component type, the number of
// components, and whether a text can contain buffers of the type.
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

namespace {

struct Row {
  const char* name;
  DataType component;
  unsigned components;
  bool isBufferElement = true;
};

constexpr Row ROWS[DATA_TYPE_COUNT] = {
    {"Null", DataType::Null, 0, false},
    {"Bool", DataType::Bool, 1, false},
    {"Char", DataType::Char, 1},
    {"Byte", DataType::Byte, 1},
    {"Int16", DataType::Int16, 1},
    {"Int32", DataType::Int32, 1},
    {"Int64", DataType::Int64, 1},
    {"UInt16", DataType::UInt16, 1},
    {"UInt32", DataType::UInt32, 1},
    {"UInt64", DataType::UInt64, 1},
    {"Float", DataType::Float, 1},
    {"Double", DataType::Double, 1},
    {"Ptr", DataType::Ptr, 1, false},
    {"Vec2f", DataType::Float, 2},
    {"Vec2d", DataType::Double, 2},
    {"Vec2i", DataType::Int32, 2},
    {"Vec2u", DataType::UInt32, 2},
    {"Vec3f", DataType::Float, 3},
    {"Vec3d", DataType::Double, 3},
    {"Vec3i", DataType::Int32, 3},
    {"Vec3u", DataType::UInt32, 3},
    {"Vec4f", DataType::Float, 4},
    {"Vec4d", DataType::Double, 4},
    {"Vec4i", DataType::Int32, 4},
    {"Vec4u", DataType::UInt32, 4},
    {"Pos2f", DataType::Float, 2},
    {"Pos2d", DataType::Double, 2},
    {"Pos2i", DataType::Int32, 2},
    {"Pos3f", DataType::Float, 3},
    {"Pos3d", DataType::Double, 3},
    {"Pos3i", DataType::Int32, 3},
    {"Quatf", DataType::Float, 4},
    {"Quatd", DataType::Double, 4},
    {"Rgbf", DataType::Float, 3},
    {"Rgbd", DataType::Double, 3},
    {"Rgb8", DataType::Byte, 3},
    {"Rgbaf", DataType::Float, 4},
    {"Rgbad", DataType::Double, 4},
    {"Rgba8", DataType::Byte, 4},
    {"Mat3f", DataType::Float, 9},
    {"Mat3d", DataType::Double, 9},
    {"Mat3i", DataType::Int32, 9},
    {"Mat4f", DataType::Float, 16},
    {"Mat4d", DataType::Double, 16},
    {"Mat4i", DataType::Int32, 16},
    {"Xformf", DataType::Float, 16, false},
    {"Xformd", DataType::Double, 16, false},
    {"Xformi", DataType::Int32, 16, false},
    {"Aabbf", DataType::Float, 6, false},
    {"Aabbd", DataType::Double, 6, false},
    {"Aabbi", DataType::Int32, 6, false},
    {"Obbf", DataType::Float, 15, false},
    {"Obbd", DataType::Double, 15, false},
    {"Obbi", DataType::Int32, 15, false},
    {"Hsvf", DataType::Float, 3},
    {"Hsvd", DataType::Double, 3},
    {"Hslf", DataType::Float, 3},
    {"Hsld", DataType::Double, 3},
    {"Argb8", DataType::Byte, 4},
    {"ColorRef", DataType::Byte, 4},
};

constexpr Row UNKNOWN{"<unknown>", DataType::Null, 0, false};

const Row& rowOf(DataType type) {
  const auto i = static_cast<std::uint32_t>(type);
  return i < DATA_TYPE_COUNT ? ROWS[i] : UNKNOWN;
}

}  // namespace

const char* dataTypeName(DataType type) noexcept {
  return rowOf(type).name;
}

DataType componentType(DataType type) noexcept {
  return rowOf(type).component;
}

unsigned componentCount(DataType type) noexcept {
  return rowOf(type).components;
}

std::size_t componentBytes(DataType type) noexcept {
  const DataType component = componentType(type);
  if (component == DataType::Ptr) return sizeof(void*);
  std::size_t bytes = 0;
  visitComponent(component, [&](auto number) { bytes = sizeof(number); });
  return bytes;
}

std::size_t elementBytes(DataType type) noexcept {
  return componentCount(type) * componentBytes(type);
}

bool isBufferElement(DataType type) noexcept {
  return rowOf(type).isBufferElement;
}

}  // namespace zn::korvo_sdk
