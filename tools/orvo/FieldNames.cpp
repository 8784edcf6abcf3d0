#include "tools/orvo/FieldNames.h"

#include "orvo/common/Exception.h"
#include "orvo/odm/ODMFidDef.h"
#include "orvo/odm/ODMFieldDictionary.h"

namespace orvo {
namespace tool {
namespace {

// The dictionary raises on unknown ids; the tool treats them as unnamed.
const odm::ODMFidDef* findDef(const odm::ODMFieldDictionary* dictionary, common::Int32 fieldId) {
  if (dictionary == nullptr) return nullptr;
  try {
    return &dictionary->getFidDef(fieldId);
  } catch (const common::Exception&) {
    return nullptr;
  }
}

}  // namespace

std::string FieldNames::nameOf(common::Int32 fieldId) const {
  const odm::ODMFidDef* def = findDef(_dictionary, fieldId);
  return def == nullptr ? std::string() : std::string(def->getName().c_str());
}

common::UInt8 FieldNames::wireTypeOf(common::Int32 fieldId) const {
  const odm::ODMFidDef* def = findDef(_dictionary, fieldId);
  return def == nullptr ? 0 : static_cast<common::UInt8>(def->getOMMType());
}

bool FieldNames::idOf(const std::string& name, common::Int32* fieldId) const {
  if (_dictionary == nullptr) return false;
  try {
    *fieldId = static_cast<common::Int32>(_dictionary->getFidDef(name.c_str()).getFieldId());
    return true;
  } catch (const common::Exception&) {
    return false;
  }
}

std::string FieldNames::displayOf(common::Int32 fieldId, common::Int64 value) const {
  if (_dictionary == nullptr) return std::string();
  try {
    return _dictionary->displayValueFor(fieldId, value).c_str();
  } catch (const common::Exception&) {
    return std::string();
  }
}

}  // namespace tool
}  // namespace orvo
