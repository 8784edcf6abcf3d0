// The stack trace of a failure report.
#ifndef ORVO_DIAGNOSTICS_STACK_TRACE_H_
#define ORVO_DIAGNOSTICS_STACK_TRACE_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace diagnostics {

// One-time set-up of symbol look-up, under its own lock: loads the stack
// unwinder (whose first use allocates) and notes the program's path. Safe on
// any thread; true once the set-up has succeeded.
bool initSymbols();

// Appends "\n\nStack Trace:" and at most 16 frames to the terminated text in
// `buffer`, one line per frame with address, module, function and offset.
// Stops while 512 bytes of `size` are still free. `context` is a ucontext_t*
// where the trace starts, or null for the caller's own place.
void appendStackTrace(char* buffer, common::UInt32 size, const void* context);

// Turns a raw symbol name into the function's qualified name without its
// parameter list ("ns::Class::method"); names that are not mangled are
// copied as they are. The result is cut to `size`.
void readableFunctionName(const char* raw, char* out, common::UInt32 size);

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_STACK_TRACE_H_
