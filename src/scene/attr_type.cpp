// The table of attribute types. Each row contains the display name and the number of components,
// which is 0 for a type that is not a tuple.
#include <vsa/scene/attr_type.h>

namespace zn::korvo_sdk {

namespace {

struct Row {
  const char* name;
  unsigned components;
};

constexpr Row ROWS[ATTR_TYPE_COUNT] = {
    {"Null", 0}, {"Bool", 0},   {"Int", 0},   {"UInt", 0},   {"Real", 0},
    {"Vec2", 2}, {"Vec3", 3},   {"Vec4", 4},  {"Pos2", 2},   {"Pos3", 3},
    {"Quat", 4}, {"Rgba", 4},   {"Mat3", 9},  {"Mat4", 16},  {"String", 0},
    {"Node", 0}, {"Buffer", 0}, {"Array", 0}, {"Object", 0},
};

constexpr bool isKnown(AttrType type) {
  return static_cast<std::uint32_t>(type) < ATTR_TYPE_COUNT;
}

}  // namespace

const char* attrTypeName(AttrType type) noexcept {
  return isKnown(type) ? ROWS[static_cast<int>(type)].name : "<unknown>";
}

unsigned componentCount(AttrType type) noexcept {
  return isKnown(type) ? ROWS[static_cast<int>(type)].components : 0;
}

}  // namespace zn::korvo_sdk
