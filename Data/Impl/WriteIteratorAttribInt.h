// The grow-and-retry step of every container write iterator, written once.
// A codec call that finds the buffer full returns OWIRE_RET_BUFFER_TOO_SMALL;
// the iterator then rolls back what the call left half-open, doubles the
// outermost object's buffer and repeats the call, so that callers never see
// the buffer run out.
#ifndef ORVO_DATA_IMPL_WRITE_ITERATOR_ATTRIB_INT_H_
#define ORVO_DATA_IMPL_WRITE_ITERATOR_ATTRIB_INT_H_

#include "Data/Impl/DataInt.h"
#include "orvo/common/Data.h"
#include "orvo/common/Types.h"
#include "orvo/data/WriteIteratorAttrib.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {

// A codec ...Complete function, called with false to roll an item back.
using RollbackCall = int (*)(OwfEncodeIterator* iter, bool success);

// Rolls the half-open item back with `rollback(iter, false)`, which must
// succeed, and doubles the outermost buffer.
void rollBackAndGrow(data::WriteIteratorAttrib& attrib, OwfEncodeIterator* iter,
                     RollbackCall rollback);

// For a call that opens an item (an ...Init): repeats `init()` until it
// finds room, rolling the item back before each growth. Returns the last
// code, which is never OWIRE_RET_BUFFER_TOO_SMALL.
template <class Init>
int initGrowing(data::WriteIteratorAttrib& attrib, OwfEncodeIterator* iter, RollbackCall rollback,
                Init init) {
  int result = init();
  while (result == OWIRE_RET_BUFFER_TOO_SMALL) {
    rollBackAndGrow(attrib, iter, rollback);
    result = init();
  }
  return result;
}

// For a call that writes a whole item and leaves nothing open: grows and
// repeats `encode()` until it finds room.
template <class Encode>
int encodeGrowing(data::WriteIteratorAttrib& attrib, OwfEncodeIterator* iter, Encode encode) {
  int result = encode();
  while (result == OWIRE_RET_BUFFER_TOO_SMALL) {
    attrib.growEncodeBuffer(iter);
    result = encode();
  }
  return result;
}

// Whether `data` holds complete wire bytes, which are copied as they are.
inline bool isEncoded(const common::Data& data) {
  return DataInt::encodeState(const_cast<common::Data*>(&data)) == common::Data::EncodeStateEncoded;
}

// The bytes of `data`: wire bytes when encoded, the unencoded value of a
// DataBuffer, or nothing for a container still to be written.
inline const OwfBuffer& encodedBytes(const common::Data& data) {
  return DataInt::encodedData(const_cast<common::Data*>(&data));
}

// A summary-carrying container (Map, Series, Vector) decides at the end of a
// nested write whether it stays open for entries, by its indication mask.
// Each of those classes registers how to read its mask; until one has, a
// nested write under it is an internal failure.
using IndicationMaskReader = common::UInt8 (*)(const common::Data& container);
void registerIndicationMaskReader(common::UInt8 dataType, IndicationMaskReader reader);

// Bit of an indication mask that says entries follow.
constexpr common::UInt8 kEntriesFollowFlag = 0x04;

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_WRITE_ITERATOR_ATTRIB_INT_H_
