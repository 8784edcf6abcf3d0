#include "orvo/data/FieldList.h"

#include <cstring>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/FieldListInt.h"
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

void freeAllSlots(OwfLocalFieldSetDefDb* db) {
  std::memset(db, 0, sizeof(*db));
  for (OwfFieldSetDef& slot : db->definitions) slot.setId = OWF_SET_DEF_FREE;
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
  for (OwfFieldSetDef& slot : _defDb.definitions) slot.setId = OWF_SET_DEF_FREE;
}

void FieldList::startDecode(OwfLocalFieldSetDefDb* defDb, const FieldListDef* /*def*/) const {
  if (_encodeState != EncodeStateEncoded || _decoded) return;
  clearDecodeIterator(&_decodeIter);
  if (_majorVersion == 14) setDecodeIteratorVersion(&_decodeIter, _majorVersion, _minorVersion);
  OwfBuffer* bytes = const_cast<OwfBuffer*>(&_encodedData);
  if (setDecodeIteratorBuffer(&_decodeIter, bytes) < 0) {
    internal::throwUsage(owireRetCodeToString(OWIRE_RET_FAILURE), _className, "startDecode");
  }
  const int ret = owireDecodeFieldList(&_decodeIter, &_fieldList, defDb);
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "startDecode");
  countStandardEntries(ret, _decodeIter);
  _decoded = true;
}

void FieldList::startDecodeSRI(OwfDecodeIterator* iter, OwfLocalFieldSetDefDb* defDb,
                               const void* /*unused*/) const {
  const int ret = owireDecodeFieldList(iter, &_fieldList, defDb);
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "startDecodeSRI");
  countStandardEntries(ret, *iter);
  _decoded = true;
}

void FieldList::countStandardEntries(int ret, const OwfDecodeIterator& iter) const {
  _standardCount = 0;
  if (ret == OWIRE_RET_BLANK_DATA) return;
  if (iter.decodingLevel < 0 || iter.decodingLevel >= OWIRE_MAX_LEVELS) return;
  const OwfDecodeLevel& level = iter.levels[iter.decodingLevel];
  _standardCount = level.itemCount;
  if ((_fieldList.flags & OWF_FLF_HAS_SET_DATA) && level.fieldSetDef != nullptr) {
    const UInt32 defined = level.fieldSetDef->count;
    _standardCount = defined < _standardCount ? _standardCount - defined : 0;
  }
}

}  // namespace data
}  // namespace orvo
