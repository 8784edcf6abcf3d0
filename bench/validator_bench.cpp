// Cost of validateMsg on responses: a clean refresh, one that draws
// warnings, and one that fails.
#include <benchmark/benchmark.h>

#include "orvo/common/Buffer.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/RespStatus.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListWriteIterator.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/RespMsg.h"

namespace {

using orvo::common::ORVO_String;
using orvo::message::AttribInfo;
using orvo::message::RespMsg;

constexpr orvo::common::UInt8 kMarketPrice = 6;

void fillRefresh(RespMsg& msg, orvo::data::FieldList& payload) {
  orvo::data::FieldListWriteIterator writer;
  writer.start(payload, orvo::data::FieldListWriteIterator::StandardDataFlag);
  orvo::data::DataBuffer value(false);
  value.setInt(1200);
  orvo::data::FieldEntry entry(false);
  entry.setFieldID(22);
  entry.setData(value);
  writer.bind(entry);
  writer.complete();

  AttribInfo info(true);
  info.setName("AB.X");
  info.setNameType(1);
  info.setServiceName("FEED");
  orvo::common::RespStatus status;
  status.setStreamState(orvo::common::RespStatus::Open);
  msg.setMsgModelType(kMarketPrice);
  msg.setRespType(RespMsg::RefreshResp);
  msg.setRespStatus(status);
  msg.setAttribInfo(info);
  msg.setPayload(payload);
}

void BM_ValidRefresh(benchmark::State& state) {
  RespMsg msg(true);
  orvo::data::FieldList payload(true);
  fillRefresh(msg, payload);
  const bool withText = state.range(0) != 0;
  for (auto _ : state) {
    ORVO_String text;
    benchmark::DoNotOptimize(msg.validateMsg(withText ? &text : nullptr, false));
  }
}
BENCHMARK(BM_ValidRefresh)->Arg(0)->Arg(1);

void BM_RefreshWithWarnings(benchmark::State& state) {
  RespMsg msg(true);
  orvo::data::FieldList payload(true);
  fillRefresh(msg, payload);
  AttribInfo info(true);
  info.setName("AB.X");
  info.setServiceID(3);
  info.setID(4);
  info.setDataMask(2);
  msg.setAttribInfo(info);
  unsigned char header[] = {'h'};
  msg.setHeader(orvo::common::Buffer(header, 1, 1, false));
  for (auto _ : state) {
    ORVO_String text;
    benchmark::DoNotOptimize(msg.validateMsg(&text, false));
    benchmark::DoNotOptimize(text.length());
  }
}
BENCHMARK(BM_RefreshWithWarnings);

void BM_FailingUpdate(benchmark::State& state) {
  RespMsg msg(true);
  msg.setMsgModelType(7);
  msg.setRespType(RespMsg::UpdateResp);
  for (auto _ : state) {
    try {
      msg.validateMsg(nullptr, false);
    } catch (const orvo::common::InvalidUsageException& e) {
      benchmark::DoNotOptimize(e.what());
    }
  }
}
BENCHMARK(BM_FailingUpdate);

}  // namespace

BENCHMARK_MAIN();
