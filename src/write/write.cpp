// The writing functions of the public API. Without WriteOptions::lossy, each function checks the
// whole scene before it writes the text.
#include <vsa/file_replacement.h>
#include <vsa/write.h>

#include <new>
#include <utility>

#include "write/header_text.h"
#include "write/scene_writer.h"
#include "write/walk/node_order.h"

namespace vsa {

namespace {

using impl::ProblemList;
using impl::SceneVisitor;
using impl::SceneWalk;
using impl::TextBuffer;

class StringSink final : public Sink {
 public:
  explicit StringSink(std::string& text) : text_(text) {}

  bool write(std::string_view text) override {
    text_ += text;
    return true;
  }

 private:
  std::string& text_;
};

void walkScene(const zn::korvo_sdk::Scene& scene, NodeOrder order, SceneVisitor& visitor) {
  SceneWalk walk(scene, visitor);
  impl::forEachNode(scene, order, [&](const zn::korvo_sdk::Node& node) { walk.walk(node); });
}

std::string messageOf(const WriteResult& result) {
  std::string message = "a text cannot carry the scene";
  if (result.problems.empty()) return message;
  const WriteProblem& first = result.problems.front();
  message += ": " + first.node + first.input;
  message += (first.node.empty() ? "" : ": ") + first.reason;
  const std::uint64_t others = result.problemCount - 1;
  if (others > 0) message += " (and " + std::to_string(others) + " more)";
  return message;
}

/// Returns whether the scene can be written: it has no problem, or WriteOptions::lossy is set.
/// Otherwise sets the status and the message. Adds the problems of the header to `problems`. Adds
/// the problems of the nodes only if `lossy` is false. If it is true, NodeWriter adds them while it
/// writes.
bool isCarried(const zn::korvo_sdk::Scene& scene, const impl::HeaderText& header,
               const WriteOptions& options, ProblemList& problems, WriteResult& result) {
  for (const char* const reason : header.problems()) problems.add("", "", reason, false);
  if (options.lossy) return true;
  impl::SceneCheck check(problems);
  walkScene(scene, NodeOrder::Created, check);
  if (result.problemCount == 0) return true;
  result.status = WriteStatus::NotCarried;
  result.message = messageOf(result);
  return false;
}

void writeScene(const zn::korvo_sdk::Scene& scene, Sink& sink, const WriteOptions& options,
                WriteResult& result) {
  ProblemList problems(result, options.keptProblems);
  const impl::HeaderText header(scene, options.header);
  if (!isCarried(scene, header, options, problems, result)) return;
  TextBuffer out(sink);
  header.put(out);
  impl::NodeWriter nodes(out, options, problems);
  walkScene(scene, options.order, nodes);
  if (options.links == LinkPlace::Last) {
    impl::LinkWriter links(out);
    walkScene(scene, options.order, links);
  }
  out.flush();
  result.bytesWritten = out.flushed();
}

void fail(WriteResult& result, WriteStatus status, std::string message) noexcept {
  result.status = status;
  result.message = std::move(message);
}

std::string textOf(const std::exception& error) {
  const char* const text = error.what();
  if (text == nullptr) return {};
  return text;
}

/// Calls `write()`. If it throws an exception, sets the status and the message of the result. The
/// result also stores the exception, unless it is a WriteFailed or a std::bad_alloc.
template <class Write>
void guarded(WriteResult& result, const Sink& sink, const Write& write) noexcept {
  try {
    try {
      write();
    } catch (const impl::WriteFailed&) {
      fail(result, WriteStatus::Unwritable, sink.error());
    } catch (const std::bad_alloc&) {
      fail(result, WriteStatus::OutOfMemory, {});
    } catch (const std::exception& error) {
      result.exception = std::current_exception();
      fail(result, WriteStatus::HostException, textOf(error));
    }
  } catch (const std::bad_alloc&) {
    fail(result, WriteStatus::OutOfMemory, {});
  } catch (...) {
    result.exception = std::current_exception();
    fail(result, WriteStatus::HostException, {});
  }
}

// The implementations of the public functions, each for zn::korvo_sdk::Scene and for vsa::Scene.
// `plain()` returns the scene as a zn::korvo_sdk::Scene.

template <class Plain>
WriteResult writeToSink(const Plain& plain, Sink& sink, const WriteOptions& options) noexcept {
  WriteResult result;
  guarded(result, sink, [&] { writeScene(plain(), sink, options, result); });
  return result;
}

template <class Plain>
TextResult writeToString(const Plain& plain, const WriteOptions& options) noexcept {
  TextResult result;
  StringSink sink(result.text);
  guarded(result, sink, [&] { writeScene(plain(), sink, options, result); });
  if (!result.isWritten()) result.text.clear();
  return result;
}

template <class Plain>
WriteResult writeToFile(const Plain& plain, const std::filesystem::path& path,
                        const WriteOptions& options) noexcept {
  WriteResult result;
  FileReplacement file;
  guarded(result, file, [&] {
    if (!file.open(path)) throw impl::WriteFailed();
    writeScene(plain(), file, options, result);
    if (result.isWritten() && !file.replace()) throw impl::WriteFailed();
  });
  return result;
}

}  // namespace

WriteResult writeTo(const zn::korvo_sdk::Scene& scene, Sink& sink,
                    const WriteOptions& options) noexcept {
  return writeToSink(
      [&]() -> auto& { return scene; }, sink, options);
}

TextResult writeText(const zn::korvo_sdk::Scene& scene, const WriteOptions& options) noexcept {
  return writeToString(
      [&]() -> auto& { return scene; }, options);
}

WriteResult writeFile(const zn::korvo_sdk::Scene& scene, const std::filesystem::path& path,
                      const WriteOptions& options) noexcept {
  return writeToFile(
      [&]() -> auto& { return scene; }, path, options);
}

WriteResult writeTo(const Scene& scene, Sink& sink, const WriteOptions& options) noexcept {
  return writeToSink(
      [&]() -> auto& { return scene.plain(); }, sink, options);
}

TextResult writeText(const Scene& scene, const WriteOptions& options) noexcept {
  return writeToString(
      [&]() -> auto& { return scene.plain(); }, options);
}

WriteResult writeFile(const Scene& scene, const std::filesystem::path& path,
                      const WriteOptions& options) noexcept {
  return writeToFile(
      [&]() -> auto& { return scene.plain(); }, path, options);
}

}  // namespace vsa
