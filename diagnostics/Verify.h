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

// Second half: builds, logs and presents the report. Ends the process with
// status 253 when nobody can be asked and ORVO_NO_VERIFY is not "true". True
// asks the caller to break into the debugger at the site. `context` is a
// ucontext_t* where the stack trace starts, or null for the current place.
bool verifyReport(const char* title, const char* problem, const char* file, common::Int32 line,
                  bool withStack, bool mayContinue, const void* context, const char* format, ...)
    __attribute__((format(printf, 8, 9)));

// Raises SIGTRAP: an attached debugger stops here; without one the default
// action ends the process with a core image to debug post mortem.
void debugBreak(const char* file, common::Int32 line);

}  // namespace diagnostics
}  // namespace orvo

#define ORVO_VERIFY_TEXT(cond) "ORVO_VERIFY( " #cond " ) failed"

// The condition text goes through "%s" so that a '%' in it is never read as
// a conversion.
#define ORVO_VERIFY(cond)                                                                       \
  do {                                                                                          \
    if (!(cond) &&                                                                              \
        ::orvo::diagnostics::verifyCheck("ORVO Internal failure", nullptr, __FILE__, __LINE__,  \
                                         true, true, nullptr, "%s", ORVO_VERIFY_TEXT(cond)) &&  \
        ::orvo::diagnostics::verifyReport("ORVO Internal failure", nullptr, __FILE__, __LINE__, \
                                          true, true, nullptr, "%s", ORVO_VERIFY_TEXT(cond))) { \
      ::orvo::diagnostics::debugBreak(__FILE__, __LINE__);                                      \
    }                                                                                           \
  } while (0)

#endif  // ORVO_DIAGNOSTICS_VERIFY_H_
