// HashMap: 256 fixed buckets inside the map object, walked in index order and, within a bucket, in
// insertion order. The order of deferred resolution rests on this order.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <type_traits>

#include "foundation/hash_index.h"
#include "foundation/string.h"
#include "foundation/vector.h"

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
/// hash are one key. A long bucket is searched by halves as long as its hashes came in ascending
/// order, as the addresses of things made one after another do, and else through an index.
/// References to values hold until the next key is added. What adds a key throws std::bad_alloc and
/// leaves the map as it was; std::length_error at some 2^32 keys in one bucket.
template <class K, class V>
class HashMap {
 public:
  static constexpr std::uint64_t BUCKET_COUNT = 256;

  using Node = HashMapNode<K, V>;

  Vector<Node> buckets[BUCKET_COUNT];  ///< Bucket of a key: the low 8 bits of its hash.

  /// The node of `key`, or null. It stays where it is until the next key is added.
  Node* findNode(const K& key) { return findHash(hashOf(key)); }
  const Node* findNode(const K& key) const {
    return const_cast<HashMap*>(this)->findHash(hashOf(key));
  }

  /// Stores a copy of `value` under `key`, over an earlier one. Returns the stored value.
  V& set(const K& key, const V& value) { return store(key, V(value)); }
  V& set(const K& key, V&& value) { return store(key, std::move(value)); }

  /// Stores `value` under a key that is not in the map yet.
  V& add(const K& key, V&& value) { return append(hashOf(key), key, std::move(value)); }

  /// The value under `key`; a default one is added when there is none.
  V& operator[](const K& key) {
    Node* const node = findNode(key);
    return node != nullptr ? node->value : append(hashOf(key), key, V());
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
    std::fill(std::begin(isUnordered_), std::end(isUnordered_), false);
    index_ = HashIndex();
  }

 private:
  // Up to this many nodes, a bucket is scanned. From there on all nodes of an unordered bucket are
  // in the index.
  static constexpr std::uint64_t SCANNED = 8;

  Node* findHash(std::uint64_t hash) {
    Vector<Node>& bucket = bucketOf(hash);
    if (bucket.size > SCANNED) {
      return isUnordered_[numberOf(hash)] ? findIndexed(bucket, hash) : findByHalves(bucket, hash);
    }
    for (Node& node : bucket) {
      if (node.hash == hash) return &node;
    }
    return nullptr;
  }

  Node* findIndexed(Vector<Node>& bucket, std::uint64_t hash) {
    const std::uint64_t at = index_.find(
        hash, [&](std::uint64_t i) { return i < bucket.size && bucket[i].hash == hash; });
    return at == HashIndex::NONE ? nullptr : &bucket[at];
  }

  static Node* findByHalves(Vector<Node>& bucket, std::uint64_t hash) {
    if (hash > bucket[bucket.size - 1].hash) return nullptr;
    Node* const found =
        std::lower_bound(bucket.begin(), bucket.end(), hash,
                         [](const Node& node, std::uint64_t sought) { return node.hash < sought; });
    return found->hash == hash ? found : nullptr;
  }

  V& store(const K& key, V&& value) {
    Node* const node = findNode(key);
    if (node == nullptr) return append(hashOf(key), key, std::move(value));
    node->value = std::move(value);
    return node->value;
  }

  V& append(std::uint64_t hash, const K& key, V&& value) {
    Vector<Node>& bucket = bucketOf(hash);
    bool& isUnordered = isUnordered_[numberOf(hash)];
    const bool wasUnordered = isUnordered;
    const std::uint64_t at = bucket.size;
    bucket.push_back(Node{hash, key, std::move(value)});
    if (at != 0 && hash < bucket[at - 1].hash) isUnordered = true;
    if (!isUnordered || at < SCANNED) return bucket[at].value;
    // A bucket enters the index as a whole, once there is no better way through it.
    try {
      const bool isIndexed = wasUnordered && at > SCANNED;
      for (std::uint64_t i = isIndexed ? at : 0; i <= at; ++i) index_.insert(bucket[i].hash, i);
    } catch (...) {
      isUnordered = wasUnordered;
      --bucket.size;
      bucket.data[bucket.size].~Node();
      throw;
    }
    return bucket[at].value;
  }

  static std::uint64_t numberOf(std::uint64_t hash) { return hash & (BUCKET_COUNT - 1); }
  Vector<Node>& bucketOf(std::uint64_t hash) { return buckets[numberOf(hash)]; }

  bool isUnordered_[BUCKET_COUNT] = {};
  HashIndex index_;
};

}  // namespace zn::ds
