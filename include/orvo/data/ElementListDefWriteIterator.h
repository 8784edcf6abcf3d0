// Builds an ElementListDef, as FieldListDefWriteIterator builds a
// FieldListDef. Each row keeps its own copy of the name.
#ifndef ORVO_DATA_ELEMENT_LIST_DEF_WRITE_ITERATOR_H_
#define ORVO_DATA_ELEMENT_LIST_DEF_WRITE_ITERATOR_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/ElementEntryDef.h"
#include "orvo/data/ElementListDef.h"

namespace orvo {
namespace data {

class ElementListDefWriteIterator {
 public:
  ElementListDefWriteIterator() : _def(nullptr) {}
  virtual ~ElementListDefWriteIterator() = default;

  void start(ElementListDef& def, common::UInt16 size = 0);
  void bind(const ElementEntryDef& entry);
  void complete() {}

 private:
  ElementListDef* _def;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_LIST_DEF_WRITE_ITERATOR_H_
