#include "vsa/apply/pending_link.h"

#include <algorithm>
#include <utility>

#include "vsa/apply/input_path.h"

namespace zn::korvo_sdk::impl {

namespace {

constexpr unsigned PAGE_BITS = 16;

std::uintptr_t numberOf(const void* address) {
  return reinterpret_cast<std::uintptr_t>(address);
}

// Most sources are written `node.output`. In a path of three tokens that begins with a name, the
// third token is also a name.
bool isNodeAndOutput(const ds::Vector<Token>& path) {
  return path.size == 3 && path[0].type == Token::Type::Id;
}

}  // namespace

PendingLink::PendingLink(const AssignInfo& info) {
  if (info.isConnection) {
    const ds::Vector<Token>& path = info.sourcePath;
    const bool isPlain = isNodeAndOutput(path);
    source = isPlain ? path[0].text : collapsedPath(path);
    if (isPlain) output = path[2].text;
  } else if (info.referenceToken.type != Token::Type::Null) {
    source = info.referenceToken.text;
  }
}

bool AddressFilter::mayContain(const void* address) const noexcept {
  const std::uintptr_t page = numberOf(address) >> PAGE_BITS;
  if (last_ != nullptr && last_->first == page) return numberOf(address) <= last_->second;
  const auto found = highest_.find(page);
  return found != highest_.end() && numberOf(address) <= found->second;
}

void AddressFilter::add(const void* address) {
  const std::uintptr_t page = numberOf(address) >> PAGE_BITS;
  if (last_ == nullptr || last_->first != page) last_ = &*highest_.try_emplace(page, 0).first;
  last_->second = std::max(last_->second, numberOf(address));
}

void PendingTable::setLink(interfaces::IInput* input, PendingLink&& link) {
  if (addresses_.mayContain(input)) {
    if (Node* const node = findNode(input); node != nullptr) {
      node->value = std::move(link);
      return;
    }
  }
  input->retain();
  addresses_.add(input);
  add(input, std::move(link));
}

}  // namespace zn::korvo_sdk::impl
