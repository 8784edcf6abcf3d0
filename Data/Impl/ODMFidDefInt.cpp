#include "Data/Impl/ODMFidDefInt.h"

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ODMEnumTableInt.h"

namespace orvo {
namespace odm {

using common::Int64;
using common::ORVO_String;

ODMFidDefInt::ODMFidDefInt()
    : _fieldId(0),
      _rippleToFieldId(0),
      _fieldType(-1),
      _enumLength(0),
      _length(0),
      _ommType(0),
      _ommLength(0),
      _enumTable(nullptr),
      _sizeHint(0),
      _pooled(false) {
  _nameLink._key = &_name;
  _nameLink._value = this;
}

ODMFidDefInt::ODMFidDefInt(const ORVO_String& name, const ORVO_String& longName, Int64 fieldId,
                           const ORVO_String& rippleToName, Int64 rippleToFieldId, Int64 fieldType,
                           Int64 enumLength, Int64 length, Int64 ommType, Int64 ommLength)
    : _name(name),
      _longName(longName),
      _fieldId(fieldId),
      _rippleToName(rippleToName),
      _rippleToFieldId(rippleToFieldId),
      _fieldType(fieldType),
      _enumLength(enumLength),
      _length(length),
      _ommType(ommType),
      _ommLength(ommLength),
      _enumTable(nullptr),
      _sizeHint(0),
      _pooled(false) {
  _nameLink._key = &_name;
  _nameLink._value = this;
}

ODMFidDefInt::~ODMFidDefInt() = default;

const ORVO_String& ODMFidDefInt::displayValueFor(Int64 value) const {
  if (_enumTable == nullptr) {
    internal::raiseIllegalCall(
        ORVO_String("Enumeration Table is NOT set in ODMFidDefInt::displayValueFor( Int )"));
  }
  const ORVO_String* display = _enumTable->getDisplay(value);
  if (display == nullptr) {
    ORVO_String text("Enumeration Table does NOT contain entry for enum = ");
    text.append(value);
    internal::raiseIllegalCall(text);
  }
  return *display;
}

}  // namespace odm
}  // namespace orvo
