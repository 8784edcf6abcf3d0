#include "orvo/data/FieldListWriteIterator.h"

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/FieldListDefInt.h"
#include "Data/Impl/FieldListInt.h"
#include "Data/Impl/WriteIteratorAttribInt.h"
#include "orvo/data/DataType.h"
#include "orvo/data/FieldListDef.h"

namespace orvo {
namespace data {
namespace {

using common::Data;
using common::UInt16;
using common::UInt8;
using internal::DataInt;
using internal::FieldListInt;

constexpr char kBindDataMethod[] = "bind( const Data& )";
constexpr char kBindEntryMethod[] = "bind( const FieldEntry& )";
constexpr char kCompleteMethod[] = "complete";

}  // namespace

const common::ORVO_String FieldListWriteIterator::_className("FieldListWriteIterator");

FieldListWriteIterator::FieldListWriteIterator() : _definedBound(0) {}

FieldListWriteIterator::~FieldListWriteIterator() = default;

FieldList& FieldListWriteIterator::list() const { return *static_cast<FieldList*>(_attrib.data()); }

// The definition the list is being written with, or null.
const OwfFieldSetDef* FieldListWriteIterator::definitionInUse() const {
  FieldList& target = list();
  const UInt16 id = FieldListInt::record(target).setId;
  if (id >= OWF_MAX_LOCAL_SET_DEFS) return nullptr;
  const OwfFieldSetDef& def = FieldListInt::defDb(target).definitions[id];
  return def.setId == OWF_SET_DEF_FREE ? nullptr : &def;
}

// Calls before start have no list to write; they fail as a list without
// the needed flag would.
void FieldListWriteIterator::requireStarted(const char* text, const char* method) const {
  if (_attrib.data() == nullptr) internal::throwUsage(text, _className, method);
}

void FieldListWriteIterator::start(FieldList& list, UInt8 iteratorMask, const FieldListDef* def,
                                   UInt16 /*size*/) {
  OwfFieldList& record = FieldListInt::record(list);
  if (iteratorMask & StandardDataFlag) record.flags |= OWF_FLF_HAS_STANDARD_DATA;
  if (iteratorMask & DefinedDataFlag) {
    if (def == nullptr) {
      internal::throwUsage("FieldListDef was NOT specified while DefinedDataFlag was", _className,
                           "start");
    }
    record.flags |= OWF_FLF_HAS_SET_DATA;
  }
  if ((iteratorMask & (StandardDataFlag | DefinedDataFlag)) == 0) {
    internal::throwUsage("IteratorMask does NOT specify either StandardDataFlag or DefinedDataFlag",
                         _className, "start");
  }
  _definedBound = 0;
  _attrib.beginEncode(&list, FieldListEnum);
  OwfLocalFieldSetDefDb* defDb = nullptr;
  if (def != nullptr) {
    const OwfFieldSetDef& setDef = internal::FieldListDefInt::setDef(*def);
    if (setDef.setId < OWF_MAX_LOCAL_SET_DEFS) {
      defDb = &FieldListInt::defDb(list);
      defDb->definitions[setDef.setId] = setDef;
      list.setDataDefID(setDef.setId);
    }
  }
  encodeFieldListInit(_attrib.encodeIter(), &record, defDb);
}

void FieldListWriteIterator::bind(const Data& data) {
  requireStarted("Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set",
                 kBindDataMethod);
  FieldList& target = list();
  if (!(FieldListInt::record(target).flags & OWF_FLF_HAS_SET_DATA)) {
    internal::throwUsage("Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set",
                         _className, kBindDataMethod);
  }
  OwfEncodeIterator* iter = _attrib.encodeIter();
  const OwfFieldSetDef* def = definitionInUse();
  if (def == nullptr || _definedBound >= def->count ||
      encodeLevelState(iter) == EncodeLevelSetDone) {
    internal::throwUsage("Attempt to bind extraneous DefinedData", _className, kBindDataMethod);
  }
  OwfFieldEntry entry{};
  entry.fieldId = def->entries[_definedBound].fieldId;
  entry.dataType = EntryAttrib::wireTypeOf(data);
  if (internal::isEncoded(data)) {
    entry.encData = internal::encodedBytes(data);
    encodeFieldEntry(iter, &entry, nullptr, kBindDataMethod);
  } else if (data.getDataType() == DataBufferEnum) {
    // An unencoded value: the codec reads it where the DataBuffer keeps it;
    // no bytes at all make a blank entry.
    const OwfBuffer& value = internal::encodedBytes(data);
    const UInt8* valuePtr = value.length == 0 ? nullptr : reinterpret_cast<UInt8*>(value.data);
    encodeFieldEntry(iter, &entry, valuePtr, kBindDataMethod);
  } else {
    encodeFieldEntryInit(iter, &entry, kBindDataMethod);
    _attrib.attachNested(data);
  }
  ++_definedBound;
}

void FieldListWriteIterator::bind(const FieldEntry& entry) {
  requireStarted("Attempt to bind StandardData while StandardDataFlag was NOT set",
                 kBindEntryMethod);
  const Data& data = FieldListInt::attrib(entry).heldData();
  FieldList& target = list();
  if (!(FieldListInt::record(target).flags & OWF_FLF_HAS_STANDARD_DATA)) {
    internal::throwUsage("Attempt to bind StandardData while StandardDataFlag was NOT set",
                         _className, kBindEntryMethod);
  }
  if (data.getDataType() == NoDataEnum) {
    internal::throwUsage("Attempt to bind an empty FieldEntry", _className, kBindEntryMethod);
  }
  OwfEncodeIterator* iter = _attrib.encodeIter();
  closeOpenEntry(iter, kBindEntryMethod);
  const OwfFieldSetDef* def = definitionInUse();
  if (def != nullptr && _definedBound != def->count &&
      encodeLevelState(iter) != EncodeLevelSetDone) {
    internal::throwUsage("Attempt to bind StandardData before finishing DefinedData", _className,
                         kBindEntryMethod);
  }
  OwfFieldEntry record = FieldListInt::record(entry);
  const OwfBuffer& bytes = internal::encodedBytes(data);
  if (bytes.length == 0) {
    // A container to be written next, or a blank value: the entry stays
    // open until the next bind or complete closes it.
    encodeFieldEntryInit(iter, &record, kBindEntryMethod);
    _attrib.attachNested(data);
  } else if (internal::isEncoded(data)) {
    encodeFieldEntry(iter, &record, nullptr, kBindEntryMethod);
  } else {
    encodeFieldEntry(iter, &record, reinterpret_cast<UInt8*>(bytes.data), kBindEntryMethod);
  }
}

void FieldListWriteIterator::complete() {
  requireStarted(owireRetCodeToString(OWIRE_RET_INVALID_ENCODE_STATE), kCompleteMethod);
  OwfEncodeIterator* iter = _attrib.encodeIter();
  closeOpenEntry(iter, kCompleteMethod);
  const OwfFieldSetDef* def = definitionInUse();
  if (def != nullptr && _definedBound != def->count &&
      encodeLevelState(iter) != EncodeLevelSetDone) {
    internal::throwUsage(
        "Attempt to complete FieldList encoding while NOT all DefinedData was bound", _className,
        kCompleteMethod);
  }
  const int ret = owireEncodeFieldListComplete(iter, true);
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, kCompleteMethod);
  _attrib.encodeParentComplete();
}

// An entry left open by a nested container or a blank value is closed
// before anything else is written.
void FieldListWriteIterator::closeOpenEntry(OwfEncodeIterator* iter, const char* method) {
  if (encodeLevelState(iter) != EncodeLevelEntryOpen) return;
  const int ret = owireEncodeFieldEntryComplete(iter, true);
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, method);
}

void FieldListWriteIterator::encodeFieldListInit(OwfEncodeIterator* iter, OwfFieldList* record,
                                                 OwfLocalFieldSetDefDb* defDb) {
  const int ret = internal::initGrowing(_attrib, iter, owireEncodeFieldListComplete, [&] {
    return owireEncodeFieldListInit(iter, record, defDb, 0);
  });
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "start");
}

void FieldListWriteIterator::encodeFieldEntryInit(OwfEncodeIterator* iter, OwfFieldEntry* entry,
                                                  const char* method) {
  const int ret = internal::initGrowing(_attrib, iter, owireEncodeFieldEntryComplete,
                                        [&] { return owireEncodeFieldEntryInit(iter, entry, 0); });
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, method);
}

void FieldListWriteIterator::encodeFieldEntry(OwfEncodeIterator* iter, OwfFieldEntry* entry,
                                              const UInt8* value, const char* method) {
  const int ret = internal::encodeGrowing(
      _attrib, iter, [&] { return owireEncodeFieldEntry(iter, entry, value); });
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, method);
}

}  // namespace data
}  // namespace orvo
