#include "orvo/data/DataEntry.h"

namespace orvo {
namespace data {

DataEntry::DataEntry(common::UInt8 entryType, bool managed) : _entryAttrib(entryType, managed) {}

DataEntry::~DataEntry() = default;

common::UInt8 DataEntry::getEntryType() const { return _entryAttrib.getEntryType(); }

}  // namespace data
}  // namespace orvo
