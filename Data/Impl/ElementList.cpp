#include "orvo/data/ElementList.h"

#include <cstring>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ListFamily.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementListReadIterator.h"

namespace orvo {
namespace data {
namespace {

using common::UInt16;
using common::UInt32;
using common::UInt8;
using internal::DataInt;
using Family = internal::ElementListFamily;

void freeAllSlots(OwfLocalElementSetDefDb* db) {
  std::memset(db, 0, sizeof(*db));
  internal::markSlotsFree(db);
}

}  // namespace

const common::ORVO_String ElementList::_className("ElementList");

ElementList::ElementList(bool managed)
    : Data(ElementListEnum, managed),
      _defDbInUse(nullptr),
      _elementList(),
      _findIter(nullptr),
      _standardCount(0) {
  _ownsBuffer = managed;
  freeAllSlots(&_defDb);
}

ElementList::~ElementList() { delete _findIter; }

void ElementList::setElementListNum(short elementListNum) {
  _elementList.elementListNum = elementListNum;
  _elementList.flags |= OWF_ELF_HAS_ELEMENT_LIST_INFO;
}

void ElementList::setDataDefID(UInt16 id) {
  _elementList.setId = id;
  if (id != 0) _elementList.flags |= OWF_ELF_HAS_SET_ID;
}

short ElementList::getElementListNum() const {
  startDecode(_defDbInUse, nullptr);
  return _elementList.elementListNum;
}

UInt16 ElementList::getDataDefID() const {
  startDecode(_defDbInUse, nullptr);
  return _elementList.setId;
}

UInt32 ElementList::getStandardDataCount() const {
  startDecode(_defDbInUse, nullptr);
  return _standardCount;
}

UInt8 ElementList::getContentMask() const {
  startDecode(_defDbInUse, nullptr);
  UInt8 mask = 0;
  if (_defDbInUse != nullptr) mask |= DataDefAvailableFlag;
  if (_elementList.flags & OWF_ELF_HAS_SET_DATA) mask |= SetDefinedDataFlag;
  return mask;
}

UInt8 ElementList::getHintMask() const {
  startDecode(_defDbInUse, nullptr);
  return (_elementList.flags & OWF_ELF_HAS_ELEMENT_LIST_INFO) ? InfoFlag : 0;
}

bool ElementList::find(const common::ORVO_String& name, ElementEntry& entry) const {
  if (_findIter == nullptr) _findIter = new ElementListReadIterator();
  for (_findIter->start(*this, 3, nullptr); !_findIter->off(); _findIter->forth()) {
    const ElementEntry& current = _findIter->value();
    if (current.getName() == name) {
      entry.setName(current.getName());
      entry.setData(current.getData());
      return true;
    }
  }
  entry.clear();
  return false;
}

void ElementList::clear() {
  DataInt::resetForEncode(this, this, ElementListEnum);
  _elementList = OwfElementList();
  _defDbInUse = nullptr;
  _standardCount = 0;
  _defDb.memory = OwfBuffer{0, nullptr};
  internal::markSlotsFree(&_defDb);
}

void ElementList::startDecode(OwfLocalElementSetDefDb* defDb, const ElementListDef* /*def*/) const {
  if (_encodeState != EncodeStateEncoded || _decoded) return;
  internal::aimAtOwnBytes(&_decodeIter, _encodedData, _majorVersion, _minorVersion, _className);
  const int ret = internal::decodeListHeader<Family>(&_decodeIter, &_elementList, defDb, _className,
                                                     "startDecode");
  countStandardEntries(ret, _decodeIter);
  _decoded = true;
}

void ElementList::startDecodeSRI(OwfDecodeIterator* iter, OwfLocalElementSetDefDb* defDb,
                                 const void* /*unused*/) const {
  const int ret =
      internal::decodeListHeader<Family>(iter, &_elementList, defDb, _className, "startDecodeSRI");
  countStandardEntries(ret, *iter);
  _decoded = true;
}

void ElementList::countStandardEntries(int ret, const OwfDecodeIterator& iter) const {
  _standardCount = internal::standardEntryCount<Family>(ret, iter, _elementList);
}

}  // namespace data
}  // namespace orvo
