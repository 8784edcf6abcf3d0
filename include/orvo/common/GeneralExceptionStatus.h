// The status part of an orvo exception: a state, a status code and the
// failure text. Every failure the library raises uses state 1 (bad usage or
// validation) or state 2 (bad data format) and status code 1.
#ifndef ORVO_COMMON_GENERAL_EXCEPTION_STATUS_H_
#define ORVO_COMMON_GENERAL_EXCEPTION_STATUS_H_

#include "orvo/common/ORVO_String.h"

namespace orvo {
namespace common {

class GeneralExceptionStatus {
 public:
  enum State { StateOk = 0, StateInvalidUsage = 1, StateInvalidDataFormat = 2 };
  enum StatusCode { StatusCodeNone = 0, StatusCodeFailure = 1 };

  GeneralExceptionStatus(State state, StatusCode code, const ORVO_String& text)
      : _state(state), _statusCode(code), _statusText(text) {}

  State getState() const { return _state; }
  StatusCode getStatusCode() const { return _statusCode; }
  const ORVO_String& getStatusText() const { return _statusText; }

 private:
  State _state;
  StatusCode _statusCode;
  ORVO_String _statusText;
};

// Classification numbers carried by every exception.
enum CommonErrorType {
  UnknownErrorType = 0,
  InvalidUsageErrorType = 1,
  InvalidArgumentErrorType = 2,
  InvalidStateErrorType = 3,
  OutOfRangeErrorType = 4
};
enum CommonErrorSeverityType { InformationSeverity = 0, ErrorSeverity = 1, FatalSeverity = 2 };
enum CommonErrorClassificationType {
  UnknownClassification = 0,
  InternalClassification = 1,
  ExternalClassification = 2,
  SystemClassification = 3,
  ApplicationClassification = 4
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_GENERAL_EXCEPTION_STATUS_H_
