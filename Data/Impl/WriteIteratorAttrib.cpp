#include "orvo/data/WriteIteratorAttrib.h"

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/WriteIteratorAttribInt.h"
#include "diagnostics/Verify.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {
namespace {

using common::Data;
using common::UInt8;
using internal::DataInt;
using internal::IndicationMaskReader;
using internal::kPhraseCompletingEncodeFor;

constexpr common::UInt32 kFirstEncodeBufferSize = 4096;

// How a summary-carrying parent is closed, by its data type.
struct SummaryParent {
  UInt8 dataType;
  const char* noun;
  const char* iteratorClass;
  int (*summaryComplete)(OwfEncodeIterator*, bool);
  int (*containerComplete)(OwfEncodeIterator*, bool);
};

constexpr SummaryParent kSummaryParents[] = {
    {VectorEnum, "Vector", "VectorWriteIterator", owireEncodeVectorSummaryDataComplete,
     owireEncodeVectorComplete},
    {MapEnum, "Map", "MapWriteIterator", owireEncodeMapSummaryDataComplete, owireEncodeMapComplete},
    {SeriesEnum, "Series", "SeriesWriteIterator", owireEncodeSeriesSummaryDataComplete,
     owireEncodeSeriesComplete},
};

// Zero-initialised before any registration can run.
IndicationMaskReader gIndicationMaskReaders[sizeof(kSummaryParents) / sizeof(kSummaryParents[0])];

int summaryParentIndex(UInt8 dataType) {
  for (int i = 0; i < static_cast<int>(sizeof(kSummaryParents) / sizeof(kSummaryParents[0])); ++i) {
    if (kSummaryParents[i].dataType == dataType) return i;
  }
  return -1;
}

// The entry of a list or filter list that holds the nested object.
void closeParentEntry(OwfEncodeIterator* iter, int (*entryComplete)(OwfEncodeIterator*, bool),
                      const char* noun, const char* iteratorClass) {
  const int ret = entryComplete(iter, true);
  if (ret < 0) {
    internal::failWhile(ret, kPhraseCompletingEncodeFor, noun, iteratorClass,
                        "encodeParentComplete");
  }
}

}  // namespace

WriteIteratorAttrib::WriteIteratorAttrib()
    : _headerPending(true), _encodeIter(nullptr), _data(nullptr) {}

WriteIteratorAttrib::~WriteIteratorAttrib() = default;

bool WriteIteratorAttrib::attachToRoot() {
  Data* above = DataInt::rootData(_data);
  _encodeIter = DataInt::encodeIterPtr(above);
  return DataInt::encodedData(above).data != nullptr;
}

void WriteIteratorAttrib::beginEncode(Data* data, UInt8 dataType) {
  _data = data;
  const bool hasBuffer = attachToRoot();
  if (!hasBuffer) {
    DataInt::prepareForEncode(data, kFirstEncodeBufferSize);
  } else if (DataInt::rootData(data) == data) {
    DataInt::resetForEncode(data, data, dataType);
  }
  // A nested object with a buffer above it writes through that iterator.
}

void WriteIteratorAttrib::attachNested(const Data& nested) {
  // The nested object is the caller's and is written through this iterator.
  Data* target = const_cast<Data*>(&nested);
  DataInt::encodeIterPtr(target) = _encodeIter;
  DataInt::rootData(target) = _data;
  DataInt::parentData(target) = _data;
}

void WriteIteratorAttrib::growEncodeBuffer(OwfEncodeIterator* iter) {
  DataInt::reallocateEncodeBuffer(DataInt::findRoot(_data), iter);
}

void WriteIteratorAttrib::encodeParentComplete() {
  DataInt::encodeState(_data) = Data::EncodeStateEncoded;
  if (DataInt::rootData(_data) == _data) {
    DataInt::encodedData(_data).length = getEncodedLength(_encodeIter);
    return;
  }
  Data* parent = DataInt::parentData(_data);
  const UInt8 parentType = parent->getDataType();
  switch (parentType) {
    case FieldListEnum:
      closeParentEntry(_encodeIter, owireEncodeFieldEntryComplete, "FieldList",
                       "FieldListWriteIterator");
      return;
    case ElementListEnum:
      closeParentEntry(_encodeIter, owireEncodeElementEntryComplete, "ElementList",
                       "ElementListWriteIterator");
      return;
    case FilterListEnum:
      // The noun stays "FieldList" for a filter list, as the library words it.
      closeParentEntry(_encodeIter, owireEncodeFilterEntryComplete, "FieldList",
                       "FilterListWriteIterator");
      return;
    default:
      break;
  }
  const int index = summaryParentIndex(parentType);
  if (index < 0) {
    internal::failMessage("Unsupported functionality", "WriteIteratorAttrib",
                          "encodeParentComplete");
  }
  const SummaryParent& how = kSummaryParents[index];
  if (encodeLevelState(_encodeIter) == EncodeLevelSummary) {
    // This object was the parent's summary data.
    const int ret = internal::encodeGrowing(*this, _encodeIter,
                                            [&] { return how.summaryComplete(_encodeIter, true); });
    if (ret < 0) {
      internal::failWhile(ret, kPhraseCompletingEncodeFor, how.noun, how.noun, "setSummaryData");
    }
  }
  const IndicationMaskReader readMask = gIndicationMaskReaders[index];
  ORVO_VERIFY(readMask != nullptr);
  if (readMask == nullptr || (readMask(*parent) & internal::kEntriesFollowFlag) != 0) {
    return;  // the parent's own iterator closes the open entry
  }
  const int ret = how.containerComplete(_encodeIter, true);
  if (ret < 0) {
    internal::failWhile(ret, kPhraseCompletingEncodeFor, how.noun, how.iteratorClass,
                        "encodeParentComplete");
  }
  DataInt::encodeState(parent) = Data::EncodeStateEncoded;
  DataInt::encodedData(parent).length = getEncodedLength(_encodeIter);
}

}  // namespace data

namespace internal {

void rollBackAndGrow(data::WriteIteratorAttrib& attrib, OwfEncodeIterator* iter,
                     RollbackCall rollback) {
  const int ret = rollback(iter, false);
  ORVO_VERIFY(ret == OWIRE_RET_SUCCESS);
  attrib.growEncodeBuffer(iter);
}

void registerIndicationMaskReader(common::UInt8 dataType, IndicationMaskReader reader) {
  const int index = data::summaryParentIndex(dataType);
  ORVO_VERIFY(index >= 0);
  if (index >= 0) data::gIndicationMaskReaders[index] = reader;
}

}  // namespace internal
}  // namespace orvo
