// What a report needs from the machine context a signal handler receives
// (a ucontext_t*). Machines this file does not know answer "unknown".
#ifndef ORVO_DIAGNOSTICS_MACHINE_CONTEXT_H_
#define ORVO_DIAGNOSTICS_MACHINE_CONTEXT_H_

#include <ucontext.h>

#include <cstdint>

namespace orvo {
namespace diagnostics {

// The interrupted instruction, or 0 when unknown.
inline std::uintptr_t contextProgramCounter(const void* context) {
  if (context == nullptr) return 0;
  const auto& machine = static_cast<const ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
  return static_cast<std::uintptr_t>(machine.gregs[REG_RIP]);
#elif defined(__i386__)
  return static_cast<std::uintptr_t>(machine.gregs[REG_EIP]);
#elif defined(__aarch64__)
  return static_cast<std::uintptr_t>(machine.pc);
#else
  (void)machine;
  return 0;
#endif
}

// The stack pointer at the interruption, or 0 when unknown.
inline std::uintptr_t contextStackPointer(const void* context) {
  if (context == nullptr) return 0;
  const auto& machine = static_cast<const ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
  return static_cast<std::uintptr_t>(machine.gregs[REG_RSP]);
#elif defined(__i386__)
  return static_cast<std::uintptr_t>(machine.gregs[REG_ESP]);
#elif defined(__aarch64__)
  return static_cast<std::uintptr_t>(machine.sp);
#else
  (void)machine;
  return 0;
#endif
}

enum class MemoryAccess { Unknown, Read, Write };

// Whether the access behind a memory fault was a read or a write; x86 keeps
// it in bit 1 of the page fault's error code.
inline MemoryAccess contextFaultAccess(const void* context) {
  if (context == nullptr) return MemoryAccess::Unknown;
#if defined(__x86_64__) || defined(__i386__)
  const auto& machine = static_cast<const ucontext_t*>(context)->uc_mcontext;
  return (machine.gregs[REG_ERR] & 2) != 0 ? MemoryAccess::Write : MemoryAccess::Read;
#else
  return MemoryAccess::Unknown;
#endif
}

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_MACHINE_CONTEXT_H_
