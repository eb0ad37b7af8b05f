#include "fuzz/support/fuzz_scene.h"

#include <utility>

#include "fuzz/support/literal_memory.h"
#include "fuzz/support/message_count.h"
#include "tests/support/byte_source.h"
#include "tests/support/declared_lamp.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_fuzz {

namespace {

using namespace zn::korvo_sdk;

int sceneCount = 0;

class MessageCounter final : public DiagnosticSink {
 public:
  void report(const Diagnostic& diagnostic) override { countMessage(diagnostic.id); }
};

template <class EntryPoint>
FuzzRead readWith(EntryPoint entryPoint) {
  FuzzRead read;
  vsa_tools::LogCapture log;
  MessageCounter counter;
  const ScopedDiagnosticSink scope(&counter);
  static_cast<vsa_tools::ReadStatus&>(read.outcome) =
      vsa_tools::captureRead([&] { return entryPoint(read.report); }, log);
  read.outcome.log = std::move(log.entries);
  const auto& escaped = read.outcome.escapedDiagnostic;
  if (escaped) countMessage(escaped->id);
  if (!read.report.cutOff.isEmpty()) countMessage(DiagnosticId::UnexpectedEof);
  return read;
}

}  // namespace

FuzzScene::FuzzScene() : scene_(std::make_unique<Scene>()) {
  vsa_tests::declareLamp();
  ++sceneCount;
  scene_->setEmptyElementLimit(400);
  scene_->setDepthLimit(12);
}

FuzzScene::~FuzzScene() {
  scene_.reset();
  if (--sceneCount == 0) freeLeakedLiterals();
}

FuzzRead readFromString(Scene& scene, std::string_view text) {
  return readWith([&](impl::ReadReport& report) {
    return impl::parseString(&scene, zn::String::copyOf(text), report);
  });
}

FuzzRead readFromFile(Scene& scene, std::string_view text, std::size_t bytesPerRead) {
  return readWith([&](impl::ReadReport& report) {
    const zn::File file = vsa_tests::memoryFile(std::string(text), bytesPerRead);
    return impl::parseVsa(&scene, file, true, report);
  });
}

std::string dumped(const FuzzRead& read, const Scene& scene) {
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(read.outcome, scene, out);
  return out.text();
}

}  // namespace vsa_fuzz
