// Compressed texts, expanded in place. Internal; <vsa/foundation/decompress.h> describes the form.
#pragma once

#include <cstddef>
#include <optional>

#include <vsa/diagnostics/diagnostic_table.h>

namespace zn {

/// Is told from time to time while a text is expanded. What it throws ends the expansion.
class RunObserver {
 public:
  virtual void beforeRun() = 0;

 protected:
  ~RunObserver() = default;
};

/// Decompresses the `size` characters at `data` into the `capacity` bytes at `out` and sets
/// `length` to the number of bytes written. Returns the error, if there is one. Some bytes may then
/// have been written. `observer` may be null.
std::optional<korvo_sdk::DiagnosticId> expandCompressedText(const unsigned char* data,
                                                            std::size_t size, unsigned char* out,
                                                            std::size_t capacity,
                                                            std::size_t& length,
                                                            RunObserver* observer = nullptr);

}  // namespace zn
