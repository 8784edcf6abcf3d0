#include "orvo/data/FieldList.h"

#include <cstring>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ListFamily.h"
#include "orvo/data/DataType.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldListReadIterator.h"

namespace orvo {
namespace data {
namespace {

using common::UInt16;
using common::UInt32;
using common::UInt8;
using internal::DataInt;
using Family = internal::FieldListFamily;

void freeAllSlots(OwfLocalFieldSetDefDb* db) {
  std::memset(db, 0, sizeof(*db));
  internal::markSlotsFree(db);
}

}  // namespace

const common::ORVO_String FieldList::_className("FieldList");

FieldList::FieldList(bool managed)
    : Data(FieldListEnum, managed),
      _defDbInUse(nullptr),
      _fieldList(),
      _findIter(nullptr),
      _standardCount(0) {
  _ownsBuffer = managed;
  freeAllSlots(&_defDb);
}

FieldList::~FieldList() { delete _findIter; }

void FieldList::setInfo(short dictId, short fieldListNum) {
  _fieldList.dictionaryId = dictId;
  _fieldList.fieldListNum = fieldListNum;
  _fieldList.flags |= OWF_FLF_HAS_FIELD_LIST_INFO;
}

void FieldList::setDataDefID(UInt16 id) {
  _fieldList.setId = id;
  if (id != 0) _fieldList.flags |= OWF_FLF_HAS_SET_ID;
}

short FieldList::getInfoDictID() const {
  startDecode(_defDbInUse, nullptr);
  return _fieldList.dictionaryId;
}

short FieldList::getInfoFieldListNum() const {
  startDecode(_defDbInUse, nullptr);
  return _fieldList.fieldListNum;
}

UInt16 FieldList::getDataDefID() const {
  startDecode(_defDbInUse, nullptr);
  return _fieldList.setId;
}

UInt32 FieldList::getStandardDataCount() const {
  startDecode(_defDbInUse, nullptr);
  return _standardCount;
}

UInt8 FieldList::getContentMask() const {
  startDecode(_defDbInUse, nullptr);
  UInt8 mask = 0;
  if (_defDbInUse != nullptr) mask |= DataDefAvailableFlag;
  if (_fieldList.flags & OWF_FLF_HAS_SET_DATA) mask |= SetDefinedDataFlag;
  return mask;
}

UInt8 FieldList::getHintMask() const {
  startDecode(_defDbInUse, nullptr);
  return (_fieldList.flags & OWF_FLF_HAS_FIELD_LIST_INFO) ? InfoFlag : 0;
}

bool FieldList::find(short fieldId, UInt32 dataType, FieldEntry& entry) const {
  if (_findIter == nullptr) _findIter = new FieldListReadIterator();
  for (_findIter->start(*this, 3, nullptr); !_findIter->off(); _findIter->forth()) {
    const FieldEntry& current = _findIter->value();
    if (current.getFieldID() == fieldId) {
      entry.setFieldID(fieldId);
      entry.setData(current.getData(static_cast<UInt8>(dataType)));
      return true;
    }
  }
  entry.clear();
  return false;
}

void FieldList::clear() {
  DataInt::resetForEncode(this, this, FieldListEnum);
  _fieldList = OwfFieldList();
  _defDbInUse = nullptr;
  _standardCount = 0;
  _defDb.memory = OwfBuffer{0, nullptr};
  internal::markSlotsFree(&_defDb);
}

void FieldList::startDecode(OwfLocalFieldSetDefDb* defDb, const FieldListDef* /*def*/) const {
  if (_encodeState != EncodeStateEncoded || _decoded) return;
  internal::aimAtOwnBytes(&_decodeIter, _encodedData, _majorVersion, _minorVersion, _className);
  const int ret = internal::decodeListHeader<Family>(&_decodeIter, &_fieldList, defDb, _className,
                                                     "startDecode");
  countStandardEntries(ret, _decodeIter);
  _decoded = true;
}

void FieldList::startDecodeSRI(OwfDecodeIterator* iter, OwfLocalFieldSetDefDb* defDb,
                               const void* /*unused*/) const {
  const int ret =
      internal::decodeListHeader<Family>(iter, &_fieldList, defDb, _className, "startDecodeSRI");
  countStandardEntries(ret, *iter);
  _decoded = true;
}

void FieldList::countStandardEntries(int ret, const OwfDecodeIterator& iter) const {
  _standardCount = internal::standardEntryCount<Family>(ret, iter, _fieldList);
}

}  // namespace data
}  // namespace orvo
