// The status of a response or of a STATUS value: stream state, data state,
// status code and text.
#ifndef ORVO_COMMON_RESP_STATUS_H_
#define ORVO_COMMON_RESP_STATUS_H_

#include "orvo/common/Status.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace common {

class RespStatus : public Status {
 public:
  // Fixed 32-bit enumerations: any number read from the wire is a value.
  enum StreamState : Int32 {
    UnspecifiedStreamState = 0,
    Open = 1,
    NonStreaming = 2,
    ClosedRecover = 3,
    Closed = 4,
    Redirected = 5
  };
  enum DataState : Int32 { NoChange = 0, Ok = 1, Suspect = 2 };

  RespStatus();
  RespStatus(const RespStatus& other);
  RespStatus& operator=(const RespStatus& other);
  ~RespStatus() override = default;

  StreamState getStreamState() const { return _streamState; }
  void setStreamState(StreamState state) { _streamState = state; }
  DataState getDataState() const { return _dataState; }
  void setDataState(DataState state) { _dataState = state; }
  UInt8 getStatusCode() const { return _statusCode; }
  void setStatusCode(UInt8 code) { _statusCode = code; }

  // Back to stream state 0, data state Suspect, code 0 and no text.
  void clear();

 private:
  StreamState _streamState;
  DataState _dataState;
  UInt8 _statusCode;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_RESP_STATUS_H_
