// A message in its wire-record form, ready to be encoded or just decoded.
// Made by a create() of the implementation and ended with destroy().
#ifndef ORVO_MESSAGE_ENCODED_MSG_H_
#define ORVO_MESSAGE_ENCODED_MSG_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace message {

class EncodedMsg {
 public:
  EncodedMsg(const EncodedMsg&) = delete;
  EncodedMsg& operator=(const EncodedMsg&) = delete;

  // Message type of the data model (1 response, 2 request, 3 generic).
  virtual common::UInt8 getMsgType() const = 0;
  virtual common::UInt8 getMsgModelType() const = 0;
  // A new message of the same kind; the caller destroys it.
  virtual EncodedMsg* clone() const = 0;
  virtual void destroy() = 0;

 protected:
  EncodedMsg() = default;
  virtual ~EncodedMsg() = default;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_ENCODED_MSG_H_
