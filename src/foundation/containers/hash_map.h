// HashMap: 256 fixed buckets inside the map object, iterated in index order and, within a bucket,
// in insertion order. The order in which pending links are resolved depends on it. Internal.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <type_traits>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "foundation/containers/hash_index.h"

namespace zn::ds {

/// The hash of a text key.
inline std::uint64_t hashOf(const String& key) {
  return key.hash();
}

/// The hash of a pointer key is the address itself, unchanged.
template <class T>
std::uint64_t hashOf(T* key) {
  return reinterpret_cast<std::uintptr_t>(key);
}

/// A key, its hash, and its value. Only the value may be changed in place.
template <class K, class V>
struct HashMapNode {
  std::uint64_t hash;  ///< `hashOf(key)`.
  K key;
  V value;
};

template <class K, class V>
inline constexpr bool MOVES_AS_BYTES<HashMapNode<K, V>> = MOVES_AS_BYTES<K>&& MOVES_AS_BYTES<V>;

/// A map without rehashing. Keys are compared by hash alone, never by content: two keys with equal
/// hashes are one key. A long bucket is searched through an index. The search itself adds the new
/// nodes to the index, so a map that is only filled and iterated has no index. References to values
/// are valid until the next key is added. Functions that add a key throw std::bad_alloc, and
/// std::length_error at about 2^32 keys in one bucket; the map is unchanged then.
template <class K, class V>
class HashMap {
 public:
  static constexpr std::uint64_t BUCKET_COUNT = 256;

  using Node = HashMapNode<K, V>;

  Vector<Node> buckets[BUCKET_COUNT];  ///< Indexed by the low 8 bits of a key's hash.

  /// The node of `key`, or null; valid until the next key is added. Throws std::bad_alloc; the map
  /// is unchanged then.
  Node* findNode(const K& key) { return findHash(hashOf(key)); }
  /// The same search without the index, so that threads may share a const map.
  const Node* findNode(const K& key) const {
    const std::uint64_t hash = hashOf(key);
    return scan(const_cast<HashMap*>(this)->bucketOf(hash), hash);
  }

  /// Stores `value` under `key`, replacing an earlier value. Returns the stored value.
  V& set(const K& key, const V& value) { return store(key, V(value)); }
  V& set(const K& key, V&& value) { return store(key, std::move(value)); }

  /// Stores `value` under a key that is not in the map.
  V& add(const K& key, V&& value) { return append(hashOf(key), key, std::move(value)); }

  /// The value of `key`; a default value is added when there is none.
  V& operator[](const K& key) {
    Node* const node = findNode(key);
    if (node == nullptr) return append(hashOf(key), key, V());
    return node->value;
  }

  /// The value of `key`, or `missing()`.
  const V& get(const K& key) const {
    const Node* const node = findNode(key);
    return node != nullptr ? node->value : missing();
  }

  /// The result of a look-up that finds nothing: a value-initialised V, the same object for all
  /// maps of these types.
  static const V& missing() {
    static const V value{};
    return value;
  }

  /// Removes all keys.
  void clear() {
    for (Vector<Node>& bucket : buckets) bucket.reserve(0);
    std::fill(std::begin(indexed_), std::end(indexed_), 0);
    index_ = HashIndex();
  }

 private:
  // A bucket of up to this many nodes is scanned, without the index.
  static constexpr std::uint64_t MAX_SCANNED = 8;

  Node* findHash(std::uint64_t hash) {
    Vector<Node>& bucket = bucketOf(hash);
    if (bucket.size <= MAX_SCANNED) return scan(bucket, hash);
    for (std::uint64_t& i = indexed_[numberOf(hash)]; i < bucket.size; ++i) {
      index_.insert(mixed(bucket[i].hash), i);
    }
    const std::uint64_t at = index_.find(
        mixed(hash), [&](std::uint64_t i) { return i < bucket.size && bucket[i].hash == hash; });
    return at == HashIndex::NONE ? nullptr : &bucket[at];
  }

  static Node* scan(Vector<Node>& bucket, std::uint64_t hash) {
    for (Node& node : bucket) {
      if (node.hash == hash) return &node;
    }
    return nullptr;
  }

  V& store(const K& key, V&& value) {
    Node* const node = findNode(key);
    if (node == nullptr) return append(hashOf(key), key, std::move(value));
    node->value = std::move(value);
    return node->value;
  }

  V& append(std::uint64_t hash, const K& key, V&& value) {
    Vector<Node>& bucket = bucketOf(hash);
    bucket.push_back(Node{hash, key, std::move(value)});
    return bucket[bucket.size - 1].value;
  }

  static std::uint64_t numberOf(std::uint64_t hash) { return hash & (BUCKET_COUNT - 1); }
  Vector<Node>& bucketOf(std::uint64_t hash) { return buckets[numberOf(hash)]; }

  std::uint64_t indexed_[BUCKET_COUNT] = {};  // how many nodes of a bucket are in the index
  HashIndex index_;
};

}  // namespace zn::ds
