#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/OutOfRangeException.h"

namespace orvo {
namespace common {
namespace {

template <typename E>
[[noreturn]] void raise(int type, int severity, int classification, int state, int code,
                        const ORVO_String& text) {
  throw E(static_cast<CommonErrorType>(type), static_cast<CommonErrorSeverityType>(severity),
          static_cast<CommonErrorClassificationType>(classification),
          static_cast<GeneralExceptionStatus::State>(state),
          static_cast<GeneralExceptionStatus::StatusCode>(code), text);
}

}  // namespace

void InvalidUsageException::throwInvalidUsageException(
    CommonErrorType type, CommonErrorSeverityType severity,
    CommonErrorClassificationType classification, GeneralExceptionStatus::State state,
    GeneralExceptionStatus::StatusCode code, const ORVO_String& text) {
  raise<InvalidUsageException>(type, severity, classification, state, code, text);
}

void InvalidUsageException::throwInvalidUsageException(int type, int severity,
                                                       int classification, int state, int code,
                                                       const ORVO_String& text) {
  raise<InvalidUsageException>(type, severity, classification, state, code, text);
}

void OutOfRangeException::throwOutOfRangeException(
    CommonErrorType type, CommonErrorSeverityType severity,
    CommonErrorClassificationType classification, GeneralExceptionStatus::State state,
    GeneralExceptionStatus::StatusCode code, const ORVO_String& text) {
  raise<OutOfRangeException>(type, severity, classification, state, code, text);
}

void OutOfRangeException::throwOutOfRangeException(int type, int severity, int classification,
                                                   int state, int code,
                                                   const ORVO_String& text) {
  raise<OutOfRangeException>(type, severity, classification, state, code, text);
}

}  // namespace common
}  // namespace orvo
