// The part every container entry shares: an entry type code, the data the
// entry was given, and one in-place data object (the slot) that is rebuilt as
// whatever class the current entry holds. Walking a container of mixed
// contents therefore allocates nothing: the slot only changes class when the
// data type changes, and is cleared when it does not.
//
// Internal to the library's entries; applications use the entry classes.
#ifndef ORVO_DATA_ENTRY_ATTRIB_H_
#define ORVO_DATA_ENTRY_ATTRIB_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/NoData.h"

namespace orvo {
namespace data {

class EntryAttrib {
 public:
  // The slot starts as an empty NoData and follows `managed`: a managed
  // entry's slot copies what it holds, an unmanaged one views it.
  EntryAttrib(common::UInt8 entryType, bool managed);
  EntryAttrib(const EntryAttrib&) = delete;
  EntryAttrib& operator=(const EntryAttrib&) = delete;
  virtual ~EntryAttrib();

  virtual common::UInt8 getEntryType() const { return _entryType; }
  // Forgets the data given. A managed entry also turns its slot back into a
  // NoData; an unmanaged one keeps the slot's class for the next entry.
  virtual void clear();

  // Whether `data` may be the payload of an entry of this type.
  bool isValidEntryData(const common::Data& data) const;
  // Keeps `data` as the entry's payload: a reference when unmanaged, a copy
  // in the slot when managed (which needs `data` encoded, blank or a value).
  void copyEntryData(const common::Data& data);
  // Makes the slot an object of the class that carries wire type `dataType`.
  void prepareDataSlot(common::UInt8 dataType);

  // The data given by copyEntryData, or null.
  const common::Data* currentData() const { return _currentData; }
  // What the entry holds: the data given or, failing that, the slot.
  const common::Data& heldData() const { return _currentData != nullptr ? *_currentData : slot(); }
  common::Data& slot();
  const common::Data& slot() const;
  common::UInt8 slotType() const { return _slotType; }
  bool isManaged() const { return _managed; }

  // The wire type of `data`: its data type, or the type of the value a
  // DataBuffer holds.
  static common::UInt8 wireTypeOf(const common::Data& data);

 private:
  common::UInt8 _entryType;
  common::UInt8 _slotType;
  bool _managed;
  const common::Data* _currentData;
  // Raw storage so that the slot's class can change in place; it always
  // holds a live object whose Data base sits at its first byte.
  alignas(NoData) unsigned char _dataSlot[sizeof(NoData)];

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ENTRY_ATTRIB_H_
