// Raised by orvo through InvalidUsageException::throwInvalidUsageException(), which copies the text and
// never returns.
#ifndef ORVO_COMMON_INVALID_USAGE_EXCEPTION_H_
#define ORVO_COMMON_INVALID_USAGE_EXCEPTION_H_

#include "orvo/common/Exception.h"

namespace orvo {
namespace common {

class InvalidUsageException : public Exception {
 public:
  using Exception::Exception;

  [[noreturn]] static void throwInvalidUsageException(CommonErrorType type, CommonErrorSeverityType severity,
                                     CommonErrorClassificationType classification,
                                     GeneralExceptionStatus::State state,
                                     GeneralExceptionStatus::StatusCode code,
                                     const ORVO_String& text);
  // The same with the plain numbers the library passes.
  [[noreturn]] static void throwInvalidUsageException(int type, int severity, int classification, int state,
                                     int code, const ORVO_String& text);
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_INVALID_USAGE_EXCEPTION_H_
