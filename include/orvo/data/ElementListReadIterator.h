// Walks the entries of an encoded ElementList on its own copy of the list's
// decode iterator, so any number of readers can run over one list. The
// entry's content mask tells which elements are set-defined.
#ifndef ORVO_DATA_ELEMENT_LIST_READ_ITERATOR_H_
#define ORVO_DATA_ELEMENT_LIST_READ_ITERATOR_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementList.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class ElementListDef;

class ElementListReadIterator {
 public:
  ElementListReadIterator();
  ElementListReadIterator(const ElementListReadIterator&) = delete;
  ElementListReadIterator& operator=(const ElementListReadIterator&) = delete;
  virtual ~ElementListReadIterator();

  void start(const ElementList& list, common::UInt8 iteratorMask = 0,
             ElementListDef* def = nullptr);
  void forth();
  bool off() const { return _off; }
  const ElementEntry& value() const { return _entry; }

 private:
  ElementEntry _entry;
  OwfElementEntry* _entryRecord;
  OwfDecodeIterator _iter;
  OwfElementSetDef* _setDef;
  bool _off;
  common::UInt16 _entryIndex;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_LIST_READ_ITERATOR_H_
