// Functions for the fuzzers that read whole texts.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tools/scene_text/read_outcome.h"

namespace vsa_fuzz {

/// A scene with limits that a short text can reach: a nesting depth of 12 and 400 empty elements.
/// Also declares the node type of declared_lamp.h. The destructor of the last FuzzScene frees
/// leaked buffer literals (see literal_memory.h).
class FuzzScene {
 public:
  FuzzScene();
  ~FuzzScene();
  FuzzScene(const FuzzScene&) = delete;
  FuzzScene& operator=(const FuzzScene&) = delete;

  zn::korvo_sdk::Scene& operator*() { return *scene_; }
  zn::korvo_sdk::Scene* operator->() { return scene_.get(); }

 private:
  std::unique_ptr<zn::korvo_sdk::Scene> scene_;
};

/// The result of one read.
struct FuzzRead {
  vsa_tools::ReadOutcome outcome;
  zn::korvo_sdk::impl::ReadReport report;
};

/// Reads `text` from a String. Counts the messages.
FuzzRead readFromString(zn::korvo_sdk::Scene& scene, std::string_view text);
/// Like readFromString, but from a File. Its source returns at most `bytesPerRead` bytes per read.
/// 0 means that there is no limit.
FuzzRead readFromFile(zn::korvo_sdk::Scene& scene, std::string_view text, std::size_t bytesPerRead);

/// Returns the result, the log and the scene as text. Accesses everything in the scene.
std::string dumped(const FuzzRead& read, const zn::korvo_sdk::Scene& scene);

}  // namespace vsa_fuzz
