#include "orvo/common/ExceptionFilter.h"

#include <signal.h>
#include <sys/mman.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>

#include "diagnostics/CrashLog.h"
#include "diagnostics/StackTrace.h"
#include "diagnostics/Verify.h"

namespace orvo {
namespace common {
namespace {

constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT};
constexpr int kSignalCount = sizeof(kSignals) / sizeof(kSignals[0]);
// A report keeps over 50 KiB of buffers on the stack.
constexpr std::size_t kAlternateStackSize = 256 * 1024;

enum class FilterMode { Report, LogOnly };

struct Installation {
  struct sigaction previous[kSignalCount];
  std::atomic<bool> active[kSignalCount];
  std::atomic<const char*> problem;
  std::atomic<bool> mayContinue;
  std::atomic<FilterMode> mode;
};

Installation installation;
std::mutex installLock;

int slotOf(int signal) {
  for (int slot = 0; slot < kSignalCount; ++slot) {
    if (kSignals[slot] == signal) return slot;
  }
  return -1;
}

// Puts back the earlier handler of `signal`; from then on a fault inside the
// report, and the event itself once passed on, go there.
void stepAside(int signal) {
  const int slot = slotOf(signal);
  if (slot < 0 || !installation.active[slot].exchange(false)) return;
  sigaction(signal, &installation.previous[slot], nullptr);
}

// A faulting instruction faults again when the handler returns and so meets
// the earlier handler; a signal that was sent, or a trap already past its
// instruction, has to be sent again.
bool recursOnReturn(int signal, const siginfo_t* info) {
  if (info == nullptr || info->si_code <= 0) return false;
  return signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL;
}

void onSignal(int signal, siginfo_t* info, void* context) {
  const int savedErrno = errno;
  stepAside(signal);
  const diagnostics::ExceptionRecord exception =
      diagnostics::exceptionFromSignal(signal, info, context);
  const char* problem = installation.problem.load();
  if (installation.mode.load() == FilterMode::LogOnly) {
    diagnostics::logException(&exception, problem, nullptr, 0);
  } else if (diagnostics::exceptionFilter(&exception, problem, nullptr, 0,
                                          installation.mayContinue.load())) {
    stepAside(SIGTRAP);
    diagnostics::debugBreak(nullptr, 0);
  }
  errno = savedErrno;
  if (!recursOnReturn(signal, info)) raise(signal);
}

// Alternate stacks belong to threads; the installing thread gets one unless
// it already has one large enough.
void ensureAlternateStack() {
  stack_t current;
  if (sigaltstack(nullptr, &current) != 0) return;
  if ((current.ss_flags & SS_DISABLE) == 0 && current.ss_size >= kAlternateStackSize) return;
  if ((current.ss_flags & SS_ONSTACK) != 0) return;
  void* memory = mmap(nullptr, kAlternateStackSize, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  if (memory == MAP_FAILED) return;
  stack_t ours;
  ours.ss_sp = memory;
  ours.ss_size = kAlternateStackSize;
  ours.ss_flags = 0;
  if (sigaltstack(&ours, nullptr) != 0) munmap(memory, kAlternateStackSize);
}

bool install(FilterMode mode, const char* problem, bool mayContinue) {
  std::lock_guard<std::mutex> lock(installLock);
  // The first trace must not load the unwinder inside a signal handler.
  diagnostics::initSymbols();
  ensureAlternateStack();
  installation.problem.store(problem);
  installation.mayContinue.store(mayContinue);
  installation.mode.store(mode);
  struct sigaction action;
  std::memset(&action, 0, sizeof(action));
  action.sa_sigaction = onSignal;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK;
  sigemptyset(&action.sa_mask);
  bool installedAll = true;
  for (int slot = 0; slot < kSignalCount; ++slot) {
    if (installation.active[slot].load()) continue;
    if (sigaction(kSignals[slot], &action, &installation.previous[slot]) != 0) {
      installedAll = false;
      continue;
    }
    installation.active[slot].store(true);
  }
  return installedAll;
}

}  // namespace

bool installExceptionFilter(const char* problem, bool mayContinue) {
  return install(FilterMode::Report, problem, mayContinue);
}

bool installExceptionLogger(const char* problem) {
  return install(FilterMode::LogOnly, problem, false);
}

void removeExceptionFilter() {
  std::lock_guard<std::mutex> lock(installLock);
  for (const int signal : kSignals) stepAside(signal);
}

}  // namespace common
}  // namespace orvo
