// A chained hash table of intrusive nodes. Each bucket is the head of a
// circular doubly linked list; an empty head points at itself. The table owns
// only its bucket array: nodes, and the keys and values they point at, belong
// to the caller (ORTGenHash owns the nodes of the table it wraps).
//
// The table never grows or rehashes: it is sized once for the expected number
// of keys. New nodes go to the head of their bucket and a lookup stops at the
// first equal key, so of two nodes with equal keys the newer one is found.
#ifndef ORVO_DATA_IMPL_ORT_DLINK_HASH_TABLE_H_
#define ORVO_DATA_IMPL_ORT_DLINK_HASH_TABLE_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

struct ORTDLink0 {
  ORTDLink0* _next;
  ORTDLink0* _prev;
};

// `Hash` is a function (pointer) from `const Key&` to UInt32. `Link` derives
// from ORTDLink0 and has a member `Key* _key`.
template <class Key, class Hash, class Link>
class ORTDLinkHashTable {
 public:
  using Compare = bool (*)(const Key&, const Key&);
  using Unused = void (*)();

  // With `roundUp` the bucket count is first moved to a number that none of
  // the small divisors of roundUpBucketCount divides.
  ORTDLinkHashTable(common::UInt32 bucketCount, Hash hash, Compare compare, Unused unused,
                    bool roundUp)
      : _bucketCount(roundUp ? roundUpBucketCount(bucketCount) : bucketCount),
        _count(0),
        _buckets(new ORTDLink0[_bucketCount]),
        _hash(hash),
        _compare(compare),
        _unused(unused) {
    for (common::UInt32 i = 0; i < _bucketCount; ++i) {
      _buckets[i]._next = &_buckets[i];
      _buckets[i]._prev = &_buckets[i];
    }
  }
  ORTDLinkHashTable(const ORTDLinkHashTable&) = delete;
  ORTDLinkHashTable& operator=(const ORTDLinkHashTable&) = delete;
  virtual ~ORTDLinkHashTable() { delete[] _buckets; }

  // 2 for anything up to 2; otherwise the first odd number from n on that
  // none of the divisors below divides, unless it is the divisor itself. 91
  // is not prime and is kept among the divisors: bucket counts depend on it.
  static common::UInt32 roundUpBucketCount(common::UInt32 n) {
    static const common::UInt32 kDivisors[] = {3,  5,  7,  11, 13, 17, 19, 23, 29, 31, 37, 41,
                                               43, 47, 53, 59, 61, 67, 73, 79, 83, 89, 91, 97};
    if (n <= 2) return 2;
    if (n % 2 == 0) ++n;
    bool hit = true;
    while (hit) {
      hit = false;
      for (common::UInt32 d : kDivisors) {
        if (n % d == 0 && n != d) {
          n += 2;
          hit = true;
          break;
        }
      }
    }
    return n;
  }

  common::UInt32 bucketCount() const { return _bucketCount; }
  common::UInt32 count() const { return _count; }
  common::UInt32 hashOf(const Key& key) const { return _hash(key); }

  void insert(Link* node) { insertHashed(node, _hash(*node->_key)); }

  // Insert for a caller that already has the hash value of the node's key.
  void insertHashed(Link* node, common::UInt32 h) {
    ORTDLink0& head = _buckets[h % _bucketCount];
    node->_next = head._next;
    node->_prev = &head;
    head._next->_prev = node;
    head._next = node;
    ++_count;
  }

  Link* find(const Key& key) const {
    return findHashed(_hash(key), [this, &key](const Key& other) { return _compare(other, key); });
  }

  // Walks the bucket of hash value `h` and answers the first node whose key
  // `equal` accepts; lets a caller look up something that is not a Key.
  template <class Equal>
  Link* findHashed(common::UInt32 h, Equal equal) const {
    const ORTDLink0* head = &_buckets[h % _bucketCount];
    for (ORTDLink0* at = head->_next; at != head; at = at->_next) {
      Link* node = static_cast<Link*>(at);
      if (equal(*node->_key)) return node;
    }
    return nullptr;
  }

  // Starts loading the bucket of hash value `h`, for a caller that will
  // insert or look up there after other work: a large table's buckets are
  // mostly out of cache.
  void prefetchBucket(common::UInt32 h) const { __builtin_prefetch(&_buckets[h % _bucketCount]); }

  void remove(Link* node) {
    node->_prev->_next = node->_next;
    node->_next->_prev = node->_prev;
    node->_next = node->_prev = node;
    --_count;
  }

  // Empties every bucket at once. The nodes keep stale links: for callers
  // that are about to free all of them, where unlinking each would visit
  // their buckets one by one in no useful order.
  void forgetAll() {
    for (common::UInt32 i = 0; i < _bucketCount; ++i) {
      _buckets[i]._next = &_buckets[i];
      _buckets[i]._prev = &_buckets[i];
    }
    _count = 0;
  }

  // Unlinks every node, handing each to `visit` once it is out of the table.
  template <class Visit>
  void removeAll(Visit visit) {
    if (_count == 0) return;
    for (common::UInt32 i = 0; i < _bucketCount; ++i) {
      ORTDLink0* head = &_buckets[i];
      while (head->_next != head) {
        Link* node = static_cast<Link*>(head->_next);
        remove(node);
        visit(node);
      }
    }
  }

 private:
  common::UInt32 _bucketCount;
  common::UInt32 _count;
  ORTDLink0* _buckets;
  Hash _hash;
  Compare _compare;
  Unused _unused;  // kept for layout; always null
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ORT_DLINK_HASH_TABLE_H_
