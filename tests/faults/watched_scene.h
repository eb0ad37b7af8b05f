// WatchedScene: a host's scene that wraps another scene. It counts every call and forwards it,
// except a call that throws and a creation that it refuses. It can throw in the n-th call, and
// refuse the n-th creation or all of them. The file also has sources that fail from the n-th read
// on.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/model/scene.h>
#include <vsa/scene/scene_interface.h>

namespace vsa_tests {

/// Declares the node type that the cases use.
void declareCaseTypes();

/// A source that delivers a text in pieces of at most `most` bytes.
class TextPieces : public zn::ByteSource {
 public:
  TextPieces(zn::String text, std::size_t most) : text_(std::move(text)), most_(most) {}
  std::size_t read(char* to, std::size_t capacity) override;

 protected:
  zn::String text_;
  std::size_t most_;
  std::size_t at_ = 0;
};

/// A source whose first `good` reads succeed. All later reads have the fault. With StopsShort they
/// return one byte, or none at the end of the text. With Fails they return 0, and error() returns a
/// text. With Throws they throw.
class FailingPieces final : public TextPieces {
 public:
  enum Fault { Fails, StopsShort, Throws };
  FailingPieces(zn::String text, std::size_t most, std::size_t good, Fault fault)
      : TextPieces(std::move(text), most), good_(good), fault_(fault) {}
  std::size_t read(char* to, std::size_t capacity) override;
  zn::String error() const override { return error_; }

 private:
  std::size_t good_;
  Fault fault_;
  zn::String error_;
};

class WatchedScene final : public zn::korvo_sdk::interfaces::IScene {
 public:
  explicit WatchedScene(zn::korvo_sdk::Scene& scene);
  WatchedScene(const WatchedScene&) = delete;
  WatchedScene& operator=(const WatchedScene&) = delete;
  ~WatchedScene();

  /// Makes the n-th call of any operation throw std::runtime_error "host fault in NAME".
  void throwAt(std::uint64_t n) { throwing_ = n; }
  /// Makes the n-th creation return null or add nothing. A creation is a call of createNode(),
  /// defineNode(), createInput(), createArray(), appendElement(), element() or output().
  void refuseAt(std::uint64_t n) { refusing_ = n; }
  void refuseEverything() { refusesEverything_ = true; }

  std::uint64_t calls() const { return calls_; }
  std::uint64_t creations() const { return creations_; }
  /// The name of the operation that threw, or an empty text.
  const std::string& faultyCall() const { return faultyCall_; }

  // The functions of IScene.

  zn::korvo_sdk::interfaces::INode* findNode(const zn::String& name) override;
  zn::korvo_sdk::interfaces::INode* createNode(const zn::String& type, const zn::String& name,
                                               const zn::String& reserved) override;
  zn::korvo_sdk::interfaces::INode* defineNode(const zn::String& name) override;
  void removeNode(const zn::String& name) override;
  void setFileVersion(unsigned long long version) override;
  void setFileTime(const zn::String& time) override;
  void pushFileComment(const zn::String& comment) override;
  void clearComments() override;

 private:
  class WatchedNode;
  class WatchedInput;
  class WatchedOutput;
  class WatchedEnumeration;

  void call(const char* name);
  bool refuses();
  WatchedNode* watched(zn::korvo_sdk::interfaces::INode* node);
  WatchedInput* watched(zn::korvo_sdk::interfaces::IInput* input);
  WatchedOutput* watched(zn::korvo_sdk::interfaces::IOutput* output);
  const WatchedEnumeration* watched(const zn::korvo_sdk::interfaces::IEnumeration* values);

  zn::korvo_sdk::Scene& scene_;
  std::map<void*, std::unique_ptr<WatchedNode>> nodes_;
  std::map<void*, std::unique_ptr<WatchedInput>> inputs_;
  std::map<void*, std::unique_ptr<WatchedOutput>> outputs_;
  std::map<const void*, std::unique_ptr<WatchedEnumeration>> enumerations_;
  std::uint64_t throwing_ = 0;
  std::uint64_t refusing_ = 0;
  bool refusesEverything_ = false;
  std::uint64_t calls_ = 0;
  std::uint64_t creations_ = 0;
  std::string faultyCall_;
};

}  // namespace vsa_tests
