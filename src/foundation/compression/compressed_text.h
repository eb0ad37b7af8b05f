// Compressed texts, expanded in place. Internal; <vsa/foundation/decompress.h> describes the form.
#pragma once

#include <cstddef>
#include <optional>

#include <vsa/diagnostics/diagnostic_table.h>

namespace zn {

/// Expands the `size` characters at `data` into the `capacity` bytes at `out`; `length` is how many
/// bytes were written. Returns what is wrong with the text; bytes may have been written then, too.
std::optional<korvo_sdk::DiagnosticId> expandCompressedText(const unsigned char* data,
                                                            std::size_t size, unsigned char* out,
                                                            std::size_t capacity,
                                                            std::size_t& length);

}  // namespace zn
