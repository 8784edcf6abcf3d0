#include "orvo/message/Manifest.h"

namespace orvo {
namespace message {

using common::Buffer;
using common::UInt16;
using common::UInt32;

Manifest::Manifest(bool managed)
    : _hintMask(0),
      _seqNum(0),
      _filteredCount(0),
      _filteredTime(0),
      _itemGroupP(nullptr),
      _permissionDataP(nullptr),
      _managed(managed) {}

Manifest::Manifest(const Manifest& other) : Manifest(other._managed) { copyFrom(other); }

Manifest& Manifest::operator=(const Manifest& other) {
  if (this == &other) return *this;
  copyFrom(other);
  // A copied buffer is the object's own from now on.
  if (_hintMask & PermissionDataFlag) _permissionDataP = nullptr;
  if (_hintMask & ItemGroupFlag) _itemGroupP = nullptr;
  return *this;
}

Manifest::~Manifest() { clear(); }

Manifest* Manifest::clone() const { return new Manifest(*this); }

void Manifest::clear() {
  _hintMask = 0;
  _seqNum = 0;
  _filteredCount = 0;
  _filteredTime = 0;
  _itemGroupP = nullptr;
  _permissionDataP = nullptr;
  _itemGroup.clear();
  _permissionData.clear();
}

void Manifest::setSeqNum(UInt32 seqNum) {
  _seqNum = seqNum;
  _hintMask |= SeqFlag;
}

void Manifest::setFiltered(UInt16 count, UInt32 time) {
  _filteredCount = count;
  _filteredTime = time;
  _hintMask |= FilteredFlag;
}

const Buffer& Manifest::getItemGroup() const { return viewOf(_itemGroupP, _itemGroup); }

void Manifest::setItemGroup(const Buffer& itemGroup) {
  if (_managed) {
    _itemGroup = itemGroup;
  } else {
    _itemGroupP = &itemGroup;
  }
  _hintMask |= ItemGroupFlag;
}

const Buffer& Manifest::getPermissionData() const {
  return viewOf(_permissionDataP, _permissionData);
}

void Manifest::setPermissionData(const Buffer& permissionData) {
  if (_managed) {
    _permissionData = permissionData;
  } else {
    _permissionDataP = &permissionData;
  }
  _hintMask |= PermissionDataFlag;
}

void Manifest::copyFrom(const Manifest& other) {
  _hintMask = other._hintMask;
  _seqNum = other._seqNum;
  _filteredCount = other._filteredCount;
  _filteredTime = other._filteredTime;
  _managed = other._managed;
  if (_hintMask & PermissionDataFlag) _permissionData = other.getPermissionData();
  if (_hintMask & ItemGroupFlag) _itemGroup = other.getItemGroup();
}

const Buffer& Manifest::viewOf(const Buffer* pointer, const Buffer& own) {
  return pointer != nullptr ? *pointer : own;
}

}  // namespace message
}  // namespace orvo
