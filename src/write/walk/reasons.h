// The texts of WriteProblem::reason: why no text can represent a part of a scene. Internal.
#pragma once

namespace vsa::impl::reasons {

// Names.
inline constexpr char NODE_NAME[] = "the name of the node is not an identifier";
inline constexpr char NODE_TYPE[] = "the type of the node is not an identifier";
inline constexpr char INPUT_NAME[] = "the name is not an identifier";
inline constexpr char FORMER_INPUT[] =
    "the name is a former name of another input of this node type";

// Links.
inline constexpr char OUTPUT_NAME[] = "the name of the connected output is not an identifier";
inline constexpr char FORMER_OUTPUT[] =
    "the name of the connected output is a former name of another output of that node type";
inline constexpr char NO_OUTPUT[] = "the connected node's type no longer declares the output";
inline constexpr char LINKED_NODE_NAME[] =
    "the linked node has no name and type that a text can carry";
inline constexpr char FOREIGN_NODE[] = "the linked node is in another scene";

// Values.
inline constexpr char INFINITE_REAL[] = "plus infinity stands in lists only, not alone";
inline constexpr char NAN_REAL[] = "the only not-a-number that stands alone is -nan";
inline constexpr char NAN_BITS[] = "a not-a-number keeps its sign only, not its other bits";

// Buffers.
inline constexpr char UNTYPED_BUFFER[] = "the buffer has no element type";
inline constexpr char HOST_ELEMENTS[] = "buffers of this element type are for hosts only";
inline constexpr char BUFFER_SIZE[] =
    "the buffer's memory does not fit its count and its element type";
inline constexpr char LATE_UNTYPED_BUFFER[] =
    "an earlier element of the array has no element type and would get the one of this buffer";

// Arrays and objects.
inline constexpr char TYPED_EMPTY_ARRAY[] = "no element gives the array its element type";
inline constexpr char MIXED_ELEMENT[] = "the type of the element is not that of its array";

// Declared node types.
inline constexpr char UNDECLARED_INPUT[] = "the node type does not declare the input";
inline constexpr char DECLARED_TYPE[] = "the node type declares the input with another type";
inline constexpr char REFUSED_VALUE[] = "the node type declares the input to take links only";

// The header.
inline constexpr char COMMENT[] =
    "the comment does not begin with \"#\", or has a line end, a NUL byte or a byte 0xFF";
inline constexpr char VERSION[] = "the comments say another version";
inline constexpr char TIME[] = "the comments say another time";

}  // namespace vsa::impl::reasons
