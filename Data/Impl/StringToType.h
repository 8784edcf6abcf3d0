// The two tables that turn type names of a field dictionary into numbers:
// wire type names (OMMType, alternative spellings included) and feed type
// names (OrvoFeedType). Built once, on first use or at load, whichever comes
// first, and read-only afterwards.
#ifndef ORVO_DATA_IMPL_STRING_TO_TYPE_H_
#define ORVO_DATA_IMPL_STRING_TO_TYPE_H_

#include "Data/Impl/ORTGenHash.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

class StringToType {
 public:
  static constexpr common::UInt32 kOMMTypeBuckets = 109;
  static constexpr common::UInt32 kFieldTypeBuckets = 23;

  // The wire type of `length` bytes of `text`; 0 when the name is unknown.
  static int toOMMType(const char* text, common::UInt32 length);
  // The feed type of `length` bytes of `text`; -1 when the name is unknown.
  static int toFieldType(const char* text, common::UInt32 length);

  // Hash of the type tables: like the name index's, but seeded with the
  // first byte of the text (the terminator when it is empty).
  static common::UInt32 hashTypeName(const common::ORVO_String& name);
  static common::UInt32 hashTypeName(const char* text, common::UInt32 length);

  using Table = ORTGenHash<const common::ORVO_String, int>;
  static const Table* ommTypeTable();
  static const Table* fieldTypeTable();

  StringToType();
  ~StringToType();
  StringToType(const StringToType&) = delete;
  StringToType& operator=(const StringToType&) = delete;

 private:
  static const StringToType& instance();
  static int lookUp(const Table* table, const char* text, common::UInt32 length, int miss);

  static Table* _ommTypes;
  static Table* _fieldTypes;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_STRING_TO_TYPE_H_
