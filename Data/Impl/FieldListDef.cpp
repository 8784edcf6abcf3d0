#include "orvo/data/FieldListDef.h"

#include <algorithm>

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/FieldListDefInt.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;

namespace {
constexpr UInt8 kFieldListDefType = 1;
constexpr UInt16 kHighestSetId = 15;
}  // namespace

const common::ORVO_String FieldListDef::_className("FieldListDef");

FieldListDef::FieldListDef()
    : DataDef(kFieldListDefType),
      _setDef{0, 0, nullptr},
      _pDefDb(nullptr),
      _defCapacity(0),
      _idSet(false),
      _ownsEntries(false) {}

FieldListDef::FieldListDef(const FieldListDef& other) : FieldListDef() {
  _word = other._word;
  copyFrom(other);
  _pDefDb = other._pDefDb;
}

FieldListDef& FieldListDef::operator=(const FieldListDef& other) {
  if (this == &other) return *this;
  releaseEntries();
  copyFrom(other);
  _defType = kFieldListDefType;
  _word = other._word;
  return *this;
}

FieldListDef::~FieldListDef() { releaseEntries(); }

common::DataDef* FieldListDef::clone() const { return new FieldListDef(*this); }

void FieldListDef::clear() {
  releaseEntries();
  _setDef = OwfFieldSetDef{0, 0, nullptr};
  _pDefDb = nullptr;
  _defCapacity = 0;
  _idSet = false;
  _word = 0;
  _defType = kFieldListDefType;
}

void FieldListDef::setDataDefID(UInt16 id) {
  if (id > kHighestSetId) {
    internal::failMessage("Data definition identifier setId out of range", _className,
                          "setDataDefID");
  }
  _setDef.setId = id;
  _idSet = true;
}

UInt8 FieldListDef::getContentMask() const {
  return (_pDefDb != nullptr || _idSet) ? DataDefIDFlag : 0;
}

// Leaves `_pDefDb` to the caller: copies differ on it.
void FieldListDef::copyFrom(const FieldListDef& other) {
  const UInt16 capacity = std::max<UInt16>(other._defCapacity, other._setDef.count);
  _setDef.setId = other._setDef.setId;
  _setDef.count = other._setDef.count;
  _setDef.entries = nullptr;
  if (capacity != 0) {
    _setDef.entries = new OwfFieldSetDefEntry[capacity]();
    std::copy(other._setDef.entries, other._setDef.entries + other._setDef.count, _setDef.entries);
  }
  _defCapacity = capacity;
  _ownsEntries = _setDef.entries != nullptr;
  _idSet = other._idSet;
}

void FieldListDef::reserve(UInt16 newCapacity, bool keep) {
  if (newCapacity <= _defCapacity) return;
  OwfFieldSetDefEntry* fresh = new OwfFieldSetDefEntry[newCapacity]();
  if (keep) {
    std::copy(_setDef.entries, _setDef.entries + _setDef.count, fresh);
  } else {
    _setDef.count = 0;
  }
  if (_ownsEntries) delete[] _setDef.entries;
  _setDef.entries = fresh;
  _defCapacity = newCapacity;
  _ownsEntries = true;
}

// Rows viewed in a decoded container belong to it and are left alone.
void FieldListDef::releaseEntries() {
  if (!_ownsEntries) return;
  delete[] _setDef.entries;
  _setDef.setId = 0;
  _setDef.count = 0;
  _setDef.entries = nullptr;
  _defCapacity = 0;
  _ownsEntries = false;
}

}  // namespace data

namespace internal {

void FieldListDefInt::viewDecoded(data::FieldListDef& def, const OwfLocalFieldSetDefDb* db,
                                  const OwfFieldSetDef& slot) {
  def.releaseEntries();
  def._setDef = slot;
  def._pDefDb = db;
  def._defCapacity = 0;
  def._ownsEntries = false;
}

}  // namespace internal
}  // namespace orvo
