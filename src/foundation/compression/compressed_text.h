// Decompresses texts into memory of the caller. Internal; <vsa/foundation/decompress.h> describes
// their form.
#pragma once

#include <cstddef>
#include <optional>

#include <vsa/diagnostics/diagnostic_table.h>

namespace zn {

/// Receives regular calls while a text is decompressed. An exception from such a call ends the
/// decompression.
class RunObserver {
 public:
  virtual void beforeRun() = 0;

 protected:
  ~RunObserver() = default;
};

/// Decompresses the `size` characters at `data` into the `capacity` bytes at `out` and sets
/// `length` to the number of bytes written. Returns the error, if there is one. After an error some
/// bytes may have been written. `observer` may be null.
std::optional<korvo_sdk::DiagnosticId> expandCompressedText(const unsigned char* data,
                                                            std::size_t size, unsigned char* out,
                                                            std::size_t capacity,
                                                            std::size_t& length,
                                                            RunObserver* observer = nullptr);

}  // namespace zn
