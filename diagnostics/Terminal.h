// Asking a person about a failure, and whether a debugger watches.
#ifndef ORVO_DIAGNOSTICS_TERMINAL_H_
#define ORVO_DIAGNOSTICS_TERMINAL_H_

namespace orvo {
namespace diagnostics {

enum class BoxButtons { Ok, RetryCancel, AbortRetryIgnore };
enum class BoxChoice { Ok, Cancel, Abort, Retry, Ignore };

// The controlling terminal opened for reading and writing, or -1 when the
// process has none. The caller closes it.
int openTerminal();

// Shows `title` and `text` on `fd` and reads answers until one names a
// button: its word or first letter, in any case. End of input closes the
// box: Ok for an Ok box, Cancel or Abort otherwise.
BoxChoice askOnTerminal(int fd, const char* title, const char* text, BoxButtons buttons);

// True when the process is being traced.
bool debuggerAttached();

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_TERMINAL_H_
