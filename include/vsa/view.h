// Views: SceneView, NodeView, InputView and ConnectionView. A program reads the contents of a scene
// through them. A view is a pointer to an object of the scene:
//
//   std::optional<double> power = scene["sun"]["power"].real();
//   for (vsa::NodeView node : scene.nodes()) visit(node.name());
//
// If an object does not exist, a look-up returns a missing view, which is a null pointer. A program
// may call all functions of a missing view. They return empty texts, empty optionals, empty ranges,
// false, 0, Null, null pointers and missing views. A function with a fallback returns the fallback.
// A missing view converts to false, every other view to true. Views are valid as long as the scene.
// This includes views of nodes and inputs that were removed.
//
// Views do not change the scene. A function that returns a std::string throws std::bad_alloc if
// memory runs out. No other function throws.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <ranges>
#include <span>
#include <string>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/model/scene.h>
#include <vsa/text_parameter.h>
#include <vsa/values/buffer_view.h>
#include <vsa/values/index_range.h>
#include <vsa/values/value_types.h>

namespace vsa {

class InputView;
class NodeView;

/// The output to which an input is connected. The view is missing if the input has no connection.
class ConnectionView {
 public:
  /// A missing connection.
  ConnectionView() = default;
  /// The view of `output`. A null pointer gives a missing view.
  explicit ConnectionView(const zn::korvo_sdk::Output* output) noexcept : output_(output) {}

  /// Whether there is a connection.
  explicit operator bool() const noexcept { return output_ != nullptr; }
  /// The node that the output belongs to. It is missing for a missing connection.
  NodeView node() const noexcept;
  /// The name of the output. It is valid as long as the scene.
  std::string_view output() const noexcept {
    return output_ != nullptr ? output_->name().view() : std::string_view();
  }

 private:
  const zn::korvo_sdk::Output* output_ = nullptr;
};

/// A view of an input of a node, an element of an array or a member of an object.
class InputView {
 public:
  struct Elements;
  struct Members;
  using ElementRange = IndexRange<Elements>;
  using MemberRange = IndexRange<Members>;

  /// A missing input.
  InputView() = default;
  /// The view of `input`. A null pointer gives a missing view.
  explicit InputView(zn::korvo_sdk::Input* input) noexcept : input_(input) {}

  /// Whether the input exists.
  explicit operator bool() const noexcept { return input_ != nullptr; }
  /// Whether both are views of the same input, or both are missing.
  bool operator==(const InputView&) const = default;

  /// The name, with the spelling of the text. If the text uses a former name, it is the current
  /// name. It is empty for an element of an array. It is valid as long as the scene.
  std::string_view name() const noexcept {
    return input_ != nullptr ? input_->name().view() : std::string_view();
  }
  /// The path of the input, as in messages, such as "rig.bones[2].at". It is empty for a missing
  /// input.
  VSA_API std::string path() const;
  /// The node that the input belongs to, directly or through arrays and objects.
  NodeView owner() const noexcept;
  /// The type of the value. It is Null for a missing input and for an input without a value.
  ValueType type() const noexcept { return input_ != nullptr ? input_->type() : ValueType::Null; }

  // The value. If the input is missing or has a value of another type, the functions without a
  // parameter return std::nullopt. The functions with a parameter then return that parameter.

  /// The value of a Bool.
  std::optional<bool> boolean() const noexcept {
    return type() == ValueType::Bool ? std::optional(input_->boolean()) : std::nullopt;
  }
  bool boolean(bool fallback) const noexcept { return boolean().value_or(fallback); }
  /// The value of an Int, or of a UInt less than 2^63.
  VSA_API std::optional<std::int64_t> integer() const noexcept;
  std::int64_t integer(std::int64_t fallback) const noexcept {
    return integer().value_or(fallback);
  }
  /// The value of a UInt, or of an Int that is not negative.
  VSA_API std::optional<std::uint64_t> unsignedInteger() const noexcept;
  std::uint64_t unsignedInteger(std::uint64_t fallback) const noexcept {
    return unsignedInteger().value_or(fallback);
  }
  /// The value of a Real, an Int or a UInt. Integers are rounded to the nearest double.
  std::optional<double> real() const noexcept {
    return type() == ValueType::Real ? std::optional(input_->real()) : realOfInteger();
  }
  double real(double fallback) const noexcept { return real().value_or(fallback); }
  /// The characters of a String. They are valid until the input gets another value or is removed.
  std::optional<std::string_view> string() const noexcept {
    return type() == ValueType::String ? std::optional<std::string_view>(input_->string())
                                       : std::nullopt;
  }
  std::string_view string(TextParameter fallback) const noexcept {
    return string().value_or(fallback.view());
  }
  /// The 2 to 16 numbers of a vector, position, quaternion, colour or matrix. Matrices are row by
  /// row. The numbers are valid until the input gets another value or is removed. The result is
  /// empty for every other type.
  std::span<const double> components() const noexcept {
    if (input_ == nullptr) return {};
    return {input_->components(), zn::korvo_sdk::componentCount(input_->type())};
  }
  /// A copy of the N numbers of a tuple, such as `components<3>()` for a Vec3 or a Pos3. The result
  /// is std::nullopt if the value does not have N numbers.
  template <std::size_t N>
  std::optional<std::array<double, N>> components() const noexcept {
    const std::span<const double> all = components();
    if (all.size() != N) return std::nullopt;
    std::array<double, N> copy;
    for (std::size_t i = 0; i < N; ++i) copy[i] = all[i];
    return copy;
  }

  /// The buffer. If the input has no buffer, BufferView::problem returns the reason.
  BufferView buffer() const noexcept {
    if (input_ == nullptr) return {};
    if (input_->type() != ValueType::Buffer) return BufferView(BufferProblem::NotABuffer);
    return BufferView(input_->buffer());
  }
  /// The elements of the buffer, each with N numbers of type T. See BufferView::as.
  template <class T, std::size_t N = 1>
  requires BufferElement<T, N> TypedBuffer<T, N> buffer()
  const noexcept { return buffer().template as<T, N>(); }

  // Links.

  /// The node that the input refers to. It is missing if the input refers to no node, or if the
  /// node was removed.
  NodeView node() const noexcept;
  /// The output that the input is connected to. It is missing if the input has no connection, or if
  /// the node of the output was removed.
  ConnectionView connection() const noexcept {
    return ConnectionView(input_ != nullptr ? input_->connection() : nullptr);
  }

  // The elements of an array and the members of an object.

  /// The type of the elements of an array. It is Null if the type is not set, or if the input is
  /// not an array.
  ValueType elementType() const noexcept {
    return input_ != nullptr ? input_->elementType() : ValueType::Null;
  }
  /// The elements of an array, sorted by index. The range is empty if the input is not an array.
  ElementRange elements() const noexcept;
  /// The element at `index`. It is missing if there is none.
  InputView operator[](std::uint64_t index) const noexcept {
    return InputView(input_ != nullptr ? input_->element(index) : nullptr);
  }
  /// The members of an object, in the order of their creation. The range is empty if the input is
  /// not an object.
  MemberRange members() const noexcept;
  /// The member with this name. It is missing if there is none.
  InputView operator[](TextParameter member) const noexcept {
    return InputView(input_ != nullptr ? input_->memberNamed(member) : nullptr);
  }

  /// The input as an object of the plain interface. It is null for a missing view.
  const zn::korvo_sdk::Input* plain() const noexcept { return input_; }

 protected:
  zn::korvo_sdk::Input* mutablePlain() const noexcept { return input_; }

 private:
  friend class NodeView;
  VSA_API std::optional<double> realOfInteger() const noexcept;

  zn::korvo_sdk::Input* input_ = nullptr;
};

struct InputView::Elements {
  using Value = InputView;
  InputView array;
  InputView operator()(std::uint64_t index) const noexcept { return array[index]; }
};

struct InputView::Members {
  using Value = InputView;
  const zn::korvo_sdk::Input* object = nullptr;
  InputView operator()(std::uint64_t index) const noexcept {
    return InputView(object != nullptr ? object->member(index) : nullptr);
  }
};

inline InputView::ElementRange InputView::elements() const noexcept {
  return {Elements{*this}, input_ != nullptr ? input_->count() : 0};
}

inline InputView::MemberRange InputView::members() const noexcept {
  return {Members{input_}, input_ != nullptr ? input_->memberCount() : 0};
}

/// A view of a node.
class NodeView {
 public:
  struct Inputs {
    using Value = InputView;
    const zn::korvo_sdk::Node* node = nullptr;
    InputView operator()(std::uint64_t index) const noexcept {
      return InputView(node != nullptr ? node->inputAt(index) : nullptr);
    }
  };
  using InputRange = IndexRange<Inputs>;

  /// A missing node.
  NodeView() = default;
  /// The view of `node`. A null pointer gives a missing view.
  explicit NodeView(zn::korvo_sdk::Node* node) noexcept : node_(node) {}

  /// Whether the node exists.
  explicit operator bool() const noexcept { return node_ != nullptr; }
  /// Whether both are views of the same node, or both are missing.
  bool operator==(const NodeView&) const = default;

  /// The name, with the spelling of the text. It is valid as long as the scene.
  std::string_view name() const noexcept {
    return node_ != nullptr ? node_->nameView() : std::string_view();
  }
  /// The name of the node's type, with the spelling of the text. It is valid as long as the scene.
  std::string_view type() const noexcept {
    return node_ != nullptr ? node_->typeView() : std::string_view();
  }
  /// Whether the node was removed from its scene. A program can still read its inputs.
  bool isRemoved() const noexcept { return node_ != nullptr && node_->isRemoved(); }
  /// Whether the node's type was declared (see registerNodeType) when the node was created.
  bool isDeclared() const noexcept { return node_ != nullptr && node_->isDeclared(); }

  /// The inputs, in the order of their creation. If the type of the node is declared, the range
  /// contains only the inputs that a text or a program has looked up or added.
  InputRange inputs() const noexcept {
    return {Inputs{node_}, node_ != nullptr ? node_->inputCount() : 0};
  }
  /// The input with this name. It is missing if `inputs` does not contain it, even if the type of
  /// the node declares it.
  InputView operator[](TextParameter input) const noexcept {
    return InputView(node_ != nullptr ? node_->inputNamed(input) : nullptr);
  }

  /// The node as an object of the plain interface. It is null for a missing view.
  const zn::korvo_sdk::Node* plain() const noexcept { return node_; }

 protected:
  zn::korvo_sdk::Node* mutablePlain() const noexcept { return node_; }

 private:
  zn::korvo_sdk::Node* node_ = nullptr;
};

inline NodeView ConnectionView::node() const noexcept {
  return NodeView(output_ != nullptr ? output_->node() : nullptr);
}

inline NodeView InputView::owner() const noexcept {
  return NodeView(input_ != nullptr ? input_->owner() : nullptr);
}

inline NodeView InputView::node() const noexcept {
  return NodeView(input_ != nullptr ? input_->node() : nullptr);
}

/// A forward range of the nodes of a scene, in the order of their creation. It does not contain
/// removed nodes. Nodes that are added before an iteration ends are visited, too.
class NodeRange {
 public:
  class Iterator {
   public:
    using value_type = NodeView;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::forward_iterator_tag;
    // For C++17, this is only an input iterator, because `*i` is a value and not a reference.
    using iterator_category = std::input_iterator_tag;

    Iterator() = default;
    Iterator(const zn::korvo_sdk::Scene* scene, std::uint64_t slot) noexcept
        : scene_(scene), slot_(slot) {
      skipRemoved();
    }

    NodeView operator*() const noexcept { return node_; }
    Iterator& operator++() noexcept {
      ++slot_;
      skipRemoved();
      return *this;
    }
    Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++*this;
      return before;
    }
    friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
      return a.slot_ == b.slot_;
    }
    friend bool operator==(const Iterator& i, std::default_sentinel_t) noexcept { return !i.node_; }

   private:
    // Moves to the next node that was not removed. `nodeAt` returns null for a removed node and at
    // the end. Removed nodes are rare, so the loop tests for the end only after a null pointer.
    void skipRemoved() noexcept {
      node_ = NodeView(scene_ != nullptr ? scene_->nodeAt(slot_) : nullptr);
      while (!node_ && scene_ != nullptr && slot_ < scene_->nodeSlots()) {
        ++slot_;
        node_ = NodeView(scene_->nodeAt(slot_));
      }
    }

    const zn::korvo_sdk::Scene* scene_ = nullptr;
    std::uint64_t slot_ = 0;
    NodeView node_;  // the current node; missing at the end
  };

  /// The range of an empty scene.
  NodeRange() = default;
  /// The nodes of `scene`. A null pointer is an empty scene.
  explicit NodeRange(const zn::korvo_sdk::Scene* scene) noexcept : scene_(scene) {}

  Iterator begin() const noexcept { return {scene_, 0}; }
  std::default_sentinel_t end() const noexcept { return {}; }
  std::size_t size() const noexcept {
    return scene_ != nullptr ? static_cast<std::size_t>(scene_->nodeCount()) : 0;
  }
  bool empty() const noexcept { return size() == 0; }

 private:
  const zn::korvo_sdk::Scene* scene_ = nullptr;
};

/// A view of a scene of the library: of a vsa::Scene or of a zn::korvo_sdk::Scene. The scene must
/// exist as long as the view is used.
class SceneView {
 public:
  struct Comments {
    using Value = std::string_view;
    const zn::korvo_sdk::Scene* scene = nullptr;
    std::string_view operator()(std::uint64_t index) const noexcept {
      const bool exists = scene != nullptr && index < scene->fileCommentCount();
      return exists ? scene->fileComment(index).view() : std::string_view();
    }
  };
  using CommentRange = IndexRange<Comments>;

  /// A view of an empty scene.
  SceneView() = default;
  /// The view of `scene`. A null pointer is an empty scene.
  explicit SceneView(const zn::korvo_sdk::Scene* scene) noexcept : scene_(scene) {}
  /// The view of `scene`. The conversion is implicit, so that a caller can pass a scene as a view.
  /// A temporary scene does not convert, because it would be destroyed before the view.
  SceneView(const zn::korvo_sdk::Scene& scene) noexcept : scene_(&scene) {}
  SceneView(const zn::korvo_sdk::Scene&&) = delete;

  /// The nodes that were not removed, in the order of their creation.
  NodeRange nodes() const noexcept { return NodeRange(scene_); }
  /// The node with this name. It is missing if there is none.
  NodeView operator[](TextParameter node) const noexcept {
    return NodeView(scene_ != nullptr ? scene_->nodeNamed(node) : nullptr);
  }

  // The header of the file.

  /// The version of the format. It is 0 if nothing has set it. After a text without a version was
  /// read, it is 1, unless the reading has kept the header (see ReadOptions::keepHeader and
  /// <vsa/parse.h>).
  std::uint64_t fileVersion() const noexcept {
    return scene_ != nullptr ? scene_->fileVersion() : 0;
  }
  /// The time, with the spelling of the text. It is valid until the scene gets another time.
  std::string_view fileTime() const noexcept {
    return scene_ != nullptr ? scene_->fileTime().view() : std::string_view();
  }
  /// The comments with their "#", in the order of the text. They are valid until the comments of
  /// the scene change.
  CommentRange comments() const noexcept {
    return {Comments{scene_}, scene_ != nullptr ? scene_->fileCommentCount() : 0};
  }

  /// The scene as an object of the plain interface. It is null if there is no such object: the view
  /// is then the view of an empty scene.
  const zn::korvo_sdk::Scene* plain() const noexcept { return scene_; }

 private:
  const zn::korvo_sdk::Scene* scene_ = nullptr;
};

}  // namespace vsa

template <>
inline constexpr bool std::ranges::enable_view<vsa::NodeRange> = true;
template <>
inline constexpr bool std::ranges::enable_borrowed_range<vsa::NodeRange> = true;
