#include "orvo/data/FieldListDefWriteIterator.h"

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/FailureFrame.h"

namespace orvo {
namespace data {

using common::UInt16;

namespace {
constexpr UInt16 kRowStep = 10;
}  // namespace

const common::ORVO_String FieldListDefWriteIterator::_className("FieldListDefWriteIterator");

void FieldListDefWriteIterator::start(FieldListDef& def, UInt16 size) {
  _def = &def;
  def.reserve(size < kRowStep ? kRowStep : size, false);
}

void FieldListDefWriteIterator::bind(const FieldEntryDef& entry) {
  if (_def == nullptr) {
    internal::failMessage("Failed to call start function before calling bind.", _className, "bind");
  }
  OwfFieldSetDef& rows = _def->_setDef;
  if (rows.count >= _def->_defCapacity) {
    // Computed in 16 bits: a sum that wraps grows nothing.
    const UInt16 grown = static_cast<UInt16>(_def->_defCapacity + kRowStep);
    if (grown > _def->_defCapacity) _def->reserve(grown, true);
  }
  OwfFieldSetDefEntry& row = rows.entries[rows.count];
  row.fieldId = entry.getFieldID();
  row.dataType =
      internal::DataBufferInt::setDefinitionType(entry.getType(), entry.getEncodedType());
  // The count is 8 bits wide and wraps after 255 rows, unchecked.
  ++rows.count;
}

}  // namespace data
}  // namespace orvo
