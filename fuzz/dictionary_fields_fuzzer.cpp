// Feeds arbitrary bytes to the field dictionary reader as the contents of a
// field dictionary file. Odd first bytes load a few enumeration tables
// first, so that the dictionary id check and the table links run too. After
// each read the dictionary must be whole: a failed read leaves no
// definitions, a good one leaves every definition findable by id and name.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "Data/Impl/ODMEnumTableInt.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "Data/Impl/ODMFieldDictionaryReader.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"

namespace {

using orvo::common::InvalidUsageException;
using orvo::odm::ODMFidDefInt;
using orvo::odm::ODMFieldDictionary;
using orvo::odm::ODMFieldDictionaryInt;
using orvo::odm::ODMFieldDictionaryReader;

const char kEnums[] =
    "!tag DictionaryId 3\n"
    "A 1\nB 2\nNEG -5\nFAR 70000\n 0 \"zero\"\n 1 #41#\n"
    "C 0\n 2 \"two\"\n";

void check(bool condition) {
  if (!condition) std::abort();
}

void checkWhole(ODMFieldDictionaryInt& d, bool loaded) {
  unsigned long long found = 0;
  for (long long id = d.getMinNegFieldId(); id <= d.getMaxFieldId(); ++id) {
    const ODMFidDefInt* def = d.findFidDef(id);
    if (def == nullptr) continue;
    ++found;
    check(def->getFieldId() == id);
    const orvo::odm::ODMFidDef& byName = d.getFidDef(def->getName().c_str());
    check(byName.getName() == def->getName());
    // The table a definition points at must be alive.
    if (const orvo::odm::ODMEnumTableInt* table = def->enumTable()) {
      for (long long value = -1; value <= 2; ++value) table->getDisplay(value);
    }
  }
  check(found == d.size());
  if (!loaded) check(d.size() == 0);
}

// One dictionary for the process, emptied before each input: making a new
// one per input would cost more than the read itself. Clearing visits every
// slot up to the widest id range ever loaded, so once that range is wide a
// new dictionary is the cheaper start.
ODMFieldDictionaryInt& emptiedDictionary() {
  static ODMFieldDictionaryInt* d = nullptr;
  if (d != nullptr && d->getMaxFieldId() - d->getMinNegFieldId() > 4096) {
    d->destroy();
    d = nullptr;
  }
  if (d == nullptr) d = &static_cast<ODMFieldDictionaryInt&>(ODMFieldDictionary::create());
  d->clearFidDefs();
  d->clearEnumTables();
  return *d;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ODMFieldDictionaryInt& d = emptiedDictionary();
  if (size != 0 && (data[0] & 1) != 0) {
    ODMFieldDictionaryReader::readEnumTypeDefBytes(d, kEnums, std::strlen(kEnums));
  }
  bool loaded = true;
  try {
    ODMFieldDictionaryReader::readFieldDictionaryBytes(d, reinterpret_cast<const char*>(data),
                                                       size);
  } catch (const InvalidUsageException&) {
    loaded = false;
  }
  checkWhole(d, loaded);
  return 0;
}
