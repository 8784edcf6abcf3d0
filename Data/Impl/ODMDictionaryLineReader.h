// Splits the bytes of a dictionary text file into lines the way the
// dictionary readers see them: as fgets with a 255-byte buffer reads a
// text-mode stream. A line is at most 254 bytes and ends after its line feed
// if one came within that; what remains of a longer line comes back as the
// next line. A carriage return right before a line feed is dropped, so CR LF
// files read like LF files. Other bytes, NUL included, pass unchanged.
//
// The bytes come from an open file, read in chunks into a buffer inside the
// object, or from memory.
#ifndef ORVO_DATA_IMPL_ODM_DICTIONARY_LINE_READER_H_
#define ORVO_DATA_IMPL_ODM_DICTIONARY_LINE_READER_H_

#include <cstddef>
#include <cstdio>

#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

class ODMDictionaryLineReader {
 public:
  static constexpr common::UInt32 kLineBufferSize = 255;

  // Reads `file` from its current position; the caller keeps it open.
  explicit ODMDictionaryLineReader(std::FILE* file);
  ODMDictionaryLineReader(const char* bytes, std::size_t size);
  ODMDictionaryLineReader(const ODMDictionaryLineReader&) = delete;
  ODMDictionaryLineReader& operator=(const ODMDictionaryLineReader&) = delete;

  // Puts the next line, terminated by a zero byte, into `line` (room for
  // kLineBufferSize bytes) and its length into `*length`. False at the end.
  bool readLine(char* line, common::UInt32* length);

 private:
  static constexpr std::size_t kChunkSize = 16384;

  bool refill();
  std::size_t readRaw(char* into, std::size_t room);
  // Drops each CR that stands before an LF in _chunk[0, total) and answers
  // the new length. A CR in the last byte is held back for the next chunk.
  std::size_t dropCarriageReturns(std::size_t total);

  std::FILE* _file;
  const char* _bytes;
  std::size_t _bytesLeft;
  std::size_t _pos;
  std::size_t _end;
  bool _heldCarriageReturn;
  char _chunk[kChunkSize];
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ODM_DICTIONARY_LINE_READER_H_
