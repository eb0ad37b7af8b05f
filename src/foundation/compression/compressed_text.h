// Decompresses texts into memory of the caller. Internal.
//
// <vsa/foundation/decompress.h> describes the form of the texts.
#pragma once

#include <cstddef>
#include <optional>

#include <vsa/diagnostics/diagnostic_table.h>

namespace zn {

/// Is notified while a text is decompressed. beforeRun() is called before each run is read: a part
/// of the text that represents at most 8 KiB of compressed data. An exception from beforeRun() ends
/// the decompression.
class RunObserver {
 public:
  virtual void beforeRun() = 0;

 protected:
  ~RunObserver() = default;
};

/// Decompresses the `size` characters at `data` into `out`, which has `capacity` bytes. Sets
/// `length` to the number of bytes written. Returns the error, or nullopt if there is none. After
/// an error, some bytes of `out` may have changed. `observer` may be null.
std::optional<korvo_sdk::DiagnosticId> expandCompressedText(const unsigned char* data,
                                                            std::size_t size, unsigned char* out,
                                                            std::size_t capacity,
                                                            std::size_t& length,
                                                            RunObserver* observer = nullptr);

}  // namespace zn
