// The reading functions of the public API.
#include <vsa/read.h>

#include <new>
#include <type_traits>

#include "api/reading/outcome/ending.h"
#include "api/reading/reading.h"

namespace vsa {

namespace {

using zn::korvo_sdk::interfaces::IScene;

std::string_view viewOf(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

template <class Read>
ReadOutcome readInto(IScene& scene, const ReadOptions& options, const Read& read) noexcept {
  ReadOutcome outcome;
  Reading reading(scene, options, outcome);
  read(reading);
  return outcome;
}

// Reads into the plain scene of `scene`. If the plain scene cannot be created, the outcome is
// OutOfMemory.
template <class Read>
ReadOutcome readInto(Scene& scene, const ReadOptions& options, const Read& read) noexcept {
  try {
    return readInto(static_cast<IScene&>(scene.plain()), options, read);
  } catch (const std::bad_alloc&) {
    ReadOutcome outcome;
    Ending(outcome).setToException();
    return outcome;
  }
}

ReadOutcome unreadable(std::string_view message) noexcept {
  ReadOutcome outcome;
  Ending(outcome).set(ReadStatus::Unreadable, message);
  return outcome;
}

template <class ReadIntoScene>
ReadResult resultOf(const ReadIntoScene& readIntoScene) noexcept {
  ReadResult result;
  static_cast<ReadOutcome&>(result) = readIntoScene(result.scene);
  return result;
}

template <class AnyScene>
ReadOutcome readFileAt(AnyScene& scene, const char* path, const ReadOptions& options) noexcept {
  if (path == nullptr) return unreadable("the path is null");
  return readInto(scene, options, [&](Reading& reading) { reading.readFile(path); });
}

// Reads the file at `path`. A path that contains a NUL is unreadable: the system would use only the
// part before the NUL.
template <class AnyScene>
ReadOutcome readFileAt(AnyScene& scene, const std::filesystem::path& path,
                       const ReadOptions& options) noexcept {
  if (path.native().find('\0') != path.native().npos) return unreadable("the path has a NUL");
  return readFileAt(scene, path.c_str(), options);
}

template <class AnyScene>
ReadOutcome readBytes(AnyScene& scene, std::string_view text, const ReadOptions& options) noexcept {
  return readInto(scene, options, [&](Reading& reading) { reading.readText(text); });
}

template <class AnyScene>
ReadOutcome readCString(AnyScene& scene, const char* text, const ReadOptions& options) noexcept {
  if (text == nullptr) return unreadable("the text is null");
  return readBytes(scene, text, options);
}

template <class AnyScene>
ReadOutcome readHostSource(AnyScene& scene, Source& source, const ReadOptions& options) noexcept {
  return readInto(scene, options, [&](Reading& reading) { reading.readSource(source); });
}

}  // namespace

// --- into a new scene ---

ReadResult readFile(const std::filesystem::path& path, const ReadOptions& options) noexcept {
  return resultOf([&](Scene& scene) { return readFileAt(scene, path, options); });
}

ReadResult readFile(const char* path, const ReadOptions& options) noexcept {
  return resultOf([&](Scene& scene) { return readFileAt(scene, path, options); });
}

ReadResult readText(std::string_view text, const ReadOptions& options) noexcept {
  return resultOf([&](Scene& scene) { return readBytes(scene, text, options); });
}

ReadResult readText(std::span<const std::byte> text, const ReadOptions& options) noexcept {
  return readText(viewOf(text), options);
}

ReadResult readText(const char* text, const ReadOptions& options) noexcept {
  return resultOf([&](Scene& scene) { return readCString(scene, text, options); });
}

ReadResult readSource(Source& source, const ReadOptions& options) noexcept {
  return resultOf([&](Scene& scene) { return readHostSource(scene, source, options); });
}

// --- into an existing scene ---

ReadOutcome readFileInto(Scene& scene, const std::filesystem::path& path,
                         const ReadOptions& options) noexcept {
  return readFileAt(scene, path, options);
}

ReadOutcome readFileInto(Scene& scene, const char* path, const ReadOptions& options) noexcept {
  return readFileAt(scene, path, options);
}

ReadOutcome readFileInto(IScene& scene, const std::filesystem::path& path,
                         const ReadOptions& options) noexcept {
  return readFileAt(scene, path, options);
}

ReadOutcome readFileInto(IScene& scene, const char* path, const ReadOptions& options) noexcept {
  return readFileAt(scene, path, options);
}

ReadOutcome readTextInto(Scene& scene, std::string_view text, const ReadOptions& options) noexcept {
  return readBytes(scene, text, options);
}

ReadOutcome readTextInto(Scene& scene, std::span<const std::byte> text,
                         const ReadOptions& options) noexcept {
  return readBytes(scene, viewOf(text), options);
}

ReadOutcome readTextInto(Scene& scene, const char* text, const ReadOptions& options) noexcept {
  return readCString(scene, text, options);
}

ReadOutcome readTextInto(IScene& scene, std::string_view text,
                         const ReadOptions& options) noexcept {
  return readBytes(scene, text, options);
}

ReadOutcome readTextInto(IScene& scene, std::span<const std::byte> text,
                         const ReadOptions& options) noexcept {
  return readBytes(scene, viewOf(text), options);
}

ReadOutcome readTextInto(IScene& scene, const char* text, const ReadOptions& options) noexcept {
  return readCString(scene, text, options);
}

ReadOutcome readSourceInto(Scene& scene, Source& source, const ReadOptions& options) noexcept {
  return readHostSource(scene, source, options);
}

ReadOutcome readSourceInto(IScene& scene, Source& source, const ReadOptions& options) noexcept {
  return readHostSource(scene, source, options);
}

}  // namespace vsa
