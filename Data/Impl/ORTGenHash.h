// A hash map from Key to Value over ORTDLinkHashTable that owns its nodes.
// Keys and values are held by pointer and stay the caller's: the map never
// copies nor frees them.
#ifndef ORVO_DATA_IMPL_ORT_GEN_HASH_H_
#define ORVO_DATA_IMPL_ORT_GEN_HASH_H_

#include "Data/Impl/ORTDLinkHashTable.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

template <class Key, class Value>
struct ORTGenHashLink : ORTDLink0 {
  Key* _key;
  Value* _value;
};

// One step of the hash shared by the dictionary's tables: h = ((h mod
// 8388593) << 8) + byte, the byte taken as a signed 8-bit value, in unsigned
// 32-bit arithmetic.
inline common::UInt32 ortHashStep(common::UInt32 h, char byte) {
  constexpr common::UInt32 kModulus = 8388593u;  // 2^23 - 15
  // h mod (2^23 - 15) without a division: with h = q * 2^23 + r, it is
  // (r + 15q) mod the modulus, and r + 15q is below twice the modulus.
  common::UInt32 rest = (h & 0x7FFFFFu) + 15u * (h >> 23);
  if (rest >= kModulus) rest -= kModulus;
  return (rest << 8) +
         static_cast<common::UInt32>(static_cast<common::Int32>(static_cast<signed char>(byte)));
}

// The hash over `length` bytes in order, starting from `h`.
//
// Only the residue mod 8388593 carries from one step to the next. For bytes
// below 0x80 a step never wraps, so the residue after four of them is
// (residue * 2^32 + the four bytes read big-endian) mod 8388593: one 64-bit
// remainder instead of four dependent steps, which shortens the chain a
// lookup by name waits on. Blocks with a negative byte take the plain steps.
inline common::UInt32 ortHashBytes(common::UInt32 h, const char* bytes, common::UInt32 length) {
  constexpr common::UInt64 kModulus = 8388593u;
  if (length == 0) return h;
  const common::UInt32 body = length - 1;  // the last byte is added without a remainder
  common::UInt64 residue = h % kModulus;
  common::UInt32 i = 0;
  for (; i + 4 <= body; i += 4) {
    const auto* b = reinterpret_cast<const unsigned char*>(bytes + i);
    const common::UInt32 block = (common::UInt32(b[0]) << 24) | (common::UInt32(b[1]) << 16) |
                                 (common::UInt32(b[2]) << 8) | common::UInt32(b[3]);
    if ((block & 0x80808080u) == 0) {
      residue = ((residue << 32) | block) % kModulus;
    } else {
      common::UInt32 stepped = common::UInt32(residue);
      for (common::UInt32 k = 0; k < 4; ++k) stepped = ortHashStep(stepped, bytes[i + k]);
      residue = stepped % kModulus;
    }
  }
  common::UInt32 stepped = common::UInt32(residue);
  for (; i < body; ++i) stepped = ortHashStep(stepped, bytes[i]);
  return ortHashStep(stepped, bytes[body]);
}

inline bool ortStringEquals(const common::ORVO_String& a, const common::ORVO_String& b) {
  return a == b;
}

template <class Key, class Value>
class ORTGenHash {
 public:
  using HashFunction = common::UInt32 (*)(const Key&);
  using Link = ORTGenHashLink<Key, Value>;
  using Table = ORTDLinkHashTable<Key, HashFunction, Link>;

  ORTGenHash(common::UInt32 bucketCount, HashFunction hash,
             typename Table::Compare compare = &ortStringEquals)
      : _hash(hash), _table(bucketCount, hash, compare, nullptr, true) {}
  ORTGenHash(const ORTGenHash&) = delete;
  ORTGenHash& operator=(const ORTGenHash&) = delete;
  ~ORTGenHash() {
    _table.removeAll([](Link* node) { delete node; });
  }

  void insert(Key* key, Value* value) {
    Link* node = new Link;
    node->_key = key;
    node->_value = value;
    _table.insert(node);
  }

  Value* find(const Key& key) const {
    Link* node = _table.find(key);
    return node == nullptr ? nullptr : node->_value;
  }

  template <class Equal>
  Value* findHashed(common::UInt32 h, Equal equal) const {
    Link* node = _table.findHashed(h, equal);
    return node == nullptr ? nullptr : node->_value;
  }

  // Enters a node the caller owns, for values that carry their own node and
  // so cost no allocation. The caller must take it out with removeLink
  // before it frees the node or the map is destroyed.
  void insertLink(Link* node) { _table.insert(node); }
  void insertLinkHashed(Link* node, common::UInt32 h) { _table.insertHashed(node, h); }
  void removeLink(Link* node) { _table.remove(node); }
  // Drops every node without touching it, for a map whose nodes all came
  // through insertLink; the caller frees them.
  void forgetLinks() { _table.forgetAll(); }
  void prefetchBucket(common::UInt32 h) const { _table.prefetchBucket(h); }

  // Frees every node, first handing its key and value to `visit`.
  template <class Visit>
  void removeAll(Visit visit) {
    _table.removeAll([&visit](Link* node) {
      visit(node->_key, node->_value);
      delete node;
    });
  }

  common::UInt32 size() const { return _table.count(); }
  common::UInt32 bucketCount() const { return _table.bucketCount(); }
  HashFunction hashFunction() const { return _hash; }

 private:
  HashFunction _hash;
  Table _table;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ORT_GEN_HASH_H_
