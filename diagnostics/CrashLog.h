// Reports on hardware and software exceptions: the events behind SIGSEGV,
// SIGBUS, SIGFPE, SIGILL, SIGTRAP and SIGABRT, told in the words of the
// exception table (0xC0000005 "Access Violation", ...).
#ifndef ORVO_DIAGNOSTICS_CRASH_LOG_H_
#define ORVO_DIAGNOSTICS_CRASH_LOG_H_

#include <signal.h>

#include <cstdint>

#include "orvo/common/Types.h"

namespace orvo {
namespace diagnostics {

struct ExceptionRecord {
  common::UInt32 code = 0;        // the event, as in the exception table
  const void* address = nullptr;  // the instruction where it happened
  common::UInt32 parameterCount = 0;
  // For an access violation: 0 read or 1 write, then the address accessed.
  std::uintptr_t parameters[2] = {0, 0};
  const void* context = nullptr;  // ucontext_t* of the signal, or null
};

// The text of an exception code; the empty text for codes not in the table.
const char* exceptionName(common::UInt32 code);

// The event behind a signal as the handler received it.
ExceptionRecord exceptionFromSignal(int signal, const siginfo_t* info, const void* context);

// Reports `exception` like a failed check titled "ORVO Exception Handler" and
// answers as the report does (true: break here). Events that are never
// reported answer false at once: misalignment, array bounds, denormal and
// inexact results, underflow, and breakpoints or single steps while a
// debugger is attached.
bool exceptionFilter(const ExceptionRecord* exception, const char* problem, const char* file,
                     common::Int32 line, bool mayContinue);

// Writes the same report, with its stack trace, to the log and returns: no
// prompt, no end of the process, whatever the code.
void logException(const ExceptionRecord* exception, const char* problem, const char* file,
                  common::Int32 line);

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_CRASH_LOG_H_
