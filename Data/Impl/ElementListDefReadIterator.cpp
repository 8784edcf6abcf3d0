#include "orvo/data/ElementListDefReadIterator.h"

#include "Data/Impl/FieldListDefInt.h"

namespace orvo {
namespace data {

using common::UInt8;

const common::ORVO_String ElementListDefReadIterator::_className("ElementListDefReadIterator");

ElementListDefReadIterator::ElementListDefReadIterator()
    : _position(0), _def(nullptr), _setDef(nullptr) {}

void ElementListDefReadIterator::start(const ElementListDef& def) {
  _position = 0;
  _def = &def;
  _setDef = &def._setDef;
  // An empty definition leaves an empty name and the types as they were.
  if (_setDef->count == 0) {
    _entry._name.clear();
    return;
  }
  fillEntry();
}

void ElementListDefReadIterator::forth() {
  ++_position;
  if (!off()) fillEntry();
}

bool ElementListDefReadIterator::off() const {
  return _setDef == nullptr || _position >= _setDef->count;
}

void ElementListDefReadIterator::fillEntry() {
  const OwfElementSetDefEntry& row = _setDef->entries[_position];
  UInt8 type = 0;
  UInt8 encodedType = 0;
  internal::typePairOfSetCode(row.dataType, &type, &encodedType);
  _entry._name.set(row.name.data, row.name.length, false);
  _entry.setType(type, encodedType);
}

}  // namespace data
}  // namespace orvo
