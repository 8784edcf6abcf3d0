#include "orvo/data/EntryAttrib.h"

#include <new>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/DataInt.h"
#include "diagnostics/Verify.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {
namespace {

using common::Data;
using common::UInt8;
using internal::DataInt;

bool isByteStringType(UInt8 type) {
  switch (type) {
    case BufferEnum:
    case AsciiStringEnum:
    case Utf8StringEnum:
    case OmtesStringEnum:
    case OpaqueEnum:
    case XmlEnum:
    case AnsiPageEnum:
      return true;
    default:
      return false;
  }
}

// Types whose data travel inside a DataBuffer in entries that carry
// containers.
bool isOpaquePayloadType(UInt8 type) {
  return type == OpaqueEnum || type == XmlEnum || type == AnsiPageEnum;
}

// Wire types that the slot carries as a container class of their own.
bool isContainerSlotType(UInt8 type) {
  switch (type) {
    case ArrayEnum:
    case NoDataEnum:
    case FieldListEnum:
    case ElementListEnum:
    case FilterListEnum:
    case VectorEnum:
    case MapEnum:
    case SeriesEnum:
      return true;
    default:
      return false;
  }
}

const DataBuffer& asDataBuffer(const Data& data) { return static_cast<const DataBuffer&>(data); }

// A managed entry can only copy bytes that are complete; the report goes on
// and the entry keeps what it had.
void reportNotPreEncoded() {
  static const char kProblem[] =
      "To deep copy entry data, it is required that entry data is pre-encoded";
  if (diagnostics::verifyCheck("ORVO Internal failure", kProblem, __FILE__, __LINE__, true, true,
                               nullptr, "%s", ORVO_VERIFY_TEXT(0)) &&
      diagnostics::verifyReport("ORVO Internal failure", kProblem, __FILE__, __LINE__, true, true,
                                nullptr, "%s", ORVO_VERIFY_TEXT(0))) {
    diagnostics::debugBreak(__FILE__, __LINE__);
  }
}

}  // namespace

const common::ORVO_String EntryAttrib::_className("EntryAttrib");

EntryAttrib::EntryAttrib(UInt8 entryType, bool managed)
    : _entryType(entryType), _slotType(NoDataEnum), _managed(managed), _currentData(nullptr) {
  new (_dataSlot) NoData(managed);
}

EntryAttrib::~EntryAttrib() { DataInt::destroyDataObject(&slot()); }

Data& EntryAttrib::slot() { return *std::launder(reinterpret_cast<Data*>(_dataSlot)); }

const Data& EntryAttrib::slot() const {
  return *std::launder(reinterpret_cast<const Data*>(_dataSlot));
}

UInt8 EntryAttrib::wireTypeOf(const Data& data) {
  const UInt8 type = data.getDataType();
  return type == DataBufferEnum ? asDataBuffer(data).getDataBufferType() : type;
}

void EntryAttrib::clear() {
  if (_managed) DataInt::shallowMorph(&slot(), NoDataEnum, 0);
  _currentData = nullptr;
  _slotType = NoDataEnum;
}

bool EntryAttrib::isValidEntryData(const Data& data) const {
  const UInt8 type = data.getDataType();
  const UInt8 wireType = wireTypeOf(data);
  switch (_entryType) {
    case FieldEntryEnum:
    case ElementEntryEnum:
      return type != MsgEnum;
    case VectorEntryEnum:
    case MapEntryEnum:
    case FilterEntryEnum:
    case SeriesEntryEnum:
      return wireType > NoDataEnum && wireType != MsgEnum;
    case ArrayEntryEnum:
      return type == DataBufferEnum && !isOpaquePayloadType(wireType);
    default:
      return false;
  }
}

void EntryAttrib::copyEntryData(const Data& data) {
  const UInt8 type = data.getDataType();
  if (!_managed) {
    _currentData = &data;
    _slotType = type;
    return;
  }
  Data* const own = &slot();
  Data* const source = const_cast<Data*>(&data);
  if (type == DataBufferEnum) {
    DataInt::shallowMorph(own, DataBufferEnum, 0);
    DataBuffer& copy = static_cast<DataBuffer&>(*own);
    const UInt8 wireType = wireTypeOf(data);
    if (isByteStringType(wireType)) {
      copy.setBuffer(asDataBuffer(data).getBuffer(), wireType);
    } else {
      internal::DataBufferInt::copyPrimitiveDataType(copy, asDataBuffer(data));
    }
  } else if (DataInt::encodeState(source) == Data::EncodeStateEncoded) {
    DataInt::shallowMorph(own, type, 0);
    // The slot follows the entry's managed flag, so this is a copy it owns.
    DataInt::setEncodedLite(own, DataInt::encodedData(source));
  } else if (data.isBlank()) {
    DataInt::shallowMorph(own, type, 0);
  } else {
    reportNotPreEncoded();
    return;
  }
  _currentData = own;
  _slotType = type;
}

void EntryAttrib::prepareDataSlot(UInt8 dataType) {
  if (dataType == MsgEnum) return;
  if (isContainerSlotType(dataType)) {
    if (_slotType == dataType) {
      slot().clear();
    } else {
      DataInt::shallowMorph(&slot(), dataType, 0);
      _slotType = dataType;
    }
    return;
  }
  if (_slotType != DataBufferEnum) {
    DataInt::shallowMorph(&slot(), DataBufferEnum, 0);
    _slotType = DataBufferEnum;
  }
  static_cast<DataBuffer&>(slot()).setDataBufferType(dataType);
}

}  // namespace data
}  // namespace orvo
