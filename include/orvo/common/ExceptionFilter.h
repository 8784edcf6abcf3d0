// Crash log for applications. Once installed, SIGSEGV, SIGBUS, SIGFPE,
// SIGILL, SIGTRAP and SIGABRT produce the library's failure report, titled
// "ORVO Exception Handler", naming the event, where it happened and the stack
// trace from there. The report goes to the log file of ORVO_LOG_FILENAME (or
// a generated one) and is then answered like a failed integrity check: with
// ORVO_NO_VERIFY=true the process goes on; with a terminal and the prompt
// enabled a person chooses; otherwise the process ends with status 253.
//
// A handler reports one event and steps aside: the handler that was in place
// before the installation gets the event next (by default the process ends
// with that signal). The library installs nothing by itself.
#ifndef ORVO_COMMON_EXCEPTION_FILTER_H_
#define ORVO_COMMON_EXCEPTION_FILTER_H_

namespace orvo {
namespace common {

// `problem`, which must outlive the installation, is the extra text of each
// report (null for none). `mayContinue` false leaves the person at the
// terminal only the choice to end the process. The calling thread also gets
// an alternate signal stack, so that a stack overflow on it can be reported.
// False if a handler could not be installed.
bool installExceptionFilter(const char* problem = nullptr, bool mayContinue = true);

// The same report, written to the log only: no prompt and no end of the
// process before the event goes on to the earlier handler.
bool installExceptionLogger(const char* problem = nullptr);

// Puts back the handlers that were in place before the installation.
void removeExceptionFilter();

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_EXCEPTION_FILTER_H_
