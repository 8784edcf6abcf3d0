#include "orvo/data/ElementListDef.h"

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ListFamily.h"

namespace orvo {
namespace data {

using common::UInt16;
using common::UInt8;

namespace {

constexpr UInt8 kElementListDefType = 0;
constexpr UInt16 kHighestSetId = 15;

// Copying and freeing rows is shared with the other list definition.
using Rows = internal::OwnedSetDefRows<internal::ElementListFamily>;

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
  Rows(_setDef, _defCapacity, _ownsEntries).copyFrom(other._setDef, other._defCapacity);
  _idSet = other._idSet;
}

void ElementListDef::reserve(UInt16 newCapacity, bool keep) {
  Rows(_setDef, _defCapacity, _ownsEntries).reserve(newCapacity, keep);
}

void ElementListDef::releaseEntries() { Rows(_setDef, _defCapacity, _ownsEntries).release(); }

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
