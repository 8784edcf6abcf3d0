// Builds a FieldListDef: setDataDefID on the definition, start, one bind per
// row in order, complete. The definition is usable after every bind.
#ifndef ORVO_DATA_FIELD_LIST_DEF_WRITE_ITERATOR_H_
#define ORVO_DATA_FIELD_LIST_DEF_WRITE_ITERATOR_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/FieldEntryDef.h"
#include "orvo/data/FieldListDef.h"

namespace orvo {
namespace data {

class FieldListDefWriteIterator {
 public:
  FieldListDefWriteIterator() : _def(nullptr) {}

  // Reserves room for `size` rows (at least 10). A definition that already
  // has that room keeps its rows and the binds append to them; one that
  // needs a larger array starts empty.
  void start(FieldListDef& def, common::UInt16 size = 0);
  // Appends a row; fails before start and for a type pair with no packed
  // form.
  void bind(const FieldEntryDef& entry);
  // Nothing to do: every bind leaves a usable definition.
  void complete() {}

 private:
  FieldListDef* _def;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_LIST_DEF_WRITE_ITERATOR_H_
