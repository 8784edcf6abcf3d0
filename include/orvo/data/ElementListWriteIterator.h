// Writes an ElementList entry by entry, in the order and with the nesting
// rules of FieldListWriteIterator. Every element needs a name: bound
// entries by setName, set-defined ones by their definition.
#ifndef ORVO_DATA_ELEMENT_LIST_WRITE_ITERATOR_H_
#define ORVO_DATA_ELEMENT_LIST_WRITE_ITERATOR_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/WriteIteratorAttrib.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class ElementListDef;

class ElementListWriteIterator {
 public:
  enum IteratorMaskFlag { DefinedDataFlag = 0x01, StandardDataFlag = 0x02 };

  ElementListWriteIterator();
  ElementListWriteIterator(const ElementListWriteIterator&) = delete;
  ElementListWriteIterator& operator=(const ElementListWriteIterator&) = delete;
  virtual ~ElementListWriteIterator();

  // `def` must outlive the write. `size` is not used.
  void start(ElementList& list, common::UInt8 iteratorMask, const ElementListDef* def = nullptr,
             common::UInt16 size = 0);
  // The next set-defined entry.
  void bind(const common::Data& data);
  // The next standard entry.
  void bind(const ElementEntry& entry);
  void complete();

 private:
  WriteIteratorAttrib _attrib;
  common::UInt16 _definedBound;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_LIST_WRITE_ITERATOR_H_
