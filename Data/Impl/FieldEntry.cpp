#include "orvo/data/FieldEntry.h"

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {

using common::Data;
using common::UInt8;
using internal::DataInt;

const common::ORVO_String FieldEntry::_className("FieldEntry");

FieldEntry::FieldEntry(bool managed)
    : DataEntry(FieldEntryEnum, managed), _contentMask(0), _fieldEntry() {}

FieldEntry::~FieldEntry() = default;

const Data& FieldEntry::getData() const {
  if (_contentMask == 0) {
    internal::failMessage("getData() called without type information", _className, "getData()");
  }
  return dataOfEntry();
}

const Data& FieldEntry::getData(UInt8 dataType) const {
  // Data given to setData is handed back as it is: rebuilding the slot
  // would destroy a managed entry's copy.
  if (_entryAttrib.currentData() != nullptr) return *_entryAttrib.currentData();
  _entryAttrib.prepareDataSlot(dataType);
  return dataOfEntry();
}

// The slot, pointed at the entry's bytes; a read entry decodes it lazily.
const Data& FieldEntry::dataOfEntry() const {
  if (_entryAttrib.currentData() != nullptr) return *_entryAttrib.currentData();
  Data& slot = _entryAttrib.slot();
  DataInt::setEncodedLite(&slot, _fieldEntry.encData);
  return slot;
}

void FieldEntry::setData(const Data& data) {
  if (!_entryAttrib.isValidEntryData(data)) {
    internal::failMessage("Attempt to pass in invalid data format.", _className,
                          "setData( const Data& )");
  }
  _entryAttrib.copyEntryData(data);
  Data* held = const_cast<Data*>(&_entryAttrib.heldData());
  _fieldEntry.encData = DataInt::encodedData(held);
  _fieldEntry.dataType = EntryAttrib::wireTypeOf(data);
}

void FieldEntry::clear() {
  _entryAttrib.clear();
  _contentMask = 0;
  _fieldEntry.fieldId = 0;
  _fieldEntry.encData = OwfBuffer{0, nullptr};
}

}  // namespace data
}  // namespace orvo
