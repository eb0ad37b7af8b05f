#include "vsa/apply/links/pending_link.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "vsa/apply/input_path.h"

namespace zn::korvo_sdk::impl {

namespace {

constexpr unsigned PAGE_BITS = 16;

std::uintptr_t numberOf(const void* address) {
  return reinterpret_cast<std::uintptr_t>(address);
}

// Returns true for `node.output`, the form of most sources. The third token needs no check, because
// it is always a name in a path of three tokens that begins with a name.
bool isNodeAndOutput(const ds::Vector<Token>& path) {
  return path.size == 3 && path[0].type == Token::Type::Id;
}

}  // namespace

TextArena::~TextArena() {
  for (char* const chunk : chunks_) delete[] chunk;
}

const char* TextArena::copyOf(std::string_view text) {
  if (left_ <= text.size()) addChunk(text.size() + 1);
  char* const copy = next_;
  std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  next_ += text.size() + 1;
  left_ -= text.size() + 1;
  return copy;
}

void TextArena::addChunk(std::size_t bytes) {
  // Adds the element before the chunk is allocated. Otherwise an exception of push_back would leak
  // the chunk.
  chunks_.push_back(nullptr);
  const std::size_t capacity = std::max(bytes, chunkBytes_);
  chunks_[chunks_.size - 1] = next_ = new char[capacity];
  // Changed only now: if `new` throws, the old chunk stays in use.
  left_ = capacity;
  chunkBytes_ = std::min(2 * chunkBytes_, MAX_CHUNK_BYTES);
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

void PendingTable::setLink(interfaces::IInput* input, std::string_view source, const String& output,
                           const TextPlace& place) {
  PendingLink link{source.empty() ? "" : sources_.copyOf(source), output, place};
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

void PendingTable::setLink(interfaces::IInput* input, const AssignInfo& info,
                           const TextPlace& place) {
  if (info.isConnection) {
    const ds::Vector<Token>& path = info.sourcePath;
    if (isNodeAndOutput(path)) return setLink(input, path[0].text.view(), path[2].text, place);
    return setLink(input, collapsedPath(path).view(), String(), place);
  }
  const bool isNull = info.referenceToken.type == Token::Type::Null;
  setLink(input, isNull ? std::string_view() : info.referenceToken.text.view(), String(), place);
}

}  // namespace zn::korvo_sdk::impl
