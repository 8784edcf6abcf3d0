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

// The hash step shared by the dictionary's tables: over the bytes in order,
// each taken as a signed 8-bit value, h = ((h mod 8388593) << 8) + byte, in
// unsigned 32-bit arithmetic.
inline common::UInt32 ortHashBytes(common::UInt32 h, const char* bytes, common::UInt32 length) {
  constexpr common::UInt32 kModulus = 8388593u;  // 2^23 - 15
  for (common::UInt32 i = 0; i < length; ++i) {
    // h mod (2^23 - 15) without a division: with h = q * 2^23 + r, it is
    // (r + 15q) mod the modulus, and r + 15q is below twice the modulus.
    common::UInt32 rest = (h & 0x7FFFFFu) + 15u * (h >> 23);
    if (rest >= kModulus) rest -= kModulus;
    h = (rest << 8) +
        static_cast<common::UInt32>(static_cast<common::Int32>(static_cast<signed char>(bytes[i])));
  }
  return h;
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
  void removeLink(Link* node) { _table.remove(node); }

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
