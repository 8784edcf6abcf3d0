// Base of the message classes: message type, model type, hint and
// indication masks on top of Data. A message is never blank.
#ifndef ORVO_COMMON_MSG_H_
#define ORVO_COMMON_MSG_H_

#include "orvo/common/Data.h"

namespace orvo {
namespace common {

class Msg : public Data {
 public:
  enum MsgTypeEnum {
    RespMsgEnum = 1,
    ReqMsgEnum = 2,
    GenericMsgEnum = 3,
    PostMsgEnum = 4,
    AckMsgEnum = 5
  };

  explicit Msg(bool managed);

  bool isBlank() const override { return false; }
  // Zeroes the hint and indication masks only.
  void clear() override;

  virtual UInt8 getMsgType() const { return _msgType; }
  virtual UInt8 getMsgModelType() const { return _msgModelType; }
  virtual UInt8 getHintMask() const { return _hintMask; }
  virtual UInt8 getIndicationMask() const { return _indicationMask; }

  void setMsgModelType(UInt8 modelType) { _msgModelType = modelType; }
  void setIndicationMask(UInt8 mask) { _indicationMask = mask; }

 protected:
  // Copies the masks, the types, the managed flag and the version.
  Msg& operator=(const Msg& other);

  UInt8 _hintMask;
  UInt8 _indicationMask;
  UInt8 _msgType;
  UInt8 _msgModelType;
  bool _msgManaged;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_MSG_H_
