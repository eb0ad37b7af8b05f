// File: the handle of an open file.
#include <vsa/foundation/file.h>

#include <cerrno>

#include "foundation/io/descriptor_source.h"
#include "foundation/io/open_file.h"

namespace zn {

namespace {

using detail::OpenFile;

// Creates the OpenFile of a source. Retains the source before the allocation, so that the source is
// released if the allocation fails. This deletes a source that has no other owner.
OpenFile* openOver(ByteSource* source) {
  const RefersTo<ByteSource> held(source);
  return new OpenFile(source, "there is no source to read from");
}

File failedFile(int error) {
  File file;
  static_cast<RefersTo<RefCounted>&>(file) =
      RefersTo<RefCounted>(new OpenFile(nullptr, detail::messageOfError(error)));
  return file;
}

}  // namespace

File::File(ByteSource* source) : RefersTo<RefCounted>(openOver(source)) {
}

File File::open(const char* path) {
  if (path == nullptr) return failedFile(EINVAL);
  int error = 0;
  ByteSource* const source = detail::DescriptorSource::open(path, error);
  if (source == nullptr) return failedFile(error);
  const RefersTo<ByteSource> held(source);
  File file(source);
  file.fill();  // Detects a directory, which can be opened but not read.
  return file;
}

bool File::isOpen() const noexcept {
  return object() != nullptr && OpenFile::of(*this)->isOpen();
}

bool File::failed() const {
  return !error().isEmpty();
}

String File::error() const {
  const File held(*this);
  return object() == nullptr ? String("no file was opened") : OpenFile::of(held)->error();
}

// A source may assign to the handle that is being read. `error`, `read` and `fill` therefore copy
// the handle, which keeps the file open during the call of the source. Reading a buffered byte and
// skipping do not call the source and require no copy.

bool File::read(signed char& c) {
  OpenFile* const opened = OpenFile::of(*this);
  if (opened == nullptr) return false;
  if (opened->isBuffered()) return opened->read(c);
  const File held(*this);
  return opened->read(c);
}

File::Window File::fill() {
  const File held(*this);
  return object() == nullptr ? Window{nullptr, nullptr} : OpenFile::of(held)->fill();
}

void File::skip(std::size_t count) noexcept {
  if (object() != nullptr) OpenFile::of(*this)->skip(count);
}

}  // namespace zn
