// Helpers of the fuzzers that read whole texts.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tools/scene_text/read_outcome.h"

namespace vsa_fuzz {

/// A scene with limits that a short text can reach. The node type of declared_lamp.h is declared.
/// When the last FuzzScene is destroyed, leaked buffer literals are freed (see literal_memory.h).
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

/// The outcome of one read.
struct FuzzRead {
  vsa_tools::ReadOutcome outcome;
  zn::korvo_sdk::impl::ReadReport report;
};

/// Reads `text` from a String and counts the messages.
FuzzRead readFromString(zn::korvo_sdk::Scene& scene, std::string_view text);
/// The same from a File whose source returns at most `bytesPerRead` bytes per read; 0 is no limit.
FuzzRead readFromFile(zn::korvo_sdk::Scene& scene, std::string_view text, std::size_t bytesPerRead);

/// Result, log and scene as text. Accesses everything in the scene.
std::string dumped(const FuzzRead& read, const zn::korvo_sdk::Scene& scene);

}  // namespace vsa_fuzz
