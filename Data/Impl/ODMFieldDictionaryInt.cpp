#include "orvo/odm/ODMFieldDictionaryInt.h"

#include <cstring>

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ODMDictionaryList.h"
#include "Data/Impl/ODMEnumTableInt.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "Data/Impl/ODMFidDefPool.h"
#include "Data/Impl/ODMFieldDictionaryReader.h"
#include "Data/Impl/ORTGenHash.h"

namespace orvo {
namespace odm {
namespace {

using common::Int32;
using common::Int64;
using common::ORVO_String;
using common::UInt32;

constexpr UInt32 kNameTableBuckets = 65537;

// A full name index is emptied faster bucket by bucket than node by node.
bool emptyAtOnce(UInt32 count, UInt32 bucketCount) { return count > bucketCount / 8; }

bool inFieldIdRange(Int64 fieldId) {
  return fieldId >= ODMFieldDictionaryInt::kMinFieldId &&
         fieldId <= ODMFieldDictionaryInt::kMaxFieldId;
}

// `head` + "\"" + id + "\"" + `tail`: the shape of every lookup failure.
[[noreturn]] void raiseForField(const char* head, Int64 fieldId, const char* tail) {
  ORVO_String text(head);
  text.append("\"").append(fieldId).append("\"").append(tail);
  internal::raiseIllegalCall(text);
}

[[noreturn]] void raiseForEnumValue(Int64 fieldId, Int64 enumValue, const char* tail) {
  ORVO_String text("ODMFieldDictionary::displayValueFor( Int, Int ) - FieldId: \"");
  text.append(fieldId).append("\" EnumValue: \"").append(enumValue).append("\"").append(tail);
  internal::raiseIllegalCall(text);
}

}  // namespace

ODMFieldDictionaryInt::ODMFieldDictionaryInt()
    : _nameTable(new ORTGenHash<const ORVO_String, ODMFidDefInt>(
          kNameTableBuckets,
          [](const ORVO_String& name) { return hashName(name.data(), name.length()); })),
      _fidDefPool(new ODMFidDefPool),
      _fidDefs(),
      _negFidDefs(),
      _noEnumInfo(false),
      _maxOwfLength(0),
      _maxLength(0),
      _maxEnumLength(0),
      _dictIdSet(false),
      _nextFid(0),
      _nextEnumTable(0),
      _unlistedEnumTable(nullptr) {}

ODMFieldDictionaryInt::~ODMFieldDictionaryInt() {
  if (_nameTable != nullptr) {
    deleteAllFidDefs();
    delete _nameTable;
    delete _fidDefPool;
  }
  deleteAllEnumTables();
}

void ODMFieldDictionaryInt::destroy() {
  if (_nameTable != nullptr) {
    deleteAllFidDefs();
    delete _nameTable;
    _nameTable = nullptr;
    delete _fidDefPool;
    _fidDefPool = nullptr;
  }
  deleteAllEnumTables();
  ODMDictionaryList::remove(this);
  delete this;
}

ODMFidDefInt*& ODMFieldDictionaryInt::slotOf(Int64 fieldId) {
  return fieldId < 0 ? _negFidDefs[-fieldId] : _fidDefs[fieldId];
}

ODMFidDefInt* ODMFieldDictionaryInt::findFidDef(Int64 fieldId) const {
  if (!inFieldIdRange(fieldId)) return nullptr;
  return fieldId < 0 ? _negFidDefs[-fieldId] : _fidDefs[fieldId];
}

const ODMFidDef& ODMFieldDictionaryInt::getFidDef(Int32 fieldId) const {
  if (!inFieldIdRange(fieldId)) {
    raiseForField("ODMFieldDictionary::getFidDef( Int32 ) - FieldId: ", fieldId, " out of range.");
  }
  const ODMFidDefInt* def = findFidDef(fieldId);
  if (def == nullptr) {
    raiseForField("ODMFieldDictionary::getFidDef( Int32 ) - FieldId: ", fieldId, " not found.");
  }
  return *def;
}

const ODMFidDef& ODMFieldDictionaryInt::getFidDef(const char* fieldName) const {
  if (fieldName == nullptr) fieldName = "";
  const UInt32 length = static_cast<UInt32>(std::strlen(fieldName));
  // Hashes the text in place: the same bucket and equality as a lookup with
  // an ORVO_String key, without building one.
  const ODMFidDefInt* def =
      _nameTable == nullptr
          ? nullptr
          : _nameTable->findHashed(
                hashName(fieldName, length), [fieldName, length](const ORVO_String& key) {
                  return key.length() == length && std::memcmp(key.data(), fieldName, length) == 0;
                });
  if (def == nullptr) {
    ORVO_String text("ODMFieldDictionary::getFidDef( const char* ) - FieldName: \"");
    text.append(fieldName).append("\" not found.");
    internal::raiseIllegalCall(text);
  }
  return *def;
}

const ORVO_String& ODMFieldDictionaryInt::displayValueFor(Int64 fieldId, Int64 enumValue) const {
  static const char kHead[] = "ODMFieldDictionary::displayValueFor( Int, Int ) - FieldId: ";
  if (!inFieldIdRange(fieldId)) raiseForField(kHead, fieldId, " out of range.");
  const ODMFidDefInt* def = findFidDef(fieldId);
  if (def == nullptr) raiseForField(kHead, fieldId, " not found.");
  const ODMEnumTableInt* table = def->enumTable();
  if (table == nullptr) raiseForEnumValue(fieldId, enumValue, " enumeration table not found.");
  const ORVO_String* display = table->getDisplay(enumValue);
  if (display == nullptr) raiseForEnumValue(fieldId, enumValue, " enumeration value not found.");
  return *display;
}

void ODMFieldDictionaryInt::setDictId(Int64 dictId) {
  if (dictId < kMinDictId || dictId > kMaxDictId) {
    internal::raiseIllegalCall(
        ORVO_String("ODMFieldDictionary::setDictId() -dictionaryId is out of range. It should be "
                    "in the range of -16383 to 16383."));
  }
  _dictId = dictId;
  _dictIdSet = true;
}

void ODMFieldDictionaryInt::readODMFieldDictionary(const ORVO_String& path) {
  ODMFieldDictionaryReader::readFieldDictionary(*this, path);
}

void ODMFieldDictionaryInt::readODMEnumTypeDef(const ORVO_String& path) {
  ODMFieldDictionaryReader::readEnumTypeDef(*this, path);
}

UInt32 ODMFieldDictionaryInt::hashName(const char* name, UInt32 length) {
  return ortHashBytes(0, name, length);
}

bool ODMFieldDictionaryInt::addFidDef(ODMFidDefInt* def) {
  const ORVO_String& name = def->getName();
  return addFidDef(def, hashName(name.data(), name.length()));
}

bool ODMFieldDictionaryInt::addFidDef(ODMFidDefInt* def, UInt32 nameHash) {
  def->updateSizeHint();
  const Int64 fieldId = def->getFieldId();
  if (!inFieldIdRange(fieldId)) return false;
  ODMFidDefInt*& slot = slotOf(fieldId);
  if (slot != nullptr) return false;
  if (fieldId < 0) {
    if (fieldId < _minNegFieldId) _minNegFieldId = fieldId;
  } else if (fieldId > _maxFieldId) {
    _maxFieldId = fieldId;
  }
  slot = def;
  _nameTable->insertLinkHashed(def->nameLink(), nameHash);
  ++_size;
  return true;
}

void ODMFieldDictionaryInt::clearFidDefs() {
  if (_size == 0) return;
  deleteAllFidDefs();
}

// The slots to visit are bounded by the id maxima, which is why a clear
// leaves the maxima as they were. Each definition carries its own node of
// the name index and unlinks it in constant time; a full index is emptied
// as a whole instead.
void ODMFieldDictionaryInt::deleteAllFidDefs() {
  const bool unlinkEach = !emptyAtOnce(_nameTable->size(), _nameTable->bucketCount());
  if (!unlinkEach) _nameTable->forgetLinks();
  const Int64 highest = _maxFieldId < kMaxFieldId ? _maxFieldId : kMaxFieldId;
  for (Int64 id = 0; id <= highest; ++id) deleteFidDef(_fidDefs[id], unlinkEach);
  const Int64 lowest = _minNegFieldId > kMinFieldId ? _minNegFieldId : kMinFieldId;
  for (Int64 slot = 1; slot <= -lowest; ++slot) deleteFidDef(_negFidDefs[slot], unlinkEach);
  _size = 0;
  _fidDefPool->reuseAll();
}

void ODMFieldDictionaryInt::deleteFidDef(ODMFidDefInt*& slot, bool unlink) {
  if (slot == nullptr) return;
  if (unlink) _nameTable->removeLink(slot->nameLink());
  ODMFidDefPool::destroy(slot);
  slot = nullptr;
}

void ODMFieldDictionaryInt::clearEnumTables() {
  unlinkEnumTables();
  deleteAllEnumTables();
}

// A definition that the next enum file does not list would otherwise keep
// pointing at a deleted table.
void ODMFieldDictionaryInt::unlinkEnumTables() {
  if (_size == 0) return;
  for (Int64 id = 0; id <= _maxFieldId; ++id) {
    if (_fidDefs[id] != nullptr) _fidDefs[id]->setEnumTable(nullptr);
  }
  for (Int64 slot = 1; slot <= -_minNegFieldId; ++slot) {
    if (_negFidDefs[slot] != nullptr) _negFidDefs[slot]->setEnumTable(nullptr);
  }
}

void ODMFieldDictionaryInt::deleteAllEnumTables() {
  for (ODMEnumTableInt* table : _enumTables) delete table;
  _enumTables.clear();
  delete _unlistedEnumTable;
  _unlistedEnumTable = nullptr;
}

bool ODMFieldDictionaryInt::linkEnumTables() {
  if (_enumTables.size() == 0 || _size == 0) return false;
  for (ODMEnumTableInt* table : _enumTables) {
    for (Int64 fieldId : table->fids()) {
      // Tables may list ids that have no definition, or lie out of range.
      ODMFidDefInt* def = findFidDef(fieldId);
      if (def != nullptr) def->setEnumTable(table);
    }
  }
  return true;
}

}  // namespace odm
}  // namespace orvo
