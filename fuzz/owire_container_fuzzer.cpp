// Fuzz target for every container and entry decoder. The first input byte
// chooses the outermost type (FieldList, ElementList, FilterList, Vector,
// Map, Series, Array); the rest is the encoded container. The walker decodes
// every header, set definition, summary, entry, key and value it finds, and
// prints each value with owireEncodedPrimitiveToString.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "orvo/owire/owire.h"
#include "owire/Walk.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  static const UInt8 kTypes[] = {132, 133, 135, 136, 137, 138, 15};
  const UInt8 type = kTypes[data[0] % sizeof kTypes];
  // A private copy of exactly the input, so that any read past it is seen.
  std::unique_ptr<char[]> bytes(new char[size - 1 ? size - 1 : 1]);
  if (size > 1) std::memcpy(bytes.get(), data + 1, size - 1);
  OwfBuffer buffer{static_cast<UInt32>(size - 1), size > 1 ? bytes.get() : nullptr};
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  if (setDecodeIteratorBuffer(&it, &buffer) != 0) return 0;
  orvo::owire::Walker walker;
  walker.walk(&it, type);
  return 0;
}
