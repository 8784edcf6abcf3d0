#include "orvo/data/FieldListReadIterator.h"

#include <cstring>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/FieldListInt.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;
using internal::DataInt;
using internal::FieldListInt;

const common::ORVO_String FieldListReadIterator::_className("FieldListReadIterator");

FieldListReadIterator::FieldListReadIterator()
    : _entry(false), _entryRecord(&FieldListInt::record(_entry)), _setDef(nullptr), _off(false) {
  std::memset(&_iter, 0, sizeof(_iter));
}

FieldListReadIterator::~FieldListReadIterator() = default;

void FieldListReadIterator::start(const FieldList& list, UInt8 /*iteratorMask*/,
                                  FieldListDef* def) {
  OwfLocalFieldSetDefDb* const inUse = FieldListInt::defDbInUse(list);
  if (def != nullptr && inUse != nullptr) {
    internal::failMessage("Trying to decode with local and external definitions", _className,
                          "'start'");
  }
  FieldListInt::startDecode(list, inUse, def);
  _entryRecord = &FieldListInt::record(_entry);
  _setDef = nullptr;
  if (inUse != nullptr) {
    const UInt16 id = list.getDataDefID();
    if (id < OWF_MAX_LOCAL_SET_DEFS) _setDef = &inUse->definitions[id];
  }
  // A copy of the list's iterator, which stays at the first entry for the
  // next reader.
  _iter = DataInt::decodeIter(&list);
  const int ret = owireDecodeFieldEntry(&_iter, _entryRecord);
  if (ret == OWIRE_RET_END_OF_CONTAINER) {
    _off = true;
  } else {
    _off = false;
    if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "start()");
    // The first entry's type comes from the list, later ones from the
    // definition (see forth).
    if (list.getContentMask() & FieldList::SetDefinedDataFlag) {
      FieldListInt::setContentMask(_entry, 1);
      FieldListInt::attrib(_entry).prepareDataSlot(_entryRecord->dataType);
    }
  }
  FieldListInt::attrib(_entry).slot().setAssociatedMetaInfo(_iter.majorVersion, _iter.minorVersion);
}

void FieldListReadIterator::forth() {
  const int ret = owireDecodeFieldEntry(&_iter, _entryRecord);
  if (ret == OWIRE_RET_END_OF_CONTAINER) {
    _off = true;
    return;
  }
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "forth()");
  if (_setDef == nullptr) return;
  if (_entryRecord->dataType == 0) {
    FieldListInt::setContentMask(_entry, 0);
    return;
  }
  FieldListInt::setContentMask(_entry, 1);
  FieldListInt::attrib(_entry).prepareDataSlot(_entryRecord->dataType);
}

}  // namespace data
}  // namespace orvo
