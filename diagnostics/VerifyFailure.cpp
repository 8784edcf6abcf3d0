#include "orvo/common/VerifyFailure.h"

#include <new>

namespace orvo {
namespace common {

VerifyFailure::VerifyFailure(const char* report, std::size_t length) noexcept {
  if (report == nullptr) return;
  try {
    _report = std::make_shared<const std::string>(report, length);
  } catch (const std::bad_alloc&) {
  }
}

const char* VerifyFailure::what() const noexcept { return _report ? _report->c_str() : ""; }

std::size_t VerifyFailure::getLength() const noexcept { return _report ? _report->size() : 0; }

}  // namespace common
}  // namespace orvo
