// UTF-8 checks and conversion to 16-bit wide text.
#ifndef ORVO_COMMON_UNICODE_UTIL_H_
#define ORVO_COMMON_UNICODE_UTIL_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_WString.h"

namespace orvo {
namespace common {

enum UTF8ConversionResultCodes {
  UTF8ConversionOK = 0,
  UTF8SourceExhausted = 1,  // a sequence is cut off by the end of the text
  UTF8SourceIllegal = 2,    // a byte that cannot start or continue a sequence
  UTF8Overlong = 3,         // a sequence longer than its code point needs
  UTF8Surrogate = 4,        // an encoded UTF-16 surrogate
  UTF8OutOfRange = 5        // a code point above U+10FFFF
};

class UnicodeUtil {
 public:
  // Checks a terminated text; UTF8ConversionOK when it is valid UTF-8.
  static UTF8ConversionResultCodes verifyUTF8String(const char* text);

  // Converts UTF-8 to UTF-16. On invalid input answers false, leaves `out`
  // empty and puts a description of the fault into `error`.
  static bool convertUTF8ToWideString(const ORVO_String& in, ORVO_WString& out,
                                      ORVO_String& error);

  // Converts text of a single-byte code page. Code page 0 (the system's) and
  // every other page are read as Latin-1, each byte one character; code page
  // 65001 is UTF-8.
  static bool convertToWideStringWithCP(const ORVO_String& in, ORVO_WString& out,
                                        ORVO_String& error, unsigned int codePage);
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_UNICODE_UTIL_H_
