// What FieldList and ElementList share, written once: the write iterator's
// steps, the header decode and the count of standard entries, and the
// owned rows of a set definition. Each family supplies a traits struct with
// its codec records, codec calls and failure texts; everything here is
// inlined into the family's own members, so it adds no calls and no
// allocations on the write and read paths.
#ifndef ORVO_DATA_IMPL_LIST_FAMILY_H_
#define ORVO_DATA_IMPL_LIST_FAMILY_H_

#include <algorithm>
#include <cstring>

#include "Data/Impl/ElementListDefInt.h"
#include "Data/Impl/ElementListInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/FieldListDefInt.h"
#include "Data/Impl/FieldListInt.h"
#include "Data/Impl/WriteIteratorAttribInt.h"
#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementListWriteIterator.h"
#include "orvo/data/EntryAttrib.h"
#include "orvo/data/FieldListWriteIterator.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {

struct FieldListFamily {
  using List = data::FieldList;
  using Entry = data::FieldEntry;
  using Def = data::FieldListDef;
  using Writer = data::FieldListWriteIterator;
  using ListRecord = OwfFieldList;
  using EntryRecord = OwfFieldEntry;
  using SetDef = OwfFieldSetDef;
  using SetDefRow = OwfFieldSetDefEntry;
  using SetDefDb = OwfLocalFieldSetDefDb;
  using ListInt = FieldListInt;
  using DefInt = FieldListDefInt;

  static constexpr common::UInt8 kDataType = data::FieldListEnum;
  static constexpr common::UInt8 kHasSetData = OWF_FLF_HAS_SET_DATA;
  static constexpr common::UInt8 kHasStandardData = OWF_FLF_HAS_STANDARD_DATA;

  static constexpr const char* kBindEntryMethod = "bind( const FieldEntry& )";
  static constexpr const char* kNoDefinitionText =
      "FieldListDef was NOT specified while DefinedDataFlag was";
  static constexpr const char* kEmptyEntryText = "Attempt to bind an empty FieldEntry";
  static constexpr const char* kDefinedUnboundText =
      "Attempt to complete FieldList encoding while NOT all DefinedData was bound";

  static int encodeListInit(OwfEncodeIterator* iter, ListRecord* record, SetDefDb* db) {
    return owireEncodeFieldListInit(iter, record, db, 0);
  }
  static constexpr RollbackCall kListComplete = owireEncodeFieldListComplete;
  static int encodeEntryInit(OwfEncodeIterator* iter, EntryRecord* entry) {
    return owireEncodeFieldEntryInit(iter, entry, 0);
  }
  static int encodeEntry(OwfEncodeIterator* iter, EntryRecord* entry, const common::UInt8* value) {
    return owireEncodeFieldEntry(iter, entry, value);
  }
  static constexpr RollbackCall kEntryComplete = owireEncodeFieldEntryComplete;
  static int decodeList(OwfDecodeIterator* iter, ListRecord* record, SetDefDb* db) {
    return owireDecodeFieldList(iter, record, db);
  }
  static const SetDef* levelSetDef(const OwfDecodeLevel& level) { return level.fieldSetDef; }

  // Any field id is a valid key, so a bound entry needs no key check.
  static void requireKey(const EntryRecord&, const common::ORVO_String&, const char*) {}
  static void keyFromRow(const SetDefRow& row, EntryRecord* entry, const common::ORVO_String&,
                         const char*) {
    entry->fieldId = row.fieldId;
  }

  // Field rows are plain values.
  static void copyRows(const SetDefRow* from, common::UInt8 count, SetDefRow* to) {
    std::copy(from, from + count, to);
  }
  static void freeRows(SetDefRow* rows, common::UInt16 /*capacity*/) { delete[] rows; }
};

struct ElementListFamily {
  using List = data::ElementList;
  using Entry = data::ElementEntry;
  using Def = data::ElementListDef;
  using Writer = data::ElementListWriteIterator;
  using ListRecord = OwfElementList;
  using EntryRecord = OwfElementEntry;
  using SetDef = OwfElementSetDef;
  using SetDefRow = OwfElementSetDefEntry;
  using SetDefDb = OwfLocalElementSetDefDb;
  using ListInt = ElementListInt;
  using DefInt = ElementListDefInt;

  static constexpr common::UInt8 kDataType = data::ElementListEnum;
  static constexpr common::UInt8 kHasSetData = OWF_ELF_HAS_SET_DATA;
  static constexpr common::UInt8 kHasStandardData = OWF_ELF_HAS_STANDARD_DATA;

  static constexpr const char* kBindEntryMethod = "bind( const ElementEntry& )";
  static constexpr const char* kNoDefinitionText =
      "ElementListDef was NOT specified while DefinedDataFlag was";
  static constexpr const char* kEmptyEntryText = "Attempt to bind an empty ElementEntry";
  static constexpr const char* kDefinedUnboundText =
      "Attempt to complete ElementList encoding while NOT all DefinedData was bound";

  static int encodeListInit(OwfEncodeIterator* iter, ListRecord* record, SetDefDb* db) {
    return owireEncodeElementListInit(iter, record, db, 0);
  }
  static constexpr RollbackCall kListComplete = owireEncodeElementListComplete;
  static int encodeEntryInit(OwfEncodeIterator* iter, EntryRecord* entry) {
    return owireEncodeElementEntryInit(iter, entry, 0);
  }
  static int encodeEntry(OwfEncodeIterator* iter, EntryRecord* entry, const common::UInt8* value) {
    return owireEncodeElementEntry(iter, entry, value);
  }
  static constexpr RollbackCall kEntryComplete = owireEncodeElementEntryComplete;
  static int decodeList(OwfDecodeIterator* iter, ListRecord* record, SetDefDb* db) {
    return owireDecodeElementList(iter, record, db);
  }
  static const SetDef* levelSetDef(const OwfDecodeLevel& level) { return level.elementSetDef; }

  // Unlike a field id, an element name can be missing; a bound entry is
  // refused for it before anything else is checked.
  static void requireKey(const EntryRecord& entry, const common::ORVO_String& className,
                         const char* method) {
    requireName(entry.name, className, method);
  }
  static void keyFromRow(const SetDefRow& row, EntryRecord* entry,
                         const common::ORVO_String& className, const char* method) {
    entry->name = row.name;
    requireName(entry->name, className, method);
  }
  static void requireName(const OwfBuffer& name, const common::ORVO_String& className,
                          const char* method) {
    if (name.length == 0 || name.data == nullptr) {
      throwUsage("Empty element name is not allowed", className, method);
    }
  }

  // Element rows own a terminated copy of their name, unlike field rows,
  // so copying and freeing rows differ on purpose.
  static OwfBuffer copyName(const OwfBuffer& name) {
    OwfBuffer copy{name.length, new char[name.length + 1]};
    if (name.length != 0) std::memcpy(copy.data, name.data, name.length);
    copy.data[name.length] = '\0';
    return copy;
  }
  static void copyRows(const SetDefRow* from, common::UInt8 count, SetDefRow* to) {
    for (common::UInt8 i = 0; i < count; ++i) {
      to[i].name = copyName(from[i].name);
      to[i].dataType = from[i].dataType;
    }
  }
  // Rows never used hold no name.
  static void freeRows(SetDefRow* rows, common::UInt16 capacity) {
    for (common::UInt16 i = 0; i < capacity; ++i) delete[] rows[i].name.data;
    delete[] rows;
  }
};

// The steps of a list write iterator over the iterator's own state, which
// stays private to the public class and is lent here for one call.
template <class Family>
class ListWriter {
 public:
  using List = typename Family::List;
  using Entry = typename Family::Entry;
  using Def = typename Family::Def;
  using Writer = typename Family::Writer;
  using EntryRecord = typename Family::EntryRecord;
  using SetDef = typename Family::SetDef;
  using SetDefDb = typename Family::SetDefDb;
  using ListInt = typename Family::ListInt;

  ListWriter(data::WriteIteratorAttrib& attrib, common::UInt16& definedBound,
             const common::ORVO_String& className)
      : attrib_(attrib), definedBound_(definedBound), className_(className) {}

  void start(List& list, common::UInt8 iteratorMask, const Def* def) {
    typename Family::ListRecord& record = ListInt::record(list);
    if (iteratorMask & Writer::StandardDataFlag) record.flags |= Family::kHasStandardData;
    if (iteratorMask & Writer::DefinedDataFlag) {
      if (def == nullptr) fail(Family::kNoDefinitionText, "start");
      record.flags |= Family::kHasSetData;
    }
    if ((iteratorMask & (Writer::StandardDataFlag | Writer::DefinedDataFlag)) == 0) {
      fail("IteratorMask does NOT specify either StandardDataFlag or DefinedDataFlag", "start");
    }
    definedBound_ = 0;
    attrib_.beginEncode(&list, Family::kDataType);
    SetDefDb* db = installDefinition(list, def);
    OwfEncodeIterator* iter = attrib_.encodeIter();
    const int ret = initGrowing(attrib_, iter, Family::kListComplete,
                                [&] { return Family::encodeListInit(iter, &record, db); });
    if (ret < 0) fail(owireRetCodeToString(ret), "start");
  }

  void bindDefined(const common::Data& data) {
    constexpr const char* kMethod = "bind( const Data& )";
    constexpr const char* kFlagNotSet =
        "Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set";
    requireStarted(kFlagNotSet, kMethod);
    if (!(ListInt::record(list()).flags & Family::kHasSetData)) fail(kFlagNotSet, kMethod);
    OwfEncodeIterator* iter = attrib_.encodeIter();
    const SetDef* def = definitionInUse();
    if (def == nullptr || definedBound_ >= def->count ||
        encodeLevelState(iter) == EncodeLevelSetDone) {
      fail("Attempt to bind extraneous DefinedData", kMethod);
    }
    EntryRecord entry{};
    Family::keyFromRow(def->entries[definedBound_], &entry, className_, kMethod);
    entry.dataType = data::EntryAttrib::wireTypeOf(data);
    if (isEncoded(data)) {
      entry.encData = encodedBytes(data);
      encodeEntry(iter, &entry, nullptr, kMethod);
    } else if (data.getDataType() == data::DataBufferEnum) {
      // An unencoded value: the codec reads it where the DataBuffer keeps it;
      // no bytes at all make a blank entry.
      const OwfBuffer& value = encodedBytes(data);
      encodeEntry(iter, &entry, value.length == 0 ? nullptr : bytesOf(value), kMethod);
    } else {
      openEntry(iter, &entry, data, kMethod);
    }
    ++definedBound_;
  }

  void bindStandard(const Entry& entry) {
    constexpr const char* kMethod = Family::kBindEntryMethod;
    constexpr const char* kFlagNotSet =
        "Attempt to bind StandardData while StandardDataFlag was NOT set";
    Family::requireKey(ListInt::record(entry), className_, kMethod);
    requireStarted(kFlagNotSet, kMethod);
    const common::Data& data = ListInt::attrib(entry).heldData();
    if (!(ListInt::record(list()).flags & Family::kHasStandardData)) fail(kFlagNotSet, kMethod);
    if (data.getDataType() == data::NoDataEnum) fail(Family::kEmptyEntryText, kMethod);
    OwfEncodeIterator* iter = attrib_.encodeIter();
    closeOpenEntry(iter, kMethod);
    requireDefinedDone(iter, "Attempt to bind StandardData before finishing DefinedData", kMethod);
    EntryRecord record = ListInt::record(entry);
    const OwfBuffer& bytes = encodedBytes(data);
    if (bytes.length == 0) {
      // A container to be written next, or a blank value: the entry stays
      // open until the next bind or complete closes it.
      openEntry(iter, &record, data, kMethod);
    } else if (isEncoded(data)) {
      encodeEntry(iter, &record, nullptr, kMethod);
    } else {
      encodeEntry(iter, &record, bytesOf(bytes), kMethod);
    }
  }

  void complete() {
    constexpr const char* kMethod = "complete";
    requireStarted(owireRetCodeToString(OWIRE_RET_INVALID_ENCODE_STATE), kMethod);
    OwfEncodeIterator* iter = attrib_.encodeIter();
    closeOpenEntry(iter, kMethod);
    requireDefinedDone(iter, Family::kDefinedUnboundText, kMethod);
    const int ret = Family::kListComplete(iter, true);
    if (ret < 0) fail(owireRetCodeToString(ret), kMethod);
    attrib_.encodeParentComplete();
  }

 private:
  [[noreturn]] void fail(const char* text, const char* method) const {
    throwUsage(text, className_, method);
  }

  List& list() const { return *static_cast<List*>(attrib_.data()); }
  static const common::UInt8* bytesOf(const OwfBuffer& buffer) {
    return reinterpret_cast<const common::UInt8*>(buffer.data);
  }

  // Calls before start have no list to write; they fail as a list without
  // the needed flag would.
  void requireStarted(const char* text, const char* method) const {
    if (attrib_.data() == nullptr) fail(text, method);
  }

  // Copies `def` into the list's own table, so that the codec finds it by
  // id; returns the table, or null when there is nothing to hand over.
  SetDefDb* installDefinition(List& list, const Def* def) {
    if (def == nullptr) return nullptr;
    const SetDef& setDef = Family::DefInt::setDef(*def);
    if (setDef.setId >= OWF_MAX_LOCAL_SET_DEFS) return nullptr;
    SetDefDb& db = ListInt::defDb(list);
    db.definitions[setDef.setId] = setDef;
    list.setDataDefID(setDef.setId);
    return &db;
  }

  // The definition the list is being written with, or null.
  const SetDef* definitionInUse() const {
    List& target = list();
    const common::UInt16 id = ListInt::record(target).setId;
    if (id >= OWF_MAX_LOCAL_SET_DEFS) return nullptr;
    const SetDef& def = ListInt::defDb(target).definitions[id];
    return def.setId == OWF_SET_DEF_FREE ? nullptr : &def;
  }

  // Standard entries and the end of the list come only after every
  // set-defined entry, unless the codec already closed the set.
  void requireDefinedDone(OwfEncodeIterator* iter, const char* text, const char* method) const {
    const SetDef* def = definitionInUse();
    if (def != nullptr && definedBound_ != def->count &&
        encodeLevelState(iter) != EncodeLevelSetDone) {
      fail(text, method);
    }
  }

  // An entry left open by a nested container or a blank value is closed
  // before anything else is written.
  void closeOpenEntry(OwfEncodeIterator* iter, const char* method) {
    if (encodeLevelState(iter) != EncodeLevelEntryOpen) return;
    const int ret = Family::kEntryComplete(iter, true);
    if (ret < 0) fail(owireRetCodeToString(ret), method);
  }

  // Opens `entry` for `data`, a container written next by its own iterator
  // or a blank value.
  void openEntry(OwfEncodeIterator* iter, EntryRecord* entry, const common::Data& data,
                 const char* method) {
    const int ret = initGrowing(attrib_, iter, Family::kEntryComplete,
                                [&] { return Family::encodeEntryInit(iter, entry); });
    if (ret < 0) fail(owireRetCodeToString(ret), method);
    attrib_.attachNested(data);
  }

  void encodeEntry(OwfEncodeIterator* iter, EntryRecord* entry, const common::UInt8* value,
                   const char* method) {
    const int ret =
        encodeGrowing(attrib_, iter, [&] { return Family::encodeEntry(iter, entry, value); });
    if (ret < 0) fail(owireRetCodeToString(ret), method);
  }

  data::WriteIteratorAttrib& attrib_;
  common::UInt16& definedBound_;
  const common::ORVO_String& className_;
};

// Decodes a list header at `iter`, failing in `method` on a bad one.
template <class Family>
int decodeListHeader(OwfDecodeIterator* iter, typename Family::ListRecord* record,
                     typename Family::SetDefDb* db, const common::ORVO_String& className,
                     const char* method) {
  const int ret = Family::decodeList(iter, record, db);
  if (ret < 0) throwUsage(owireRetCodeToString(ret), className, method);
  return ret;
}

// Points `iter` at a list's own encoded bytes, read in the wire version
// they were written with.
inline void aimAtOwnBytes(OwfDecodeIterator* iter, const OwfBuffer& bytes, common::UInt8 major,
                          common::UInt8 minor, const common::ORVO_String& className) {
  clearDecodeIterator(iter);
  if (major == 14) setDecodeIteratorVersion(iter, major, minor);
  if (setDecodeIteratorBuffer(iter, const_cast<OwfBuffer*>(&bytes)) < 0) {
    throwUsage(owireRetCodeToString(OWIRE_RET_FAILURE), className, "startDecode");
  }
}

// Entries after the set-defined ones of a list whose header `ret` came
// from decoding at `iter`; a blank list has none.
template <class Family>
common::UInt32 standardEntryCount(int ret, const OwfDecodeIterator& iter,
                                  const typename Family::ListRecord& record) {
  if (ret == OWIRE_RET_BLANK_DATA) return 0;
  if (iter.decodingLevel < 0 || iter.decodingLevel >= OWIRE_MAX_LEVELS) return 0;
  const OwfDecodeLevel& level = iter.levels[iter.decodingLevel];
  const common::UInt32 count = level.itemCount;
  const typename Family::SetDef* def = Family::levelSetDef(level);
  if (!(record.flags & Family::kHasSetData) || def == nullptr) return count;
  const common::UInt32 defined = def->count;
  return defined < count ? count - defined : 0;
}

// Marks every slot of a list's definition table free; what the slots held
// before is left as it was.
template <class SetDefDb>
void markSlotsFree(SetDefDb* db) {
  for (auto& slot : db->definitions) slot.setId = OWF_SET_DEF_FREE;
}

// The rows a set definition owns, over the definition's own members.
// Copies always own their rows; a view of a decoded table owns none.
template <class Family>
class OwnedSetDefRows {
 public:
  using SetDef = typename Family::SetDef;
  using SetDefRow = typename Family::SetDefRow;

  OwnedSetDefRows(SetDef& setDef, common::UInt16& capacity, bool& owns)
      : setDef_(setDef), capacity_(capacity), owns_(owns) {}

  void copyFrom(const SetDef& other, common::UInt16 otherCapacity) {
    const common::UInt16 capacity = std::max<common::UInt16>(otherCapacity, other.count);
    setDef_.setId = other.setId;
    setDef_.count = other.count;
    setDef_.entries = nullptr;
    if (capacity != 0) {
      setDef_.entries = new SetDefRow[capacity]();
      Family::copyRows(other.entries, other.count, setDef_.entries);
    }
    capacity_ = capacity;
    owns_ = setDef_.entries != nullptr;
  }

  void reserve(common::UInt16 newCapacity, bool keep) {
    if (newCapacity <= capacity_) return;
    SetDefRow* fresh = new SetDefRow[newCapacity]();
    if (keep) {
      Family::copyRows(setDef_.entries, setDef_.count, fresh);
    } else {
      setDef_.count = 0;
    }
    if (owns_) Family::freeRows(setDef_.entries, capacity_);
    setDef_.entries = fresh;
    capacity_ = newCapacity;
    owns_ = true;
  }

  // Rows viewed in a decoded container belong to it and are left alone.
  void release() {
    if (!owns_) return;
    Family::freeRows(setDef_.entries, capacity_);
    setDef_.setId = 0;
    setDef_.count = 0;
    setDef_.entries = nullptr;
    capacity_ = 0;
    owns_ = false;
  }

 private:
  SetDef& setDef_;
  common::UInt16& capacity_;
  bool& owns_;
};

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_LIST_FAMILY_H_
