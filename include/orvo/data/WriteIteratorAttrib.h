// The part every container write iterator shares: the object being written,
// the encode iterator its bytes go through (the outermost object's, however
// deep the nesting), growth of the outermost buffer, and the closing of the
// enclosing entry when a nested container completes.
//
// Internal to the library's write iterators.
#ifndef ORVO_DATA_WRITE_ITERATOR_ATTRIB_H_
#define ORVO_DATA_WRITE_ITERATOR_ATTRIB_H_

#include "orvo/common/Data.h"
#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class WriteIteratorAttrib {
 public:
  WriteIteratorAttrib();
  WriteIteratorAttrib(const WriteIteratorAttrib&) = delete;
  WriteIteratorAttrib& operator=(const WriteIteratorAttrib&) = delete;
  virtual ~WriteIteratorAttrib();

  common::Data* data() const { return _data; }
  void setData(common::Data* data) { _data = data; }
  OwfEncodeIterator* encodeIter() const { return _encodeIter; }
  void setEncodeIter(OwfEncodeIterator* iter) { _encodeIter = iter; }
  // Set until an iterator that writes its header late has written it.
  bool headerPending() const { return _headerPending; }
  void setHeaderPending(bool pending) { _headerPending = pending; }

  // Takes the encode iterator of the object directly above `data()` and
  // tells whether that object has a buffer. It looks one level up only.
  bool attachToRoot();
  // Makes `data` the object being written and readies its buffer: the first
  // write of an outermost object gets a 4096-byte buffer, a later one reuses
  // it, and a nested object writes through its parent's iterator.
  void beginEncode(common::Data* data, common::UInt8 dataType);
  // Points a container bound without bytes at this write, so that its own
  // write iterator fills the entry just opened for it.
  void attachNested(const common::Data& nested);
  // Doubles the outermost object's buffer and moves what `iter` wrote there.
  void growEncodeBuffer(OwfEncodeIterator* iter);
  // Ends the write of `data()`: the outermost object takes its length, a
  // nested one closes the entry (or summary) of its parent that holds it.
  void encodeParentComplete();

 private:
  bool _headerPending;
  OwfEncodeIterator* _encodeIter;
  common::Data* _data;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_WRITE_ITERATOR_ATTRIB_H_
