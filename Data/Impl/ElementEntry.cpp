#include "orvo/data/ElementEntry.h"

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {

using common::Data;
using common::ORVO_String;
using common::UInt8;
using internal::DataInt;

const ORVO_String ElementEntry::_className("ElementEntry");

ElementEntry::ElementEntry(bool managed)
    : DataEntry(ElementEntryEnum, managed), _elementEntry(), _contentMask(0) {}

ElementEntry::~ElementEntry() = default;

const ORVO_String& ElementEntry::getName() const {
  const OwfBuffer& name = _elementEntry.name;
  // A managed entry's record already points into the string.
  if (name.data != _nameStr.data() || name.length != _nameStr.length()) {
    _nameStr.set(name.data, name.length, false);
  }
  return _nameStr;
}

void ElementEntry::setName(const ORVO_String& name) {
  if (name.empty()) {
    internal::failMessage("ElementEntry's name MUST NOT be empty.", _className,
                          "setName( const ORVO_string& )");
  }
  const ORVO_String* kept = &name;
  if (_entryAttrib.isManaged()) {
    _nameStr = name;
    kept = &_nameStr;
  }
  _elementEntry.name.data = const_cast<char*>(kept->data());
  _elementEntry.name.length = kept->length();
}

const Data& ElementEntry::getData() const {
  // Data given to setData is handed back as it is: rebuilding the slot
  // would destroy a managed entry's copy.
  if (_entryAttrib.currentData() != nullptr) return *_entryAttrib.currentData();
  _entryAttrib.prepareDataSlot(_elementEntry.dataType);
  Data& slot = _entryAttrib.slot();
  DataInt::setEncodedLite(&slot, _elementEntry.encData);
  return slot;
}

void ElementEntry::setData(const Data& data) {
  if (!_entryAttrib.isValidEntryData(data)) {
    internal::failMessage("Attempt to pass in invalid data format.", _className,
                          "setData( const Data & )");
  }
  _entryAttrib.copyEntryData(data);
  Data* held = const_cast<Data*>(&_entryAttrib.heldData());
  _elementEntry.encData = DataInt::encodedData(held);
  _elementEntry.dataType = EntryAttrib::wireTypeOf(data);
}

// Unlike a field entry, the type goes too.
void ElementEntry::clear() {
  if (_entryAttrib.isManaged()) _nameStr.clear();
  _entryAttrib.clear();
  _contentMask = 0;
  _elementEntry.name = OwfBuffer{0, nullptr};
  _elementEntry.dataType = 0;
  _elementEntry.encData = OwfBuffer{0, nullptr};
}

}  // namespace data
}  // namespace orvo
