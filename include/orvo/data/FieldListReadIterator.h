// Walks the entries of an encoded FieldList on its own copy of the list's
// decode iterator, so any number of readers can run over one list.
//
//   FieldListReadIterator it;
//   for (it.start(list); !it.off(); it.forth()) use(it.value());
#ifndef ORVO_DATA_FIELD_LIST_READ_ITERATOR_H_
#define ORVO_DATA_FIELD_LIST_READ_ITERATOR_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class FieldListDef;

class FieldListReadIterator {
 public:
  FieldListReadIterator();
  FieldListReadIterator(const FieldListReadIterator&) = delete;
  FieldListReadIterator& operator=(const FieldListReadIterator&) = delete;
  virtual ~FieldListReadIterator();

  // Decodes the list's header if needed and reads the first entry.
  // `iteratorMask` is not used; `def` may not be given for a list that
  // already has definitions from its container.
  void start(const FieldList& list, common::UInt8 iteratorMask = 0, FieldListDef* def = nullptr);
  void forth();
  bool off() const { return _off; }
  // The current entry, valid until the next forth().
  const FieldEntry& value() const { return _entry; }

 private:
  FieldEntry _entry;
  OwfFieldEntry* _entryRecord;
  OwfDecodeIterator _iter;
  OwfFieldSetDef* _setDef;
  bool _off;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_LIST_READ_ITERATOR_H_
