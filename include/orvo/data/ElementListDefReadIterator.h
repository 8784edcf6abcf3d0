// Reads the entries of an ElementListDef in row order. value() is the
// iterator's own copy.
#ifndef ORVO_DATA_ELEMENT_LIST_DEF_READ_ITERATOR_H_
#define ORVO_DATA_ELEMENT_LIST_DEF_READ_ITERATOR_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/ElementEntryDef.h"
#include "orvo/data/ElementListDef.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class ElementListDefReadIterator {
 public:
  ElementListDefReadIterator();

  void start(const ElementListDef& def);
  void forth();
  bool off() const;
  const ElementEntryDef& value() const { return _entry; }

 private:
  void fillEntry();

  ElementEntryDef _entry;
  common::UInt16 _position;
  const ElementListDef* _def;
  const OwfElementSetDef* _setDef;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_LIST_DEF_READ_ITERATOR_H_
