// HashMap: 256 fixed buckets inside the map object, walked in index order and, within a bucket, in
// insertion order. The order of deferred resolution rests on this order.
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

/// A key, its hash, and the value stored under it. Only the value may be changed in place.
template <class K, class V>
struct HashMapNode {
  std::uint64_t hash;  ///< `hashOf(key)`.
  K key;
  V value;
};

template <class K, class V>
inline constexpr bool MOVES_AS_BYTES<HashMapNode<K, V>> = MOVES_AS_BYTES<K>&& MOVES_AS_BYTES<V>;

/// A map without rehashing. Keys are compared by hash alone, never by content: two keys of equal
/// hash are one key. A bucket that has grown long is searched through an index kept beside it,
/// which is brought up to date by the search: a map that is filled and walked needs none.
/// References to values hold until the next key is added. What adds a key throws std::bad_alloc and
/// leaves the map as it was; std::length_error at some 2^32 keys in one bucket.
template <class K, class V>
class HashMap {
 public:
  static constexpr std::uint64_t BUCKET_COUNT = 256;

  using Node = HashMapNode<K, V>;

  Vector<Node> buckets[BUCKET_COUNT];  ///< Bucket of a key: the low 8 bits of its hash.

  /// The node of `key`, or null. It stays where it is until the next key is added. Throws
  /// std::bad_alloc where the map is not const; then nothing has changed.
  Node* findNode(const K& key) { return findHash(hashOf(key)); }
  /// The same without the index, which a map that threads may share cannot bring up to date.
  const Node* findNode(const K& key) const {
    const std::uint64_t hash = hashOf(key);
    return scan(const_cast<HashMap*>(this)->bucketOf(hash), hash);
  }

  /// Stores a copy of `value` under `key`, over an earlier one. Returns the stored value.
  V& set(const K& key, const V& value) { return store(key, V(value)); }
  V& set(const K& key, V&& value) { return store(key, std::move(value)); }

  /// Stores `value` under a key that is not in the map yet.
  V& add(const K& key, V&& value) { return append(hashOf(key), key, std::move(value)); }

  /// The value under `key`; a default one is added when there is none.
  V& operator[](const K& key) {
    Node* const node = findNode(key);
    if (node == nullptr) return append(hashOf(key), key, V());
    return node->value;
  }

  /// The value under `key`, or `missing()`.
  const V& get(const K& key) const {
    const Node* const node = findNode(key);
    return node != nullptr ? node->value : missing();
  }

  /// What a look-up that finds nothing yields: one value-initialised V, the same for every map of
  /// these types, valid until the process ends.
  static const V& missing() {
    static const V value{};
    return value;
  }

  /// Forgets every key.
  void clear() {
    for (Vector<Node>& bucket : buckets) bucket.reserve(0);
    std::fill(std::begin(indexed_), std::end(indexed_), 0);
    index_ = HashIndex();
  }

 private:
  // Up to this many nodes, a bucket is scanned.
  static constexpr std::uint64_t SCANNED = 8;

  Node* findHash(std::uint64_t hash) {
    Vector<Node>& bucket = bucketOf(hash);
    if (bucket.size <= SCANNED) return scan(bucket, hash);
    for (std::uint64_t& i = indexed_[numberOf(hash)]; i < bucket.size; ++i) {
      index_.insert(spread(bucket[i].hash), i);
    }
    const std::uint64_t at = index_.find(
        spread(hash), [&](std::uint64_t i) { return i < bucket.size && bucket[i].hash == hash; });
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

  std::uint64_t indexed_[BUCKET_COUNT] = {};  // how many nodes of each bucket are in the index
  HashIndex index_;
};

}  // namespace zn::ds
