#include "orvo/data/ElementListDef.h"

#include <algorithm>
#include <cstring>

#include "Data/Impl/ElementListDefInt.h"
#include "Data/Impl/FailureFrame.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;

namespace {

constexpr UInt8 kElementListDefType = 0;
constexpr UInt16 kHighestSetId = 15;

// Each row owns its name: length plus one bytes, terminated.
OwfBuffer copyName(const OwfBuffer& name) {
  OwfBuffer copy{name.length, new char[name.length + 1]};
  if (name.length != 0) std::memcpy(copy.data, name.data, name.length);
  copy.data[name.length] = '\0';
  return copy;
}

void copyRows(const OwfElementSetDefEntry* from, UInt8 count, OwfElementSetDefEntry* to) {
  for (UInt8 i = 0; i < count; ++i) {
    to[i].name = copyName(from[i].name);
    to[i].dataType = from[i].dataType;
  }
}

// Frees every name of an owned array; rows never used hold none.
void freeRows(OwfElementSetDefEntry* rows, UInt16 capacity) {
  for (UInt16 i = 0; i < capacity; ++i) delete[] rows[i].name.data;
  delete[] rows;
}

}  // namespace

const common::ORVO_String ElementListDef::_className("ElementListDef");

ElementListDef::ElementListDef()
    : DataDef(kElementListDefType),
      _setDef{0, 0, nullptr},
      _pDefDb(nullptr),
      _idSet(false),
      _defCapacity(0),
      _ownsEntries(false) {}

ElementListDef::ElementListDef(const ElementListDef& other) : ElementListDef() {
  _word = other._word;
  copyFrom(other);
  _pDefDb = other._pDefDb;
}

ElementListDef& ElementListDef::operator=(const ElementListDef& other) {
  if (this == &other) return *this;
  releaseEntries();
  copyFrom(other);
  _defType = kElementListDefType;
  _word = other._word;
  return *this;
}

ElementListDef::~ElementListDef() { releaseEntries(); }

common::DataDef* ElementListDef::clone() const { return new ElementListDef(*this); }

void ElementListDef::clear() {
  releaseEntries();
  _setDef = OwfElementSetDef{0, 0, nullptr};
  _pDefDb = nullptr;
  _idSet = false;
  _defCapacity = 0;
  _word = 0;
  _defType = kElementListDefType;
}

void ElementListDef::setDataDefID(UInt16 id) {
  if (id > kHighestSetId) {
    internal::failMessage("Data definition identifier setId out of range", _className,
                          "setDataDefID");
  }
  _setDef.setId = id;
  _idSet = true;
}

UInt8 ElementListDef::getContentMask() const {
  return (_pDefDb != nullptr || _idSet) ? DataDefIDFlag : 0;
}

void ElementListDef::copyFrom(const ElementListDef& other) {
  const UInt16 capacity = std::max<UInt16>(other._defCapacity, other._setDef.count);
  _setDef.setId = other._setDef.setId;
  _setDef.count = other._setDef.count;
  _setDef.entries = nullptr;
  if (capacity != 0) {
    _setDef.entries = new OwfElementSetDefEntry[capacity]();
    copyRows(other._setDef.entries, other._setDef.count, _setDef.entries);
  }
  _defCapacity = capacity;
  _ownsEntries = _setDef.entries != nullptr;
  _idSet = other._idSet;
}

void ElementListDef::reserve(UInt16 newCapacity, bool keep) {
  if (newCapacity <= _defCapacity) return;
  OwfElementSetDefEntry* fresh = new OwfElementSetDefEntry[newCapacity]();
  if (keep) {
    copyRows(_setDef.entries, _setDef.count, fresh);
  } else {
    _setDef.count = 0;
  }
  if (_ownsEntries) freeRows(_setDef.entries, _defCapacity);
  _setDef.entries = fresh;
  _defCapacity = newCapacity;
  _ownsEntries = true;
}

void ElementListDef::releaseEntries() {
  if (!_ownsEntries) return;
  freeRows(_setDef.entries, _defCapacity);
  _setDef.setId = 0;
  _setDef.count = 0;
  _setDef.entries = nullptr;
  _defCapacity = 0;
  _ownsEntries = false;
}

}  // namespace data

namespace internal {

void ElementListDefInt::viewDecoded(data::ElementListDef& def, const OwfLocalElementSetDefDb* db,
                                    const OwfElementSetDef& slot) {
  def.releaseEntries();
  def._setDef = slot;
  def._pDefDb = db;
  def._defCapacity = 0;
  def._ownsEntries = false;
}

}  // namespace internal
}  // namespace orvo
