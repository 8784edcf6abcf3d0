#include "orvo/data/FieldListDef.h"

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ListFamily.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;

namespace {
constexpr UInt8 kFieldListDefType = 1;
constexpr UInt16 kHighestSetId = 15;

// Copying and freeing rows is shared with the other list definition.
using Rows = internal::OwnedSetDefRows<internal::FieldListFamily>;
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
  Rows(_setDef, _defCapacity, _ownsEntries).copyFrom(other._setDef, other._defCapacity);
  _idSet = other._idSet;
}

void FieldListDef::reserve(UInt16 newCapacity, bool keep) {
  Rows(_setDef, _defCapacity, _ownsEntries).reserve(newCapacity, keep);
}

void FieldListDef::releaseEntries() { Rows(_setDef, _defCapacity, _ownsEntries).release(); }

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
