#include "orvo/data/ElementListDefWriteIterator.h"

#include <cstring>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/FailureFrame.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;

namespace {
constexpr UInt16 kRowStep = 10;
}  // namespace

const common::ORVO_String ElementListDefWriteIterator::_className("ElementListDefWriteIterator");

void ElementListDefWriteIterator::start(ElementListDef& def, UInt16 size) {
  _def = &def;
  def.reserve(size < kRowStep ? kRowStep : size, false);
}

void ElementListDefWriteIterator::bind(const ElementEntryDef& entry) {
  if (_def == nullptr) {
    internal::failMessage("Failed to call start function before calling bind.", _className, "bind");
  }
  OwfElementSetDef& rows = _def->_setDef;
  if (rows.count >= _def->_defCapacity) {
    _def->reserve(static_cast<UInt16>(_def->_defCapacity + kRowStep), true);
  }
  // Worked out before the name is copied, so a refused pair leaves no copy.
  const UInt8 setCode =
      internal::DataBufferInt::setDefinitionType(entry.getType(), entry.getEncodedType());
  OwfElementSetDefEntry& row = rows.entries[rows.count];
  const common::ORVO_String& name = entry.getName();
  delete[] row.name.data;  // a row reused after the count wrapped
  row.name.length = name.length();
  row.name.data = new char[name.length() + 1];
  std::memcpy(row.name.data, name.data(), name.length() + 1);
  row.dataType = setCode;
  ++rows.count;
}

}  // namespace data
}  // namespace orvo
