#include "api/reading/block_source.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace vsa {

std::size_t HostSource::read(char* to, std::size_t capacity) {
  return ending_.callHost([&] { return std::min(source_.read({to, capacity}), capacity); });
}

zn::String HostSource::error() const {
  return ending_.callHost([&] { return zn::String::copyOf(source_.error()); });
}

std::size_t BlockSource::read(char* to, std::size_t capacity) {
  observer_.beforeBlock();
  const std::size_t count = source_.read(to, capacity);
  observer_.afterBlock({to, count});
  return count;
}

}  // namespace vsa
