// Two sources of characters for a reading. HostSource reads a source of the host. BlockSource reads
// another source and notifies an observer before and after each read. Internal.
#pragma once

#include <cstddef>

#include <vsa/foundation/file.h>
#include <vsa/read.h>
#include "api/reading/outcome/ending.h"
#include "api/reading/text/block_observer.h"

namespace vsa {

/// Reads a vsa::Source of the host. An exception of that source ends the reading (see
/// Ending::callHost).
class HostSource final : public zn::ByteSource {
 public:
  /// `source` and `ending` must exist until the last call of `read` or `error`.
  HostSource(Source& source, Ending& ending) : source_(source), ending_(ending) {}

  std::size_t read(char* to, std::size_t capacity) override;
  zn::String error() const override;

 private:
  Source& source_;
  Ending& ending_;
};

/// Reads another ByteSource, and calls the observer before and after each read.
class BlockSource final : public zn::ByteSource {
 public:
  /// `source` must exist until the last call of `read` or `error`, and `observer` until the last
  /// call of `read`.
  BlockSource(zn::ByteSource& source, BlockObserver& observer)
      : source_(source), observer_(observer) {}

  std::size_t read(char* to, std::size_t capacity) override;
  zn::String error() const override { return source_.error(); }

 private:
  zn::ByteSource& source_;
  BlockObserver& observer_;
};

}  // namespace vsa
