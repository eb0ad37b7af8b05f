// HashMap: a map of 256 fixed buckets inside the map object. Internal.
//
// An iteration visits the buckets in index order, and the nodes of a bucket in insertion order. The
// order in which pending links are resolved depends on this.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <type_traits>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "foundation/containers/hash_index.h"

namespace zn::ds {

/// Returns the hash of a text key.
inline std::uint64_t hashOf(const String& key) {
  return key.hash();
}

/// Returns the hash of a pointer key, which is the address itself.
template <class T>
std::uint64_t hashOf(T* key) {
  return reinterpret_cast<std::uintptr_t>(key);
}

/// A key, its hash, and its value. Only the value may be changed in the map.
template <class K, class V>
struct HashMapNode {
  std::uint64_t hash;  ///< The result of `hashOf(key)`.
  K key;
  V value;
};

template <class K, class V>
inline constexpr bool MOVES_AS_BYTES<HashMapNode<K, V>> = MOVES_AS_BYTES<K>&& MOVES_AS_BYTES<V>;

/// A map without rehashing. It compares keys only by hash: two keys with equal hashes are the same
/// key.
///
/// A look-up in a long bucket uses an index, except in a const map. Only look-ups add nodes to the
/// index, so a map that is only filled with `add` and iterated has no index. Nodes and values keep
/// their addresses until the next key is added or the map is cleared. Look-ups and functions that
/// add a key throw std::bad_alloc, or std::length_error at about 2^32 keys in one bucket. Look-ups
/// in a const map throw nothing. After an exception the map is unchanged.
template <class K, class V>
class HashMap {
 public:
  static constexpr std::uint64_t BUCKET_COUNT = 256;

  using Node = HashMapNode<K, V>;

  Vector<Node> buckets[BUCKET_COUNT];  ///< The index is the low 8 bits of a key's hash.

  /// Returns the node of `key`, or null.
  Node* findNode(const K& key) { return findHash(hashOf(key)); }
  /// Like the function above, but without the index, so that several threads may call it for a
  /// const map.
  const Node* findNode(const K& key) const {
    const std::uint64_t hash = hashOf(key);
    return scan(const_cast<HashMap*>(this)->bucketOf(hash), hash);
  }

  /// Stores `value` under `key` and replaces an earlier value. Returns the stored value.
  V& set(const K& key, const V& value) { return store(key, V(value)); }
  V& set(const K& key, V&& value) { return store(key, std::move(value)); }

  /// Stores `value` under `key`, which must not be in the map. Returns the stored value.
  V& add(const K& key, V&& value) { return append(hashOf(key), key, std::move(value)); }

  /// Returns the value of `key`. Adds a default value if the map does not contain `key`.
  V& operator[](const K& key) {
    Node* const node = findNode(key);
    if (node == nullptr) return append(hashOf(key), key, V());
    return node->value;
  }

  /// Returns the value of `key`. Returns `missing()` if the map does not contain `key`.
  const V& get(const K& key) const {
    const Node* const node = findNode(key);
    return node != nullptr ? node->value : missing();
  }

  /// Returns a value-initialised V: the result of `get` for a key that is not in the map. All maps
  /// with the same K and V return the same object.
  static const V& missing() {
    static const V value{};
    return value;
  }

  /// Removes all keys and frees the memory of the buckets and of the index.
  void clear() {
    for (Vector<Node>& bucket : buckets) bucket.reserve(0);
    std::fill(std::begin(indexed_), std::end(indexed_), 0);
    index_ = HashIndex();
  }

 private:
  // The maximum size of a bucket that a look-up in a map scans. A look-up in a larger bucket uses
  // the index. A look-up in a const map scans every bucket.
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

  // The number of nodes of each bucket that are in the index.
  std::uint64_t indexed_[BUCKET_COUNT] = {};
  HashIndex index_;
};

}  // namespace zn::ds
