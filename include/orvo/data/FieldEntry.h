// One field of a FieldList: a field id and its data. On the reading side
// the data is a view into the list's bytes, rebuilt for each entry; on the
// writing side it is what setData was given (a copy when managed).
#ifndef ORVO_DATA_FIELD_ENTRY_H_
#define ORVO_DATA_FIELD_ENTRY_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/DataEntry.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class FieldListInt;
}  // namespace internal

namespace data {

class FieldEntry : public DataEntry {
 public:
  explicit FieldEntry(bool managed);
  ~FieldEntry() override;

  short getFieldID() const { return _fieldEntry.fieldId; }
  void setFieldID(short fieldId) { _fieldEntry.fieldId = fieldId; }
  // 1 when the entry's data type is known (a set-defined field), else 0.
  common::UInt8 getContentMask() const { return _contentMask; }

  // The data of a field whose type is known; fails for a standard field.
  const common::Data& getData() const override;
  // The data read as `dataType`, for a standard field whose type the caller
  // knows (from a dictionary).
  const common::Data& getData(common::UInt8 dataType) const;
  void setData(const common::Data& data) override;
  void clear() override;

 private:
  friend class orvo::internal::FieldListInt;

  const common::Data& dataOfEntry() const;

  common::UInt8 _contentMask;
  OwfFieldEntry _fieldEntry;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_ENTRY_H_
