#include "Data/Impl/EnumValToDiplayValTable.h"

namespace orvo {
namespace odm {

using common::Int32;
using common::Int64;
using common::ORVO_String;
using common::UInt32;

EnumValToDiplayValTable::EnumValToDiplayValTable()
    : _maxValue(0), _minValue(0), _displayCount(0), _lastBlockSize(0), _lastBlockUsed(0) {}

EnumValToDiplayValTable::~EnumValToDiplayValTable() = default;

ORVO_String* EnumValToDiplayValTable::makeDisplay(const char* text, UInt32 length) {
  if (_lastBlockUsed == _lastBlockSize) {
    _lastBlockSize = _lastBlockSize == 0 ? kFirstBlockSize : _lastBlockSize * 2;
    _displayBlocks.emplace_back(new ORVO_String[_lastBlockSize]);
    _lastBlockUsed = 0;
  }
  ORVO_String* display = &_displayBlocks.back()[_lastBlockUsed++];
  display->set(text, length);
  return display;
}

bool EnumValToDiplayValTable::mayHoldSlots(UInt32 slots) const {
  return slots <= kFreeSlots + kSlotsPerDisplay * _displayCount;
}

ORVO_String** EnumValToDiplayValTable::slotFor(common::ORVO_Vector<ORVO_String*>& slots,
                                               UInt32 index, UInt32 grownSize, bool negative) {
  if (index < slots.size()) return &slots[index];
  const UInt32 total = grownSize + (negative ? _displays.size() : _negDisplays.size());
  if (!mayHoldSlots(total)) return nullptr;
  const UInt32 oldSize = slots.size();
  slots.resize(grownSize);
  // The newly covered values: oldSize .. grownSize - 1, negated for the
  // negative array (whose slot 0 holds no value).
  const Int64 first = oldSize == 0 && negative ? 1 : oldSize;
  const Int64 last = Int64(grownSize) - 1;
  if (negative) {
    takeOverFarValues(-last, -first);
  } else {
    takeOverFarValues(first, last);
  }
  return &slots[index];
}

void EnumValToDiplayValTable::takeOverFarValues(Int64 lowest, Int64 highest) {
  auto far = _farDisplays.lower_bound(lowest);
  while (far != _farDisplays.end() && far->first <= highest) {
    const Int64 value = far->first;
    if (value >= 0) {
      _displays[UInt32(value)] = far->second;
      if (value > _maxValue) _maxValue = value;
    } else {
      _negDisplays[UInt32(-value)] = far->second;
      if (value < _minValue) _minValue = value;
    }
    far = _farDisplays.erase(far);
  }
}

void EnumValToDiplayValTable::setDisplay(Int64 value, const ORVO_String& display) {
  setDisplay(value, display.data(), display.length());
}

void EnumValToDiplayValTable::setDisplay(Int64 value, const char* text, UInt32 length) {
  ORVO_String* display = makeDisplay(text, length);
  ++_displayCount;
  ORVO_String** slot = nullptr;
  if (value >= 0 && value <= kDenseLimit) {
    // Grows by value - max + 1, which leaves spare null slots behind the
    // highest value.
    const UInt32 grown = _displays.size() + UInt32(value >= _maxValue ? value - _maxValue + 1 : 0);
    slot = slotFor(_displays, UInt32(value), grown, false);
    if (slot != nullptr && value > _maxValue) _maxValue = value;
  } else if (value < 0 && value >= -kDenseLimit) {
    slot = slotFor(_negDisplays, UInt32(-value), UInt32(-value) + 1, true);
    if (slot != nullptr && value < _minValue) _minValue = value;
  }
  if (slot != nullptr) {
    *slot = display;
  } else {
    _farDisplays[value] = display;
  }
}

ORVO_String* EnumValToDiplayValTable::getDisplay(Int64 value) const {
  if (value >= 0 && value < Int64(_displays.size())) return _displays[UInt32(value)];
  if (value < 0 && -value < Int64(_negDisplays.size())) return _negDisplays[UInt32(-value)];
  const auto far = _farDisplays.find(value);
  return far == _farDisplays.end() ? nullptr : far->second;
}

EnumValToDiplayValTableIter::EnumValToDiplayValTableIter(const EnumValToDiplayValTable& table)
    : _table(&table), _phase(Done), _position(0), _far(table.farDisplays().end()) {}

EnumValToDiplayValTableIter::~EnumValToDiplayValTableIter() = default;

ORVO_String* EnumValToDiplayValTableIter::slotAt(Int32 position) const {
  if (position >= 0) {
    const auto& displays = _table->displays();
    return UInt32(position) < displays.size() ? displays[UInt32(position)] : nullptr;
  }
  const UInt32 slot = UInt32(-(position + 1));
  const auto& negDisplays = _table->negDisplays();
  return slot < negDisplays.size() ? negDisplays[slot] : nullptr;
}

void EnumValToDiplayValTableIter::settle() {
  const auto& far = _table->farDisplays();
  for (;;) {
    switch (_phase) {
      case FarBelow:
        if (_far != far.end() && _far->first < 0) return;
        _phase = Slots;
        _position = -Int32(_table->negDisplays().size());
        break;
      case Slots:
        while (_position <= _table->maxValue() && slotAt(_position) == nullptr) ++_position;
        if (_position <= _table->maxValue()) return;
        _phase = FarAbove;
        _far = far.lower_bound(0);
        break;
      case FarAbove:
        if (_far == far.end()) _phase = Done;
        return;
      case Done:
        return;
    }
  }
}

void EnumValToDiplayValTableIter::start() {
  _phase = FarBelow;
  _far = _table->farDisplays().begin();
  settle();
}

bool EnumValToDiplayValTableIter::off() const { return _phase == Done; }

void EnumValToDiplayValTableIter::forth() {
  if (_phase == Slots) {
    ++_position;
  } else if (_phase != Done) {
    ++_far;
  }
  settle();
}

Int64 EnumValToDiplayValTableIter::getEnumValue() const {
  if (_phase == FarBelow || _phase == FarAbove) return _far->first;
  return _position >= 0 ? _position : _position + 1;
}

ORVO_String* EnumValToDiplayValTableIter::getDisplayValue() const {
  if (_phase == FarBelow || _phase == FarAbove) return _far->second;
  return _phase == Slots ? slotAt(_position) : nullptr;
}

}  // namespace odm
}  // namespace orvo
