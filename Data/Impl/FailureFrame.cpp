#include "Data/Impl/FailureFrame.h"

#include <cstdarg>
#include <cstdio>

#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/OutOfRangeException.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
namespace {

using common::GeneralExceptionStatus;
using common::InvalidUsageException;
using common::OutOfRangeException;

// Texts of the bracket and while forms are limited to this many bytes; a
// longer text is cut, not terminated early.
constexpr int kFormLimit = 256;

ORVO_String formatLimited(const char* format, ...) __attribute__((format(printf, 1, 2)));

ORVO_String formatLimited(const char* format, ...) {
  char text[kFormLimit + 1];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  return ORVO_String(text, kFormLimit, false);
}

}  // namespace

const ORVO_String kPhraseInitializing("initializing");
const ORVO_String kPhraseInitializingEncodeFor("initializing encode for");
const ORVO_String kPhraseEncoding("encoding");
const ORVO_String kPhraseCompletingEncodeFor("completing encode for");
const ORVO_String kPhraseInitializingDecodeFor("initializing decode for");
const ORVO_String kPhraseDecoding("decoding");
const ORVO_String kPhraseCompletingDecodeFor("completing decode for");
const ORVO_String kPhraseForthBeforeStart("forth() called prior to start()");
const ORVO_String kPhraseWhenSetDataFor("when set data for");

void raiseIllegalCall(const ORVO_String& text) {
  InvalidUsageException::throwInvalidUsageException(1, 1, 4, 1, 1, text);
}

void raiseBadValue(const ORVO_String& text) {
  InvalidUsageException::throwInvalidUsageException(1, 1, 4, 2, 1, text);
}

void raiseOutOfRange(const ORVO_String& text) {
  OutOfRangeException::throwOutOfRangeException(4, 1, 4, 1, 1, text);
}

ORVO_String bracketText(const char* text, const char* className, const char* method) {
  return formatLimited("%s in class [%s] in method [%s]", text, className, method);
}

void failMessage(const char* text, const char* className, const char* method) {
  raiseIllegalCall(bracketText(text, className, method));
}

void failMessage(const char* text, const ORVO_String& className, const char* method) {
  failMessage(text, className.c_str(), method);
}

void throwUsage(const char* text, const char* className, const char* method) {
  ORVO_String message;
  message.append(text).append(" in class ").append(className).append(" in method ").append(method);
  raiseIllegalCall(message);
}

void throwUsage(const char* text, const ORVO_String& className, const char* method) {
  throwUsage(text, className.c_str(), method);
}

void failWhile(int ret, const ORVO_String& phrase, const char* noun, const char* className,
               const char* method) {
  raiseIllegalCall(formatLimited("%s while %s %s in class [%s] in method [%s]",
                                 owireRetCodeToString(ret), phrase.c_str(), noun, className,
                                 method));
}

void failReason(const char* literal, int ret) {
  ORVO_String message(literal);
  message.append(owireRetCodeToString(ret));
  raiseIllegalCall(message);
}

ORVO_String valueText(const char* open, unsigned int value, const char* close) {
  ORVO_String message(open);
  message.append(value).append(close);
  return message;
}

}  // namespace internal
}  // namespace orvo
