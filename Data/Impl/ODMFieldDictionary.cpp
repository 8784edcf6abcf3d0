#include "orvo/odm/ODMFieldDictionary.h"

#include <new>

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ODMDictionaryList.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"

namespace orvo {
namespace odm {

using common::ORVO_String;

ODMFieldDictionary::ODMFieldDictionary()
    : _size(0), _maxFieldId(0), _minNegFieldId(0), _dictId(1) {}

ODMFieldDictionary::~ODMFieldDictionary() = default;

ODMFieldDictionary& ODMFieldDictionary::create() {
  ODMFieldDictionaryInt* dictionary = new (std::nothrow) ODMFieldDictionaryInt();
  if (dictionary == nullptr) {
    internal::raiseIllegalCall(ORVO_String("Failed to create ODMFieldDictionary."));
  }
  ODMDictionaryList::add(dictionary);
  return *dictionary;
}

void ODMFieldDictionary::setVersion(const ORVO_String& version) {
  if (version.empty()) {
    internal::raiseIllegalCall(
        ORVO_String("ODMFieldDictionary::setVersion() -Empty value passed for Version."));
  }
  _version = version;
}

}  // namespace odm
}  // namespace orvo
