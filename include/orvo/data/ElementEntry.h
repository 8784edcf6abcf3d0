// One element of an ElementList: a name, a type and the data. Unlike a
// field, an element always carries its type, so getData never needs one.
#ifndef ORVO_DATA_ELEMENT_ENTRY_H_
#define ORVO_DATA_ELEMENT_ENTRY_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/DataEntry.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class ElementListInt;
}  // namespace internal

namespace data {

class ElementEntry : public DataEntry {
 public:
  explicit ElementEntry(bool managed);
  ~ElementEntry() override;

  const common::ORVO_String& getName() const;
  // A managed entry copies the name; an unmanaged one points at the
  // caller's string, which must outlive the entry. Empty names fail.
  void setName(const common::ORVO_String& name);
  // 1 while a set-defined element is being read, else 0.
  common::UInt8 getContentMask() const { return _contentMask; }

  const common::Data& getData() const override;
  void setData(const common::Data& data) override;
  void clear() override;

 private:
  friend class orvo::internal::ElementListInt;

  mutable common::ORVO_String _nameStr;
  OwfElementEntry _elementEntry;
  common::UInt8 _contentMask;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_ENTRY_H_
