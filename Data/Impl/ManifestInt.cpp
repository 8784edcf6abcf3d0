#include "orvo/message/ManifestInt.h"

namespace orvo {
namespace message {

using common::Buffer;
using common::UInt32;
using common::UInt8;

namespace {

// Views the bytes without copying them and makes the view the field's value.
void viewInto(Buffer& own, const Buffer*& pointer, const UInt8* data, int length) {
  own.setFrom(const_cast<UInt8*>(data), length, length, false);
  pointer = &own;
}

}  // namespace

void ManifestInt::setHintMaskInt(UInt32 mask) { _hintMask |= static_cast<UInt8>(mask & 0xFF); }

void ManifestInt::setItemGroupInt(const UInt8* data, int length) {
  viewInto(_itemGroup, _itemGroupP, data, length);
  _hintMask |= ItemGroupFlag;
}

void ManifestInt::setPermissionDataInt(const UInt8* data, int length) {
  viewInto(_permissionData, _permissionDataP, data, length);
  _hintMask |= PermissionDataFlag;
}

}  // namespace message
}  // namespace orvo
