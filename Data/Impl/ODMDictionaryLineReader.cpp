#include "Data/Impl/ODMDictionaryLineReader.h"

#include <cstring>

namespace orvo {
namespace odm {

ODMDictionaryLineReader::ODMDictionaryLineReader(std::FILE* file)
    : _file(file), _bytes(nullptr), _bytesLeft(0), _pos(0), _end(0), _heldCarriageReturn(false) {}

ODMDictionaryLineReader::ODMDictionaryLineReader(const char* bytes, std::size_t size)
    : _file(nullptr),
      _bytes(bytes),
      _bytesLeft(bytes == nullptr ? 0 : size),
      _pos(0),
      _end(0),
      _heldCarriageReturn(false) {}

std::size_t ODMDictionaryLineReader::readRaw(char* into, std::size_t room) {
  if (_file != nullptr) return std::fread(into, 1, room, _file);
  const std::size_t n = _bytesLeft < room ? _bytesLeft : room;
  if (n != 0) std::memcpy(into, _bytes, n);
  _bytes += n;
  _bytesLeft -= n;
  return n;
}

std::size_t ODMDictionaryLineReader::dropCarriageReturns(std::size_t total) {
  char* const end = _chunk + total;
  char* read = static_cast<char*>(std::memchr(_chunk, '\r', total));
  if (read == nullptr) return total;
  char* write = read;
  while (read < end) {
    char* next = static_cast<char*>(std::memchr(read, '\r', static_cast<std::size_t>(end - read)));
    char* const spanEnd = next == nullptr ? end : next;
    const std::size_t span = static_cast<std::size_t>(spanEnd - read);
    std::memmove(write, read, span);
    write += span;
    read = spanEnd;
    if (next == nullptr) break;
    if (read + 1 == end) {
      _heldCarriageReturn = true;
      break;
    }
    if (read[1] != '\n') *write++ = '\r';
    ++read;
  }
  return static_cast<std::size_t>(write - _chunk);
}

bool ODMDictionaryLineReader::refill() {
  for (;;) {
    std::size_t held = 0;
    if (_heldCarriageReturn) {
      _chunk[0] = '\r';
      held = 1;
      _heldCarriageReturn = false;
    }
    const std::size_t got = readRaw(_chunk + held, kChunkSize - held);
    _pos = 0;
    if (got == 0) {
      // End of input: a CR held back has no LF behind it and stays.
      _end = held;
      return held != 0;
    }
    _end = dropCarriageReturns(held + got);
    if (_end != 0) return true;
  }
}

bool ODMDictionaryLineReader::readLine(char* line, common::UInt32* length) {
  constexpr std::size_t kMaxLine = kLineBufferSize - 1;
  std::size_t n = 0;
  while (n < kMaxLine) {
    if (_pos == _end && !refill()) break;
    const char* from = _chunk + _pos;
    std::size_t want = _end - _pos;
    if (want > kMaxLine - n) want = kMaxLine - n;
    const char* feed = static_cast<const char*>(std::memchr(from, '\n', want));
    const std::size_t take = feed == nullptr ? want : static_cast<std::size_t>(feed - from) + 1;
    std::memcpy(line + n, from, take);
    n += take;
    _pos += take;
    if (feed != nullptr) break;
  }
  if (n == 0) return false;
  line[n] = '\0';
  *length = static_cast<common::UInt32>(n);
  return true;
}

}  // namespace odm
}  // namespace orvo
