// The process-wide switch of integrity checks. While it is on (the default),
// a failed check asks for the interactive report; while it is off, a failed
// check writes its report to the log and raises VerifyFailure instead.
#ifndef ORVO_COMMON_USE_ORVO_VERIFY_H_
#define ORVO_COMMON_USE_ORVO_VERIFY_H_

namespace orvo {
namespace common {

bool getUseOrvoVerify();
void setUseOrvoVerify(bool enabled);

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_USE_ORVO_VERIFY_H_
