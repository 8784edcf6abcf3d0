// Reads the entries of a FieldListDef in row order. value() is the
// iterator's own copy, so a finished definition can be read by several
// iterators.
#ifndef ORVO_DATA_FIELD_LIST_DEF_READ_ITERATOR_H_
#define ORVO_DATA_FIELD_LIST_DEF_READ_ITERATOR_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/FieldEntryDef.h"
#include "orvo/data/FieldListDef.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace data {

class FieldListDefReadIterator {
 public:
  FieldListDefReadIterator();
  virtual ~FieldListDefReadIterator();

  void start(const FieldListDef& def);
  void forth();
  bool off() const;
  const FieldEntryDef& value() const { return _entry; }

 private:
  void fillEntry();

  FieldEntryDef _entry;
  common::UInt16 _position;
  const FieldListDef* _def;
  const OwfFieldSetDef* _setDef;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_LIST_DEF_READ_ITERATOR_H_
