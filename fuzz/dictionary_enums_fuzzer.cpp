// Feeds arbitrary bytes to the enum type file reader. Odd first bytes load a
// small field dictionary first, so that acronyms are checked and tables are
// linked as they are read; the field dictionary is then read again, which
// links the tables from their id lists. Every table is walked and every
// definition's displays looked up, so a table left half-built would show.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "Data/Impl/EnumValToDiplayValTable.h"
#include "Data/Impl/ODMEnumTableInt.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "Data/Impl/ODMFieldDictionaryReader.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"

namespace {

using orvo::common::InvalidUsageException;
using orvo::odm::EnumValToDiplayValTableIter;
using orvo::odm::ODMEnumTableInt;
using orvo::odm::ODMFidDefInt;
using orvo::odm::ODMFieldDictionary;
using orvo::odm::ODMFieldDictionaryInt;
using orvo::odm::ODMFieldDictionaryReader;

const char kFields[] =
    "A \"A\" 1 NULL ENUMERATED 3 ( 3 ) ENUM 1\n"
    "B \"B\" 2 A ENUMERATED 3 ( 3 ) ENUM 1\n"
    "C \"C\" 0 NULL ENUMERATED 3 ( 3 ) ENUM 1\n"
    "NEG \"N\" -5 NULL ENUMERATED 3 ( 3 ) ENUM 1\n"
    "LOW \"L\" -300 NULL INTEGER 5 UINT 2\n"
    "HIGH \"H\" 300 NULL ENUMERATED 3 ( 3 ) ENUM 1\n";

void walkTables(const ODMFieldDictionaryInt& d) {
  for (const ODMEnumTableInt* table : d.enumTables()) {
    EnumValToDiplayValTableIter it(table->enumDisplays());
    long long last = -(1LL << 40);
    for (it.start(); !it.off(); it.forth()) {
      if (it.getDisplayValue() == nullptr || it.getEnumValue() <= last) std::abort();
      last = it.getEnumValue();
    }
  }
}

// Every table a definition points at must be alive.
void lookUpDisplays(const ODMFieldDictionaryInt& d) {
  const long long ids[] = {-300, -5, 0, 1, 2, 300};
  for (long long id : ids) {
    const ODMFidDefInt* def = d.findFidDef(id);
    const ODMEnumTableInt* table = def == nullptr ? nullptr : def->enumTable();
    if (table == nullptr) continue;
    for (long long value = -2; value <= 3; ++value) table->getDisplay(value);
  }
  try {
    d.displayValueFor(1, 1);
  } catch (const InvalidUsageException&) {
  }
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
  const bool fieldsFirst = size != 0 && (data[0] & 1) != 0;
  if (fieldsFirst) {
    ODMFieldDictionaryReader::readFieldDictionaryBytes(d, kFields, std::strlen(kFields));
  }
  try {
    ODMFieldDictionaryReader::readEnumTypeDefBytes(d, reinterpret_cast<const char*>(data), size);
  } catch (const InvalidUsageException&) {
  }
  walkTables(d);
  lookUpDisplays(d);
  try {
    ODMFieldDictionaryReader::readFieldDictionaryBytes(d, kFields, std::strlen(kFields));
  } catch (const InvalidUsageException&) {
    // the enum file's DictionaryId may disagree with none, but is not checked here
  }
  lookUpDisplays(d);
  return 0;
}
