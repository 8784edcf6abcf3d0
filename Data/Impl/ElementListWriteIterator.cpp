#include "orvo/data/ElementListWriteIterator.h"

#include "Data/Impl/DataInt.h"
#include "Data/Impl/ElementListDefInt.h"
#include "Data/Impl/ElementListInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/WriteIteratorAttribInt.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementListDef.h"

namespace orvo {
namespace data {
namespace {

using common::Data;
using common::UInt16;
using common::UInt8;
using internal::DataInt;
using internal::ElementListInt;

constexpr char kBindDataMethod[] = "bind( const Data& )";
constexpr char kBindEntryMethod[] = "bind( const ElementEntry& )";
constexpr char kCompleteMethod[] = "complete";

}  // namespace

const common::ORVO_String ElementListWriteIterator::_className("ElementListWriteIterator");

ElementListWriteIterator::ElementListWriteIterator() : _definedBound(0) {}

ElementListWriteIterator::~ElementListWriteIterator() = default;

ElementList& ElementListWriteIterator::list() const {
  return *static_cast<ElementList*>(_attrib.data());
}

// The definition the list is being written with, or null.
const OwfElementSetDef* ElementListWriteIterator::definitionInUse() const {
  ElementList& target = list();
  const UInt16 id = ElementListInt::record(target).setId;
  if (id >= OWF_MAX_LOCAL_SET_DEFS) return nullptr;
  const OwfElementSetDef& def = ElementListInt::defDb(target).definitions[id];
  return def.setId == OWF_SET_DEF_FREE ? nullptr : &def;
}

// Calls before start have no list to write; they fail as a list without
// the needed flag would.
void ElementListWriteIterator::requireStarted(const char* text, const char* method) const {
  if (_attrib.data() == nullptr) internal::throwUsage(text, _className, method);
}

void ElementListWriteIterator::start(ElementList& list, UInt8 iteratorMask,
                                     const ElementListDef* def, UInt16 /*size*/) {
  OwfElementList& record = ElementListInt::record(list);
  if (iteratorMask & StandardDataFlag) record.flags |= OWF_ELF_HAS_STANDARD_DATA;
  if (iteratorMask & DefinedDataFlag) {
    if (def == nullptr) {
      internal::throwUsage("ElementListDef was NOT specified while DefinedDataFlag was", _className,
                           "start");
    }
    record.flags |= OWF_ELF_HAS_SET_DATA;
  }
  if ((iteratorMask & (StandardDataFlag | DefinedDataFlag)) == 0) {
    internal::throwUsage("IteratorMask does NOT specify either StandardDataFlag or DefinedDataFlag",
                         _className, "start");
  }
  _definedBound = 0;
  _attrib.beginEncode(&list, ElementListEnum);
  OwfLocalElementSetDefDb* defDb = nullptr;
  if (def != nullptr) {
    const OwfElementSetDef& setDef = internal::ElementListDefInt::setDef(*def);
    if (setDef.setId < OWF_MAX_LOCAL_SET_DEFS) {
      defDb = &ElementListInt::defDb(list);
      defDb->definitions[setDef.setId] = setDef;
      list.setDataDefID(setDef.setId);
    }
  }
  encodeElementListInit(_attrib.encodeIter(), &record, defDb);
}

void ElementListWriteIterator::bind(const Data& data) {
  requireStarted("Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set",
                 kBindDataMethod);
  ElementList& target = list();
  if (!(ElementListInt::record(target).flags & OWF_ELF_HAS_SET_DATA)) {
    internal::throwUsage("Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set",
                         _className, kBindDataMethod);
  }
  OwfEncodeIterator* iter = _attrib.encodeIter();
  const OwfElementSetDef* def = definitionInUse();
  if (def == nullptr || _definedBound >= def->count ||
      encodeLevelState(iter) == EncodeLevelSetDone) {
    internal::throwUsage("Attempt to bind extraneous DefinedData", _className, kBindDataMethod);
  }
  OwfElementEntry entry{};
  entry.name = def->entries[_definedBound].name;
  if (entry.name.length == 0 || entry.name.data == nullptr) {
    internal::throwUsage("Empty element name is not allowed", _className, kBindDataMethod);
  }
  entry.dataType = EntryAttrib::wireTypeOf(data);
  if (internal::isEncoded(data)) {
    entry.encData = internal::encodedBytes(data);
    encodeElementEntry(iter, &entry, nullptr, kBindDataMethod);
  } else if (data.getDataType() == DataBufferEnum) {
    // An unencoded value: the codec reads it where the DataBuffer keeps it;
    // no bytes at all make a blank entry.
    const OwfBuffer& value = internal::encodedBytes(data);
    const UInt8* valuePtr = value.length == 0 ? nullptr : reinterpret_cast<UInt8*>(value.data);
    encodeElementEntry(iter, &entry, valuePtr, kBindDataMethod);
  } else {
    encodeElementEntryInit(iter, &entry, kBindDataMethod);
    _attrib.attachNested(data);
  }
  ++_definedBound;
}

void ElementListWriteIterator::bind(const ElementEntry& entry) {
  const OwfBuffer& name = ElementListInt::record(entry).name;
  if (name.data == nullptr || name.length == 0) {
    internal::throwUsage("Empty element name is not allowed", _className, kBindEntryMethod);
  }
  requireStarted("Attempt to bind StandardData while StandardDataFlag was NOT set",
                 kBindEntryMethod);
  const Data& data = ElementListInt::attrib(entry).heldData();
  ElementList& target = list();
  if (!(ElementListInt::record(target).flags & OWF_ELF_HAS_STANDARD_DATA)) {
    internal::throwUsage("Attempt to bind StandardData while StandardDataFlag was NOT set",
                         _className, kBindEntryMethod);
  }
  if (data.getDataType() == NoDataEnum) {
    internal::throwUsage("Attempt to bind an empty ElementEntry", _className, kBindEntryMethod);
  }
  OwfEncodeIterator* iter = _attrib.encodeIter();
  closeOpenEntry(iter, kBindEntryMethod);
  const OwfElementSetDef* def = definitionInUse();
  if (def != nullptr && _definedBound != def->count &&
      encodeLevelState(iter) != EncodeLevelSetDone) {
    internal::throwUsage("Attempt to bind StandardData before finishing DefinedData", _className,
                         kBindEntryMethod);
  }
  OwfElementEntry record = ElementListInt::record(entry);
  const OwfBuffer& bytes = internal::encodedBytes(data);
  if (bytes.length == 0) {
    // A container to be written next, or a blank value: the entry stays
    // open until the next bind or complete closes it.
    encodeElementEntryInit(iter, &record, kBindEntryMethod);
    _attrib.attachNested(data);
  } else if (internal::isEncoded(data)) {
    encodeElementEntry(iter, &record, nullptr, kBindEntryMethod);
  } else {
    encodeElementEntry(iter, &record, reinterpret_cast<UInt8*>(bytes.data), kBindEntryMethod);
  }
}

void ElementListWriteIterator::complete() {
  requireStarted(owireRetCodeToString(OWIRE_RET_INVALID_ENCODE_STATE), kCompleteMethod);
  OwfEncodeIterator* iter = _attrib.encodeIter();
  closeOpenEntry(iter, kCompleteMethod);
  const OwfElementSetDef* def = definitionInUse();
  if (def != nullptr && _definedBound != def->count &&
      encodeLevelState(iter) != EncodeLevelSetDone) {
    internal::throwUsage(
        "Attempt to complete ElementList encoding while NOT all DefinedData was bound", _className,
        kCompleteMethod);
  }
  const int ret = owireEncodeElementListComplete(iter, true);
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, kCompleteMethod);
  _attrib.encodeParentComplete();
}

// An entry left open by a nested container or a blank value is closed
// before anything else is written.
void ElementListWriteIterator::closeOpenEntry(OwfEncodeIterator* iter, const char* method) {
  if (encodeLevelState(iter) != EncodeLevelEntryOpen) return;
  const int ret = owireEncodeElementEntryComplete(iter, true);
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, method);
}

void ElementListWriteIterator::encodeElementListInit(OwfEncodeIterator* iter,
                                                     OwfElementList* record,
                                                     OwfLocalElementSetDefDb* defDb) {
  const int ret = internal::initGrowing(_attrib, iter, owireEncodeElementListComplete, [&] {
    return owireEncodeElementListInit(iter, record, defDb, 0);
  });
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, "start");
}

void ElementListWriteIterator::encodeElementEntryInit(OwfEncodeIterator* iter,
                                                      OwfElementEntry* entry, const char* method) {
  const int ret = internal::initGrowing(_attrib, iter, owireEncodeElementEntryComplete, [&] {
    return owireEncodeElementEntryInit(iter, entry, 0);
  });
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, method);
}

void ElementListWriteIterator::encodeElementEntry(OwfEncodeIterator* iter, OwfElementEntry* entry,
                                                  const UInt8* value, const char* method) {
  const int ret = internal::encodeGrowing(
      _attrib, iter, [&] { return owireEncodeElementEntry(iter, entry, value); });
  if (ret < 0) internal::throwUsage(owireRetCodeToString(ret), _className, method);
}

}  // namespace data
}  // namespace orvo
