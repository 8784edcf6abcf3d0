#include "Data/Impl/ValidatorChecks.h"

namespace orvo {
namespace internal {
namespace {

const MaskRow* findRow(const MaskCheck& check, UInt8 value) {
  for (std::size_t i = 0; i < check.rowCount; ++i) {
    if (check.rows[i].value == value) return &check.rows[i];
  }
  return nullptr;
}

}  // namespace

BitList bitList(std::initializer_list<UInt8> values) {
  BitList list;
  list.reserve(static_cast<unsigned int>(values.size()));
  for (UInt8 value : values) list.push_back(value);
  return list;
}

UInt8 checkList(UInt8 mask, TextMessageInfo& info, const BitList& list, const MaskCheck& check) {
  ORVO_String& target = check.firesWhenSet ? info.warnings() : info.errors();
  const UInt8 fired = check.firesWhenSet ? kWarning : kInvalid;
  UInt8 status = kValid;
  for (UInt8 value : list) {
    const MaskRow* row = findRow(check, value);
    if (row == nullptr) {
      appendNumbered(target, check.invalidOpen, value, check.invalidClose);
      if (!check.invalidKeepsStatus) status = fired;
      continue;
    }
    const bool isSet = (mask & row->bit) != 0;
    if (isSet == check.firesWhenSet) {
      target.append(row->text);
      status = fired;
    }
  }
  return status;
}

}  // namespace internal
}  // namespace orvo
