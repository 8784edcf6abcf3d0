// Validation keeps no state of its own: threads validating at once get the
// results a single thread gets. Meant to run under ThreadSanitizer too.
#include <atomic>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "gtest/gtest.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/RespMsg.h"
#include "validator_resp_util.h"
#include "validator_test_util.h"

namespace orvo {
namespace {

using message::AttribInfo;
using message::RespMsg;
using validator_test::Outcome;
using validator_test::Response;
using validator_test::validate;
namespace vt = validator_test;

// Builds a fresh message of one kind for each thread.
using Build = std::function<Response()>;

std::vector<Build> scenarios() {
  std::vector<Build> all;
  // Model type 3 has no domain rules: its messages fail.
  const int domains[] = {vt::kLogin,       vt::kDirectory,     vt::kDictionary,
                         vt::kMarketPrice, vt::kMarketByOrder, vt::kMarketByPrice,
                         vt::kMarketMaker, vt::kSymbolList,    3};
  for (int domain : domains) {
    all.push_back([domain] { return vt::marketRefresh(static_cast<common::UInt8>(domain)); });
    all.push_back([domain] {
      Response r(static_cast<common::UInt8>(domain), RespMsg::StatusResp);
      r.status().header().payload().attrib([](AttribInfo& info) {
        info.setName("AB.X");
        info.setID(9);
      });
      return r;
    });
    all.push_back([domain] {
      Response r(static_cast<common::UInt8>(domain), RespMsg::UpdateResp);
      r.payload().number(7).indications(RespMsg::DoNotRippleFlag);
      message::Manifest manifest(true);
      manifest.setSeqNum(3);
      r.manifest(manifest);
      return r;
    });
  }
  return all;
}

bool same(const Outcome& a, const Outcome& b) {
  return a.status == b.status && a.text == b.text && a.failure == b.failure;
}

TEST(ValidatorThreads, ConcurrentValidationMatchesASingleThread) {
  const std::vector<Build> builds = scenarios();
  std::vector<Outcome> expected;
  for (const Build& build : builds) {
    const Response r = build();
    expected.push_back(validate(r.msg(), true));
    expected.push_back(validate(r.msg(), false));
  }

  constexpr int kThreads = 4;
  constexpr int kRounds = 25;
  std::atomic<int> mismatches{0};
  std::atomic<int> checked{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      std::vector<std::unique_ptr<Response>> own;
      for (const Build& build : builds) own.push_back(std::make_unique<Response>(build()));
      for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i < own.size(); ++i) {
          if (!same(expected[2 * i], validate(own[i]->msg(), true))) ++mismatches;
          if (!same(expected[2 * i + 1], validate(own[i]->msg(), false))) ++mismatches;
          checked += 2;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(0, mismatches.load());
  EXPECT_EQ(kThreads * kRounds * static_cast<int>(expected.size()), checked.load());
}

}  // namespace
}  // namespace orvo
