#include "orvo/common/UseOrvoVerify.h"

#include <atomic>

namespace orvo {
namespace common {
namespace {

std::atomic<bool> useOrvoVerify{true};

}  // namespace

bool getUseOrvoVerify() { return useOrvoVerify.load(std::memory_order_relaxed); }

void setUseOrvoVerify(bool enabled) { useOrvoVerify.store(enabled, std::memory_order_relaxed); }

}  // namespace common
}  // namespace orvo
