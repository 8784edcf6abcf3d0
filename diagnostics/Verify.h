// ORVO_VERIFY: the library's check of its own integrity. A failed check is
// reported (log file, optional terminal prompt, stack trace) and execution
// goes on behind the check unless the report ends the process.
#ifndef ORVO_DIAGNOSTICS_VERIFY_H_
#define ORVO_DIAGNOSTICS_VERIFY_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace diagnostics {

// First half of a failed check: true when the interactive report is wanted.
// With checks switched off (setUseOrvoVerify(false)) it logs the report and
// raises orvo::common::VerifyFailure.
bool verifyCheck(const char* title, const char* problem, const char* file, common::Int32 line,
                 bool withStack, bool mayContinue, const void* context, const char* format, ...)
    __attribute__((format(printf, 8, 9)));

// Second half: builds, logs and presents the report. True asks the caller to
// break into the debugger at the site.
bool verifyReport(const char* title, const char* problem, const char* file, common::Int32 line,
                  bool withStack, bool mayContinue, const void* context, const char* format, ...)
    __attribute__((format(printf, 8, 9)));

// Stops in an attached debugger; does nothing when none is attached.
void debugBreak(const char* file, common::Int32 line);

}  // namespace diagnostics
}  // namespace orvo

#define ORVO_VERIFY_TEXT(cond) "ORVO_VERIFY( " #cond " ) failed"

#define ORVO_VERIFY(cond)                                                                        \
  do {                                                                                           \
    if (!(cond) &&                                                                               \
        ::orvo::diagnostics::verifyCheck("ORVO Internal failure", nullptr, __FILE__, __LINE__,   \
                                         true, true, nullptr, "%s", ORVO_VERIFY_TEXT(cond)) &&   \
        ::orvo::diagnostics::verifyReport("ORVO Internal failure", nullptr, __FILE__, __LINE__,  \
                                          true, true, nullptr, "%s", ORVO_VERIFY_TEXT(cond))) {  \
      ::orvo::diagnostics::debugBreak(__FILE__, __LINE__);                                       \
    }                                                                                            \
  } while (0)

#endif  // ORVO_DIAGNOSTICS_VERIFY_H_
