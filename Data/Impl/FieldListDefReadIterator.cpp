#include "orvo/data/FieldListDefReadIterator.h"

#include "Data/Impl/FieldListDefInt.h"

namespace orvo {
namespace data {

using common::UInt8;

const common::ORVO_String FieldListDefReadIterator::_className("FieldListDefReadIterator");

FieldListDefReadIterator::FieldListDefReadIterator()
    : _position(0), _def(nullptr), _setDef(nullptr) {}

FieldListDefReadIterator::~FieldListDefReadIterator() = default;

void FieldListDefReadIterator::start(const FieldListDef& def) {
  _position = 0;
  _def = &def;
  _setDef = &def._setDef;
  // An empty definition leaves the entry as it was.
  if (_setDef->count != 0) fillEntry();
}

void FieldListDefReadIterator::forth() {
  ++_position;
  if (!off()) fillEntry();
}

bool FieldListDefReadIterator::off() const {
  return _setDef == nullptr || _position >= _setDef->count;
}

void FieldListDefReadIterator::fillEntry() {
  const OwfFieldSetDefEntry& row = _setDef->entries[_position];
  UInt8 type = 0;
  UInt8 encodedType = 0;
  internal::typePairOfSetCode(row.dataType, &type, &encodedType);
  _entry.setFieldID(row.fieldId);
  _entry.setType(type, encodedType);
}

}  // namespace data
}  // namespace orvo
