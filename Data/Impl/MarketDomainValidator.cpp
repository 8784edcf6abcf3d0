#include "Data/Impl/MarketDomainValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/DomainMessageValidatorManager.h"
#include "orvo/message/RespMsg.h"

namespace orvo {
namespace internal {
namespace {

using message::DomainMessageValidatorManager;
using message::RespMsg;

UInt8 responseMsgValidate(const Msg& msg, TextMessageInfo& info, bool isReissue,
                          const MarketDomain& domain) {
  const common::Int32 respType = respTypeOf(msg);
  switch (respType) {
    case RespMsg::RefreshResp:
      return DomainMessageValidatorManager::validateMasksForRefreshMsg(msg, info, isReissue);
    case RespMsg::StatusResp:
      return DomainMessageValidatorManager::validateMasksForStatusMsg(msg, info, isReissue);
    case RespMsg::UpdateResp:
      return domain.validateMasksForUpdateMsg(msg, info, isReissue);
    default:
      appendRespTypeRefusal(info.errors(), domain.respTypePrefix, respType);
      return kInvalid;
  }
}

}  // namespace

UInt8 validateMarketMessage(const Msg& msg, TextMessageInfo& info, bool isReissue,
                            const MarketDomain& domain) {
  switch (msg.getMsgType()) {
    case Msg::RespMsgEnum:
      return responseMsgValidate(msg, info, isReissue, domain);
    case Msg::ReqMsgEnum:
      return DomainMessageValidatorManager::requestMsgValidate(msg, info, isReissue);
    case Msg::PostMsgEnum:
    case Msg::AckMsgEnum:
      return kValid;
    default:
      return refuseMsgType(info, domain.msgTypePrefix, msg.getMsgType());
  }
}

UInt8 refuseEveryUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue, const char* text) {
  appendNumbered(info.errors(), text, respTypeNumOf(msg), " \n");
  DomainMessageValidatorManager::validateMasksForUpdateMsg(msg, info, isReissue);
  return kInvalid;
}

}  // namespace internal
}  // namespace orvo
