#include "orvo/data/ElementListReadIterator.h"

#include <cstring>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/ElementListInt.h"
#include "Data/Impl/FailureFrame.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;
using internal::DataInt;
using internal::ElementListInt;

const common::ORVO_String ElementListReadIterator::_className("ElementListReadIterator");

ElementListReadIterator::ElementListReadIterator()
    : _entry(false),
      _entryRecord(&ElementListInt::record(_entry)),
      _setDef(nullptr),
      _off(false),
      _entryIndex(0) {
  std::memset(&_iter, 0, sizeof(_iter));
}

ElementListReadIterator::~ElementListReadIterator() = default;

// Elements carry their types, so the slot is prepared by getData rather
// than here.
void ElementListReadIterator::start(const ElementList& list, UInt8 /*iteratorMask*/,
                                    ElementListDef* def) {
  OwfLocalElementSetDefDb* const inUse = ElementListInt::defDbInUse(list);
  if (def != nullptr && inUse != nullptr) {
    internal::failMessage("Trying to decode with local and external definitions", _className,
                          "'start'");
  }
  ElementListInt::startDecode(list, inUse, def);
  _entryRecord = &ElementListInt::record(_entry);
  _setDef = nullptr;
  if (inUse != nullptr) {
    const UInt16 id = list.getDataDefID();
    if (id < OWF_MAX_LOCAL_SET_DEFS) _setDef = &inUse->definitions[id];
  }
  _iter = DataInt::decodeIter(&list);
  const int ret = owireDecodeElementEntry(&_iter, _entryRecord);
  if (ret == OWIRE_RET_END_OF_CONTAINER) {
    _off = true;
  } else {
    _off = false;
    if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "start()");
    if (_setDef != nullptr && (list.getContentMask() & ElementList::SetDefinedDataFlag)) {
      ElementListInt::setContentMask(_entry, 1);
    }
    _entryIndex = 1;
  }
  ElementListInt::attrib(_entry).slot().setAssociatedMetaInfo(_iter.majorVersion,
                                                              _iter.minorVersion);
}

void ElementListReadIterator::forth() {
  const int ret = owireDecodeElementEntry(&_iter, _entryRecord);
  if (ret == OWIRE_RET_END_OF_CONTAINER) {
    _off = true;
    return;
  }
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "forth()");
  // Set-defined rows come first, so the position tells them apart.
  if (_setDef != nullptr) ElementListInt::setContentMask(_entry, _entryIndex < _setDef->count);
  ++_entryIndex;
}

}  // namespace data
}  // namespace orvo
