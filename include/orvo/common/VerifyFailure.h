// Raised by a failed integrity check of the library while checks are switched
// off (setUseOrvoVerify(false)), after the failure report has been written to
// its log. what() is the whole report text, the same text the log received
// followed by the sentence naming the log file when one was written.
#ifndef ORVO_COMMON_VERIFY_FAILURE_H_
#define ORVO_COMMON_VERIFY_FAILURE_H_

#include <cstddef>
#include <exception>
#include <memory>
#include <string>

namespace orvo {
namespace common {

class VerifyFailure : public std::exception {
 public:
  // Copies `length` bytes of `report`. Never throws: without memory for the
  // copy the text is empty.
  VerifyFailure(const char* report, std::size_t length) noexcept;

  const char* what() const noexcept override;
  std::size_t getLength() const noexcept;

 private:
  // Shared so that copying the exception never throws.
  std::shared_ptr<const std::string> _report;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_VERIFY_FAILURE_H_
