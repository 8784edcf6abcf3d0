// Base of every container entry (field, element, map, series, vector,
// filter and array entries). It holds the EntryAttrib that carries the
// entry's payload; each entry class adds its wire record.
#ifndef ORVO_DATA_DATA_ENTRY_H_
#define ORVO_DATA_DATA_ENTRY_H_

#include "orvo/common/Data.h"
#include "orvo/common/Types.h"
#include "orvo/data/EntryAttrib.h"

namespace orvo {
namespace data {

class DataEntry {
 public:
  DataEntry(const DataEntry&) = delete;
  DataEntry& operator=(const DataEntry&) = delete;

  virtual void clear() = 0;
  virtual void setData(const common::Data& data) = 0;
  virtual const common::Data& getData() const = 0;
  virtual common::UInt8 getEntryType() const;

 protected:
  DataEntry(common::UInt8 entryType, bool managed);
  virtual ~DataEntry();

  // Getters hand out the slot after pointing it at the entry's bytes, so the
  // attribute changes under const access.
  mutable EntryAttrib _entryAttrib;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_DATA_ENTRY_H_
