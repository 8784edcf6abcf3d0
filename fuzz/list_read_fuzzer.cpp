// Feeds arbitrary bytes to FieldList and ElementList as their encoded form
// and reads everything a caller could: header getters, every entry through
// a read iterator, each value through the getters of its type, and find.
// The library may refuse the bytes with its exceptions; it may not crash or
// read outside them. When the first byte's high bit is set, the next bytes
// describe set definitions that the lists decode with, as an enclosing
// container would hand them over.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Data/Impl/ElementListInt.h"
#include "Data/Impl/FieldListInt.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/Exception.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/ElementListReadIterator.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListReadIterator.h"

namespace {

using orvo::common::Buffer;
using orvo::common::Data;
using orvo::data::DataBuffer;

// Each getter on its own, so that one refusal does not hide the others.
template <class F>
void tolerate(F call) {
  try {
    call();
  } catch (const orvo::common::Exception&) {
  }
}

void readValue(const Data& data) {
  tolerate([&] { data.isBlank(); });
  if (data.getDataType() != orvo::data::DataBufferEnum) return;
  const DataBuffer& v = static_cast<const DataBuffer&>(data);
  tolerate([&] { v.getBuffer(); });
  tolerate([&] { v.getInt(); });
  tolerate([&] { v.getUInt(); });
  tolerate([&] { v.getDouble(); });
  tolerate([&] { v.getReal(); });
  tolerate([&] { v.getDateTime(); });
}

// Reads nested lists too, down to a small depth.
void readFieldList(const orvo::data::FieldList& list, std::uint8_t typeSeed, int depth);
void readElementList(const orvo::data::ElementList& list, int depth);

void readNested(const Data& data, std::uint8_t typeSeed, int depth) {
  if (depth > 3) return;
  if (data.getDataType() == orvo::data::FieldListEnum) {
    readFieldList(static_cast<const orvo::data::FieldList&>(data), typeSeed, depth + 1);
  } else if (data.getDataType() == orvo::data::ElementListEnum) {
    readElementList(static_cast<const orvo::data::ElementList&>(data), depth + 1);
  } else {
    readValue(data);
  }
}

void readFieldList(const orvo::data::FieldList& list, std::uint8_t typeSeed, int depth) {
  tolerate([&] { list.getStandardDataCount(); });
  tolerate([&] { list.getInfoDictID(); });
  tolerate([&] {
    orvo::data::FieldListReadIterator reader;
    std::uint8_t type = typeSeed;
    for (reader.start(list); !reader.off(); reader.forth()) {
      // A standard field's type comes from the caller; any code will do.
      type = static_cast<std::uint8_t>(type * 31 + 7);
      const std::uint8_t asked = (type & 1) ? orvo::data::FieldListEnum : type;
      tolerate([&] { readNested(reader.value().getData(asked), type, depth); });
    }
  });
}

void readElementList(const orvo::data::ElementList& list, int depth) {
  tolerate([&] { list.getElementListNum(); });
  tolerate([&] {
    orvo::data::ElementListReadIterator reader;
    for (reader.start(list); !reader.off(); reader.forth()) {
      reader.value().getName();
      tolerate([&] { readNested(reader.value().getData(), 0, depth); });
    }
  });
}

// Up to eight rows of one field and one element definition, each row's
// type code taken from the input as it stands.
class Definitions {
 public:
  // Consumes: a set id, a row count, then one type code per row.
  std::size_t take(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return size;
    const std::uint8_t setId = data[0] % OWF_MAX_LOCAL_SET_DEFS;
    std::size_t rows = data[1] % 9;
    if (rows > size - 2) rows = size - 2;
    for (std::size_t i = 0; i < rows; ++i) {
      _fieldRows[i] = OwfFieldSetDefEntry{static_cast<Int16>(i), data[2 + i]};
      _elementRows[i] = OwfElementSetDefEntry{OwfBuffer{1, _names + i}, data[2 + i]};
    }
    for (auto& slot : _fields.definitions) slot.setId = OWF_SET_DEF_FREE;
    for (auto& slot : _elements.definitions) slot.setId = OWF_SET_DEF_FREE;
    _fields.definitions[setId] = OwfFieldSetDef{setId, static_cast<UInt8>(rows), _fieldRows};
    _elements.definitions[setId] = OwfElementSetDef{setId, static_cast<UInt8>(rows), _elementRows};
    return 2 + rows;
  }
  OwfLocalFieldSetDefDb* fields() { return &_fields; }
  OwfLocalElementSetDefDb* elements() { return &_elements; }

 private:
  OwfLocalFieldSetDefDb _fields{};
  OwfLocalElementSetDefDb _elements{};
  OwfFieldSetDefEntry _fieldRows[8]{};
  OwfElementSetDefEntry _elementRows[8]{};
  char _names[8] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::uint8_t seed = size > 0 ? data[0] : 0;
  Definitions definitions;
  const bool withDefinitions = (seed & 0x80) != 0;
  if (withDefinitions) {
    const std::size_t used = 1 + definitions.take(data + 1, size - 1);
    data += used;
    size -= used;
  }
  // A copy of exactly `size` bytes, so that any read past them is caught.
  std::vector<unsigned char> bytes(data, data + size);
  const Buffer input(bytes.empty() ? nullptr : bytes.data(), static_cast<int>(size),
                     static_cast<int>(size), false);

  orvo::data::FieldList fields(false);
  fields.setEncodedBuffer(input);
  if (withDefinitions) orvo::internal::FieldListInt::setDefDbInUse(fields, definitions.fields());
  readFieldList(fields, seed, 0);
  orvo::data::FieldEntry found(false);
  tolerate([&] { fields.find(static_cast<short>(seed), orvo::data::IntEnum, found); });

  orvo::data::ElementList elements(false);
  elements.setEncodedBuffer(input);
  if (withDefinitions) {
    orvo::internal::ElementListInt::setDefDbInUse(elements, definitions.elements());
  }
  readElementList(elements, 0);
  orvo::data::ElementEntry named(true);
  tolerate([&] { elements.find(orvo::common::ORVO_String("A"), named); });
  return 0;
}
