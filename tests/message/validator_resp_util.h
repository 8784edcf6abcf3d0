// Responses built for the validation tests.
#ifndef ORVO_TESTS_MESSAGE_VALIDATOR_RESP_UTIL_H_
#define ORVO_TESTS_MESSAGE_VALIDATOR_RESP_UTIL_H_

#include <memory>

#include "orvo/common/Buffer.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/common/RespStatus.h"
#include "orvo/data/FieldList.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/RespMsg.h"
#include "resp_msg_test_util.h"

namespace orvo {
namespace validator_test {

// A managed response of `respType` in `domain` with nothing set.
class Response {
 public:
  Response(common::UInt8 domain, message::RespMsg::RespType respType) : msg_(true) {
    msg_.setMsgModelType(domain);
    msg_.setRespType(respType);
  }

  Response& status() {
    common::RespStatus status;
    status.setStreamState(common::RespStatus::Open);
    status.setDataState(common::RespStatus::Ok);
    msg_.setRespStatus(status);
    return *this;
  }
  Response& payload() {
    data::FieldList fields(true);
    resp_test::writeFields(fields, {{22, 10}, {25, 11}});
    msg_.setPayload(fields);
    return *this;
  }
  Response& number(common::UInt8 respTypeNum) {
    msg_.setRespTypeNum(respTypeNum);
    return *this;
  }
  Response& indications(common::UInt8 mask) {
    msg_.setIndicationMask(mask);
    return *this;
  }
  Response& qos() {
    msg_.setQualityOfService(common::QualityOfService());
    return *this;
  }
  Response& header() {
    static unsigned char bytes[] = {'h', 'd', 'r'};
    msg_.setHeader(common::Buffer(bytes, 3, 3, false));
    return *this;
  }
  Response& manifest(const message::Manifest& manifest) {
    msg_.setManifest(manifest);
    return *this;
  }
  // Fills an AttribInfo by `fill` and sets it.
  template <class F>
  Response& attrib(F fill) {
    message::AttribInfo info(true);
    fill(info);
    msg_.setAttribInfo(info);
    return *this;
  }
  // Name and service name, as the market domains want them.
  Response& item() {
    return attrib([](message::AttribInfo& info) {
      info.setName("AB.X");
      info.setServiceName("FEED");
    });
  }

  const message::RespMsg& msg() const { return msg_; }
  operator const message::RespMsg&() const { return msg_; }

 private:
  message::RespMsg msg_;
};

// A complete refresh, status or update of a market domain.
inline Response marketRefresh(common::UInt8 domain) {
  Response r(domain, message::RespMsg::RefreshResp);
  r.status().payload().item();
  return r;
}

}  // namespace validator_test
}  // namespace orvo

#endif  // ORVO_TESTS_MESSAGE_VALIDATOR_RESP_UTIL_H_
