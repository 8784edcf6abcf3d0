// Helpers shared by the validation tests.
#ifndef ORVO_TESTS_MESSAGE_VALIDATOR_TEST_UTIL_H_
#define ORVO_TESTS_MESSAGE_VALIDATOR_TEST_UTIL_H_

#include <initializer_list>
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace validator_test {

// Model types of the domains.
enum Domain : common::UInt8 {
  kLogin = 1,
  kDirectory = 4,
  kDictionary = 5,
  kMarketPrice = 6,
  kMarketByOrder = 7,
  kMarketByPrice = 8,
  kMarketMaker = 9,
  kSymbolList = 10
};

// What validateMsg made of a message: the status and the text handed back,
// or the text of the failure (status -1). State and status code of the
// failure are checked on the way.
struct Outcome {
  int status = -1;
  std::string text;
  std::string failure;
};

template <class M>
Outcome validate(const M& msg, bool withText = true, bool isReissue = false) {
  Outcome outcome;
  common::ORVO_String text("caller's start|");
  try {
    outcome.status = msg.validateMsg(withText ? &text : nullptr, isReissue);
  } catch (const common::InvalidUsageException& e) {
    EXPECT_EQ(1, static_cast<int>(e.getStatus().getState()));
    EXPECT_EQ(1, static_cast<int>(e.getStatus().getStatusCode()));
    outcome.failure = e.what();
    EXPECT_EQ("caller's start|", std::string(text.c_str()));
    return outcome;
  }
  // What the validation hands back comes after what the caller had.
  const std::string all(text.c_str(), text.length());
  EXPECT_EQ(0u, all.rfind("caller's start|", 0));
  outcome.text = all.substr(std::string("caller's start|").size());
  return outcome;
}

// A collector of the three texts, as validateMsg builds it.
class Collector {
 public:
  explicit Collector(bool textWanted = true) : info_(&texts_) {
    texts_.resize(3);
    if (textWanted) info_.setFlags(message::TextMessageInfo::TextWantedFlag);
  }
  message::TextMessageInfo& info() { return info_; }
  std::string errors() const { return info_.errors().c_str(); }
  std::string warnings() const { return info_.warnings().c_str(); }
  std::string information() const { return info_.information().c_str(); }

 private:
  common::ORVO_Vector<common::ORVO_String> texts_;
  message::TextMessageInfo info_;
};

inline common::ORVO_Vector<common::UInt8> list(std::initializer_list<int> values) {
  common::ORVO_Vector<common::UInt8> bits;
  for (int value : values) bits.push_back(static_cast<common::UInt8>(value));
  return bits;
}

}  // namespace validator_test
}  // namespace orvo

#endif  // ORVO_TESTS_MESSAGE_VALIDATOR_TEST_UTIL_H_
