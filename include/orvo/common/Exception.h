// Base of every exception orvo raises. what() is the failure text, byte for
// byte; the accessors give the numbers the failure was raised with.
#ifndef ORVO_COMMON_EXCEPTION_H_
#define ORVO_COMMON_EXCEPTION_H_

#include <exception>

#include "orvo/common/GeneralExceptionStatus.h"

namespace orvo {
namespace common {

class Exception : public std::exception {
 public:
  Exception(CommonErrorType type, CommonErrorSeverityType severity,
            CommonErrorClassificationType classification, GeneralExceptionStatus::State state,
            GeneralExceptionStatus::StatusCode code, const ORVO_String& text)
      : _errorType(type),
        _severity(severity),
        _classification(classification),
        _status(state, code, text) {}
  ~Exception() override = default;

  const char* what() const noexcept override { return _status.getStatusText().c_str(); }

  CommonErrorType getErrorType() const { return _errorType; }
  CommonErrorSeverityType getSeverity() const { return _severity; }
  CommonErrorClassificationType getClassification() const { return _classification; }
  const GeneralExceptionStatus& getStatus() const { return _status; }

 private:
  CommonErrorType _errorType;
  CommonErrorSeverityType _severity;
  CommonErrorClassificationType _classification;
  GeneralExceptionStatus _status;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_EXCEPTION_H_
