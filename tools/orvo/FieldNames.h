// The field dictionary as the command-line tool sees it: names, wire types
// and enumeration displays by field id, with a miss answered by a null rather
// than a failure, since a decoded message may carry ids no dictionary knows.
#ifndef ORVO_TOOLS_ORVO_FIELD_NAMES_H_
#define ORVO_TOOLS_ORVO_FIELD_NAMES_H_

#include <string>

#include "orvo/common/Types.h"

namespace orvo {
namespace odm {
class ODMFieldDictionary;
}  // namespace odm

namespace tool {

class FieldNames {
 public:
  FieldNames() = default;
  explicit FieldNames(const odm::ODMFieldDictionary* dictionary) : _dictionary(dictionary) {}

  bool loaded() const { return _dictionary != nullptr; }

  // Empty when the id is unknown.
  std::string nameOf(common::Int32 fieldId) const;
  // The wire data type code, or 0 when the id is unknown.
  common::UInt8 wireTypeOf(common::Int32 fieldId) const;
  // Field id of an acronym; false when unknown.
  bool idOf(const std::string& name, common::Int32* fieldId) const;
  // Empty when the field has no table or the table no such value.
  std::string displayOf(common::Int32 fieldId, common::Int64 value) const;

 private:
  const odm::ODMFieldDictionary* _dictionary = nullptr;
};

}  // namespace tool
}  // namespace orvo

#endif  // ORVO_TOOLS_ORVO_FIELD_NAMES_H_
