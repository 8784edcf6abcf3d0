// A wire record held under the Msg interface, for code that passes messages
// around as Msg. The object always ends its record with the codec's release,
// so a record handed over without copy must come from owireCopyMsg (or
// std::malloc): handing it over hands over its ownership.
#ifndef ORVO_MESSAGE_OWIRE_UNENCODED_MSG_H_
#define ORVO_MESSAGE_OWIRE_UNENCODED_MSG_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/Msg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace message {

class OwireUnencodedMsg : public common::Msg {
 public:
  // Takes `msg` over, or with `copy` a codec-allocated copy of it.
  OwireUnencodedMsg(OwireMsg* msg, bool copy);
  OwireUnencodedMsg(const OwireUnencodedMsg&) = delete;
  OwireUnencodedMsg& operator=(const OwireUnencodedMsg&) = delete;
  ~OwireUnencodedMsg() override;

  // A new object around a copy of the record; the caller deletes it.
  virtual OwireUnencodedMsg* clone() const;
  OwireMsg* getOwireMsg() const { return _pOwireMsg; }

 private:
  // The record is not encoded here: the buffer is handed back as it stands.
  const common::Buffer& getEncodedBuffer() const override;
  void setEncodedBuffer(const common::Buffer& buffer) override;

  OwireMsg* _pOwireMsg;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_OWIRE_UNENCODED_MSG_H_
