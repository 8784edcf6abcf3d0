// Fuzz target for the set-definition database decoders and the set-defined
// rows. Input: one selector byte (field or element definitions), a length
// byte, that many bytes of database, then a list that uses it.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "orvo/owire/owire.h"
#include "owire/Walk.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const bool element = data[0] & 1;
  const bool smallMemory = data[0] & 2;
  size_t dbLen = data[1];
  if (dbLen > size - 2) dbLen = size - 2;
  std::unique_ptr<char[]> dbBytes(new char[dbLen ? dbLen : 1]);
  std::memcpy(dbBytes.get(), data + 2, dbLen);
  const size_t listLen = size - 2 - dbLen;
  std::unique_ptr<char[]> listBytes(new char[listLen ? listLen : 1]);
  std::memcpy(listBytes.get(), data + 2 + dbLen, listLen);

  OwfBuffer dbBuf{static_cast<UInt32>(dbLen), dbLen ? dbBytes.get() : nullptr};
  OwfBuffer listBuf{static_cast<UInt32>(listLen), listLen ? listBytes.get() : nullptr};
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  setDecodeIteratorBuffer(&it, &dbBuf);
  const UInt32 memSize = smallMemory ? 64 : (element ? OWF_ELEMENT_SET_DEF_DB_MEMORY : OWF_FIELD_SET_DEF_DB_MEMORY);
  std::unique_ptr<char[]> memory(new char[memSize]);
  orvo::owire::Walker walker;
  if (element) {
    auto db = std::make_unique<OwfLocalElementSetDefDb>();
    db->memory = OwfBuffer{memSize, memory.get()};
    owireDecodeLocalElementSetDefDb(&it, db.get());
    OwfDecodeIterator lit;
    clearDecodeIterator(&lit);
    setDecodeIteratorBuffer(&lit, &listBuf);
    walker.walk(&lit, 133, nullptr, db.get());
  } else {
    auto db = std::make_unique<OwfLocalFieldSetDefDb>();
    db->memory = OwfBuffer{memSize, memory.get()};
    owireDecodeLocalFieldSetDefDb(&it, db.get());
    OwfDecodeIterator lit;
    clearDecodeIterator(&lit);
    setDecodeIteratorBuffer(&lit, &listBuf);
    walker.walk(&lit, 132, db.get(), nullptr);
  }
  return 0;
}
