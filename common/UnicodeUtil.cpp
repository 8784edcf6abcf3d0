#include "orvo/common/UnicodeUtil.h"

#include <vector>

namespace orvo {
namespace common {
namespace {

constexpr unsigned int kUtf8CodePage = 65001;

// Decodes one sequence at text[*pos], advancing *pos. Checks the forms that
// RFC 3629 forbids: overlong sequences, surrogates and values above U+10FFFF.
UTF8ConversionResultCodes decodeOne(const unsigned char* text, unsigned int length,
                                    unsigned int* pos, unsigned int* codePoint) {
  const unsigned char lead = text[*pos];
  unsigned int extra;
  unsigned int value;
  unsigned int smallest;
  if (lead < 0x80) {
    *codePoint = lead;
    ++*pos;
    return UTF8ConversionOK;
  } else if ((lead & 0xE0) == 0xC0) {
    extra = 1, value = lead & 0x1F, smallest = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    extra = 2, value = lead & 0x0F, smallest = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    extra = 3, value = lead & 0x07, smallest = 0x10000;
  } else {
    return UTF8SourceIllegal;
  }
  if (length - *pos <= extra) {
    for (unsigned int i = *pos + 1; i < length; ++i) {
      if ((text[i] & 0xC0) != 0x80) return UTF8SourceIllegal;
    }
    return UTF8SourceExhausted;
  }
  for (unsigned int i = 1; i <= extra; ++i) {
    const unsigned char c = text[*pos + i];
    if ((c & 0xC0) != 0x80) return UTF8SourceIllegal;
    value = (value << 6) | (c & 0x3F);
  }
  if (value < smallest) return UTF8Overlong;
  if (value >= 0xD800 && value <= 0xDFFF) return UTF8Surrogate;
  if (value > 0x10FFFF) return UTF8OutOfRange;
  *pos += extra + 1;
  *codePoint = value;
  return UTF8ConversionOK;
}

const char* describe(UTF8ConversionResultCodes code) {
  switch (code) {
    case UTF8SourceExhausted: return "incomplete UTF-8 sequence at byte ";
    case UTF8SourceIllegal: return "illegal UTF-8 byte at byte ";
    case UTF8Overlong: return "overlong UTF-8 sequence at byte ";
    case UTF8Surrogate: return "UTF-8 encoded surrogate at byte ";
    case UTF8OutOfRange: return "code point above U+10FFFF at byte ";
    default: return "UTF-8 conversion failed at byte ";
  }
}

}  // namespace

UTF8ConversionResultCodes UnicodeUtil::verifyUTF8String(const char* text) {
  if (text == nullptr) return UTF8ConversionOK;
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  unsigned int length = 0;
  while (bytes[length] != 0) ++length;
  unsigned int pos = 0;
  unsigned int codePoint;
  while (pos < length) {
    const UTF8ConversionResultCodes code = decodeOne(bytes, length, &pos, &codePoint);
    if (code != UTF8ConversionOK) return code;
  }
  return UTF8ConversionOK;
}

bool UnicodeUtil::convertUTF8ToWideString(const ORVO_String& in, ORVO_WString& out,
                                          ORVO_String& error) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(in.data());
  const unsigned int length = in.length();
  std::vector<unsigned short> units;
  units.reserve(length);
  unsigned int pos = 0;
  while (pos < length) {
    unsigned int codePoint;
    const unsigned int start = pos;
    const UTF8ConversionResultCodes code = decodeOne(bytes, length, &pos, &codePoint);
    if (code != UTF8ConversionOK) {
      out.clear();
      error = describe(code);
      error.append(start);
      return false;
    }
    if (codePoint >= 0x10000) {
      codePoint -= 0x10000;
      units.push_back(static_cast<unsigned short>(0xD800 + (codePoint >> 10)));
      units.push_back(static_cast<unsigned short>(0xDC00 + (codePoint & 0x3FF)));
    } else {
      units.push_back(static_cast<unsigned short>(codePoint));
    }
  }
  out.set(units.data(), static_cast<unsigned int>(units.size()));
  return true;
}

bool UnicodeUtil::convertToWideStringWithCP(const ORVO_String& in, ORVO_WString& out,
                                            ORVO_String& error, unsigned int codePage) {
  if (codePage == kUtf8CodePage) return convertUTF8ToWideString(in, out, error);
  std::vector<unsigned short> units(in.length());
  for (unsigned int i = 0; i < in.length(); ++i) {
    units[i] = static_cast<unsigned char>(in.data()[i]);
  }
  out.set(units.data(), in.length());
  return true;
}

}  // namespace common
}  // namespace orvo
