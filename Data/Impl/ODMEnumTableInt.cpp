#include "Data/Impl/ODMEnumTableInt.h"

namespace orvo {
namespace odm {

ODMEnumTableInt::ODMEnumTableInt() : _sizeHint(0) {}

ODMEnumTableInt::~ODMEnumTableInt() = default;

void ODMEnumTableInt::addFid(common::Int64 fieldId) {
  _fids.push_back(fieldId);
  _sizeHint += 2;
}

void ODMEnumTableInt::addDisplay(common::Int64 value, const common::ORVO_String& display) {
  addDisplay(value, display.data(), display.length());
}

void ODMEnumTableInt::addDisplay(common::Int64 value, const char* text, common::UInt32 length) {
  _enumDisplays.setDisplay(value, text, length);
  _sizeHint += length + 2;
}

}  // namespace odm
}  // namespace orvo
