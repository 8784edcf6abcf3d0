// Writes a FieldList entry by entry: start, one bind(const Data&) per
// entry of the set definition (if DefinedDataFlag), any number of
// bind(const FieldEntry&) (if StandardDataFlag), complete. A full buffer is
// doubled and the step repeated without the caller noticing.
//
// Nesting: bind an entry whose data is a container without bytes, start a
// write iterator of that container's class on the same object, bind and
// complete it; then the outer bind or complete goes on. The nested bytes go
// straight into the outermost buffer.
#ifndef ORVO_DATA_FIELD_LIST_WRITE_ITERATOR_H_
#define ORVO_DATA_FIELD_LIST_WRITE_ITERATOR_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/WriteIteratorAttrib.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class FieldListDef;

class FieldListWriteIterator {
 public:
  enum IteratorMaskFlag { DefinedDataFlag = 0x01, StandardDataFlag = 0x02 };

  FieldListWriteIterator();
  FieldListWriteIterator(const FieldListWriteIterator&) = delete;
  FieldListWriteIterator& operator=(const FieldListWriteIterator&) = delete;
  virtual ~FieldListWriteIterator();

  // `def` must outlive the write. `size` is not used: the first buffer is
  // 4096 bytes and grows as needed.
  void start(FieldList& list, common::UInt8 iteratorMask, const FieldListDef* def = nullptr,
             common::UInt16 size = 0);
  // The next set-defined entry.
  void bind(const common::Data& data);
  // The next standard entry.
  void bind(const FieldEntry& entry);
  void complete();

 private:
  WriteIteratorAttrib _attrib;
  common::UInt16 _definedBound;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_LIST_WRITE_ITERATOR_H_
