// Raised by orvo through OutOfRangeException::throwOutOfRangeException(), which copies the text and
// never returns.
#ifndef ORVO_COMMON_OUT_OF_RANGE_EXCEPTION_H_
#define ORVO_COMMON_OUT_OF_RANGE_EXCEPTION_H_

#include "orvo/common/Exception.h"

namespace orvo {
namespace common {

class OutOfRangeException : public Exception {
 public:
  using Exception::Exception;

  [[noreturn]] static void throwOutOfRangeException(CommonErrorType type, CommonErrorSeverityType severity,
                                     CommonErrorClassificationType classification,
                                     GeneralExceptionStatus::State state,
                                     GeneralExceptionStatus::StatusCode code,
                                     const ORVO_String& text);
  // The same with the plain numbers the library passes.
  [[noreturn]] static void throwOutOfRangeException(int type, int severity, int classification, int state,
                                     int code, const ORVO_String& text);
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_OUT_OF_RANGE_EXCEPTION_H_
