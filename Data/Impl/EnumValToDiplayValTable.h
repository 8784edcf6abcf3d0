// The display texts of the values of one enumeration, stored by value.
//
// Values sit in two slot arrays indexed by the value (by minus the value for
// negative ones), so a lookup is one indexed load; slots without a display
// are null. The arrays grow only as far as the number of displays stored
// warrants: a value that would stretch them further goes to a side map
// instead, so that a file of many one-value tables with large values cannot
// make each table allocate thousands of slots. Real tables, whose values
// run more or less densely from 0, live entirely in the arrays. The table
// owns its display strings and makes them in blocks that double as it fills
// (8, 16, 32, ...): a file of thousands of tables would otherwise make one
// allocation per value. A display that a later one for the same value
// replaces stays in its block until the table goes.
#ifndef ORVO_DATA_IMPL_ENUM_VAL_TO_DIPLAY_VAL_TABLE_H_
#define ORVO_DATA_IMPL_ENUM_VAL_TO_DIPLAY_VAL_TABLE_H_

#include <map>
#include <memory>
#include <vector>

#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

class EnumValToDiplayValTable {
 public:
  // No value beyond this (either sign) takes a slot.
  static constexpr common::Int64 kDenseLimit = 65535;
  // Slots any table may take, and more for each display it holds.
  static constexpr common::UInt32 kFreeSlots = 1024;
  static constexpr common::UInt32 kSlotsPerDisplay = 16;

  EnumValToDiplayValTable();
  EnumValToDiplayValTable(const EnumValToDiplayValTable&) = delete;
  EnumValToDiplayValTable& operator=(const EnumValToDiplayValTable&) = delete;
  virtual ~EnumValToDiplayValTable();

  // Stores a copy of `display` for `value`; the last display given for a
  // value wins.
  void setDisplay(common::Int64 value, const common::ORVO_String& display);
  void setDisplay(common::Int64 value, const char* text, common::UInt32 length);
  // The display of `value`, or null.
  common::ORVO_String* getDisplay(common::Int64 value) const;

  // Highest value and lowest negative value held in the slot arrays.
  common::Int64 maxValue() const { return _maxValue; }
  common::Int64 minValue() const { return _minValue; }
  const common::ORVO_Vector<common::ORVO_String*>& displays() const { return _displays; }
  const common::ORVO_Vector<common::ORVO_String*>& negDisplays() const { return _negDisplays; }
  // Values outside the slot arrays: below the negative ones, above the others.
  const std::map<common::Int64, common::ORVO_String*>& farDisplays() const { return _farDisplays; }

 private:
  static constexpr common::UInt32 kFirstBlockSize = 8;

  common::ORVO_String* makeDisplay(const char* text, common::UInt32 length);
  bool mayHoldSlots(common::UInt32 slots) const;
  // Slot for `value` in `slots` (index `index`), grown to `grownSize` when
  // the budget allows; null when the value must go to the side map.
  common::ORVO_String** slotFor(common::ORVO_Vector<common::ORVO_String*>& slots,
                                common::UInt32 index, common::UInt32 grownSize, bool negative);
  // Moves the side-map values from `lowest` to `highest`, which grown arrays
  // now cover, into their slots.
  void takeOverFarValues(common::Int64 lowest, common::Int64 highest);

  common::Int64 _maxValue;
  common::Int64 _minValue;
  common::ORVO_Vector<common::ORVO_String*> _displays;     // slot = value
  common::ORVO_Vector<common::ORVO_String*> _negDisplays;  // slot = -value; slot 0 unused
  std::map<common::Int64, common::ORVO_String*> _farDisplays;
  common::UInt32 _displayCount;
  std::vector<std::unique_ptr<common::ORVO_String[]>> _displayBlocks;
  common::UInt32 _lastBlockSize;
  common::UInt32 _lastBlockUsed;
};

// Walks the values of a table in ascending order, skipping values without a
// display: side-map values below the slots, the slots, side-map values above.
class EnumValToDiplayValTableIter {
 public:
  explicit EnumValToDiplayValTableIter(const EnumValToDiplayValTable& table);
  virtual ~EnumValToDiplayValTableIter();

  void start();
  bool off() const;
  void forth();
  common::Int64 getEnumValue() const;
  common::ORVO_String* getDisplayValue() const;

 private:
  enum Phase { FarBelow, Slots, FarAbove, Done };

  common::ORVO_String* slotAt(common::Int32 position) const;
  // Moves on from the current place to the next value with a display.
  void settle();

  const EnumValToDiplayValTable* _table;
  Phase _phase;
  // In the slots: 0 or more is the slot of the non-negative array; a
  // negative p is value p + 1, in slot -(p + 1) of the negative array.
  common::Int32 _position;
  std::map<common::Int64, common::ORVO_String*>::const_iterator _far;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ENUM_VAL_TO_DIPLAY_VAL_TABLE_H_
