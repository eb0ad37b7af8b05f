// Decompresses texts into memory of the caller. Internal.
//
// <vsa/foundation/decompress.h> describes the form of the texts.
#pragma once

#include <cstddef>
#include <optional>

#include <vsa/diagnostics/diagnostic_table.h>

namespace zn {

/// Is notified while a text is decompressed. beforeRun() is called before each run is read: a part
/// of the text that represents at most 8 KiB of compressed data. It is also called when nothing is
/// left to read. An exception from beforeRun() ends the decompression.
class RunObserver {
 public:
  virtual void beforeRun() = 0;

 protected:
  ~RunObserver() = default;
};

/// Decompresses the `size` characters at `data` into `out`, which has `capacity` bytes. Sets
/// `length` to the number of decompressed bytes, also after an error. Returns the error, or nullopt
/// if there is none. After a success, up to 32 bytes after the decompressed bytes may be set to
/// zero. After an error or an exception, any byte of `out` may have changed. `out` may be null if
/// `capacity` is 0. `observer` may be null. Throws only the exceptions of `observer`.
std::optional<korvo_sdk::DiagnosticId> expandCompressedText(const unsigned char* data,
                                                            std::size_t size, unsigned char* out,
                                                            std::size_t capacity,
                                                            std::size_t& length,
                                                            RunObserver* observer = nullptr);

}  // namespace zn
