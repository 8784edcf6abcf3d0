#include "diagnostics/StackTrace.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>
#include <unistd.h>

#include <atomic>
#include <cinttypes>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "diagnostics/ElfSymbols.h"
#include "diagnostics/FailureReport.h"
#include "diagnostics/MachineContext.h"

namespace orvo {
namespace diagnostics {
namespace {

constexpr int kMaxFrames = 16;
constexpr int kWalkDepth = 64;
constexpr std::size_t kEntrySize = 512;  // one line, and the room kept free behind the trace
constexpr std::size_t kSymbolNameSize = 260;
constexpr std::size_t kRawNameSize = 4096;
constexpr int kPointerDigits = static_cast<int>(sizeof(void*) * 2);

std::mutex _symbolLock;
std::atomic<bool> symbolsReady{false};
char programPath[kConfiguredPathSize];  // set once under _symbolLock, before symbolsReady

bool setUpSymbols() {
  try {
    std::lock_guard<std::mutex> lock(_symbolLock);
    if (symbolsReady.load(std::memory_order_relaxed)) return true;
    // The first walk loads the unwinder, which allocates; after this, walks
    // (also those in a signal handler) do not.
    void* frames[2];
    backtrace(frames, 2);
    const ssize_t length = readlink("/proc/self/exe", programPath, sizeof(programPath) - 1);
    programPath[length > 0 ? length : 0] = '\0';
    symbolsReady.store(true, std::memory_order_release);
    return true;
  } catch (...) {
    return false;
  }
}

int indexOf(void* const* walked, int depth, std::uintptr_t address) {
  for (int i = 0; i < depth; ++i) {
    if (reinterpret_cast<std::uintptr_t>(walked[i]) == address) return i;
  }
  return -1;
}

// Without a context the trace starts in the caller of walkStack, found by its
// return address since an intercepted walk may add frames of its own. With
// a context, the walk passes through the signal frame and the trace starts at
// the interrupted instruction; when the walk never reaches it, that
// instruction is all that can be told.
__attribute__((noinline)) int walkStack(const void* context, std::uintptr_t* frames) {
  void* walked[kWalkDepth];
  const int depth = backtrace(walked, kWalkDepth);
  int first;
  if (context == nullptr) {
    first = indexOf(walked, depth, reinterpret_cast<std::uintptr_t>(__builtin_return_address(0)));
    if (first < 0) first = depth > 1 ? 1 : depth;
  } else {
    const std::uintptr_t interrupted = contextProgramCounter(context);
    first = indexOf(walked, depth, interrupted);
    if (first < 0) {
      if (interrupted == 0) return 0;
      frames[0] = interrupted;
      return 1;
    }
  }
  int count = 0;
  for (int i = first; i < depth && count < kMaxFrames; ++i) {
    frames[count++] = reinterpret_cast<std::uintptr_t>(walked[i]);
  }
  return count;
}

// The main program has an empty name in the loader's list.
const char* modulePath(const link_map& module, const Dl_info& info) {
  if (module.l_name != nullptr && module.l_name[0] != '\0') return module.l_name;
  if (programPath[0] != '\0') return programPath;
  return info.dli_fname != nullptr && info.dli_fname[0] != '\0' ? info.dli_fname : nullptr;
}

// The module's own symbol tables know every function; the loader's look-up
// is the fallback for modules that cannot be read, such as the vDSO.
bool findFunction(std::uintptr_t address, const link_map& module, const char* path,
                  const Dl_info& info, char* name, std::size_t size, std::uintptr_t* displacement) {
  char raw[kRawNameSize];
  if (findFunctionSymbolInFile(path, address - module.l_addr, raw, sizeof(raw), displacement)) {
    readableFunctionName(raw, name, static_cast<common::UInt32>(size));
    return true;
  }
  if (info.dli_sname == nullptr || info.dli_saddr == nullptr) return false;
  readableFunctionName(info.dli_sname, name, static_cast<common::UInt32>(size));
  *displacement = address - reinterpret_cast<std::uintptr_t>(info.dli_saddr);
  return true;
}

void describeFrame(std::uintptr_t address, char* entry, std::size_t size) {
  entry[0] = '\0';
  appendFormat(entry, size, "\n0x%0*" PRIXPTR " ", kPointerDigits, address);
  Dl_info info;
  link_map* module = nullptr;
  const bool known = dladdr1(reinterpret_cast<void*>(address), &info,
                             reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP) != 0 &&
                     module != nullptr;
  const char* path = known ? modulePath(*module, info) : nullptr;
  appendFormat(entry, size, " %s", path != nullptr ? path : "<unknown module>");
  char name[kSymbolNameSize];
  std::uintptr_t displacement = 0;
  if (!known || !findFunction(address, *module, path, info, name, sizeof(name), &displacement)) {
    return;
  }
  appendFormat(entry, size, ": %s()", name);
  if (displacement != 0) appendFormat(entry, size, " + %ld bytes", static_cast<long>(displacement));
}

// Drops every " [clone ...]" suffix and "[abi:...]" tag in place.
void removeDecorations(char* name) {
  char* clone = std::strstr(name, " [clone ");
  if (clone != nullptr) *clone = '\0';
  for (char* tag = std::strstr(name, "[abi:"); tag != nullptr; tag = std::strstr(tag, "[abi:")) {
    const char* end = std::strchr(tag, ']');
    if (end == nullptr) return;
    std::memmove(tag, end + 1, std::strlen(end + 1) + 1);
  }
}

// "ns::f[abi:cxx11](int) const [clone .cold]" becomes "ns::f": a trace line
// adds "()" itself. The parameter list is the one closed by the last ')'.
void simplifyFunctionName(char* name) {
  removeDecorations(name);
  char* close = std::strrchr(name, ')');
  if (close == nullptr) return;
  int depth = 0;
  for (char* p = close;; --p) {
    if (*p == ')') {
      ++depth;
    } else if (*p == '(' && --depth == 0) {
      *p = '\0';
      return;
    }
    if (p == name) return;
  }
}

}  // namespace

bool initSymbols() {
  if (symbolsReady.load(std::memory_order_acquire)) return true;
  return setUpSymbols();
}

void readableFunctionName(const char* raw, char* out, common::UInt32 size) {
  if (out == nullptr || size == 0) return;
  // Only "_Z" names are mangled; a plain C name like "i" would otherwise
  // read as the type "int".
  char* demangled = nullptr;
  int status = -1;
  if (std::strncmp(raw, "_Z", 2) == 0) {
    demangled = abi::__cxa_demangle(raw, nullptr, nullptr, &status);
  }
  if (status == 0 && demangled != nullptr) {
    simplifyFunctionName(demangled);
    copyCut(out, size, demangled, size - 1);
  } else {
    copyCut(out, size, raw, size - 1);
  }
  std::free(demangled);
}

void appendStackTrace(char* buffer, common::UInt32 size, const void* context) {
  if (buffer == nullptr || size == 0 || !initSymbols()) return;
  std::uintptr_t frames[kMaxFrames];
  const int count = walkStack(context, frames);
  appendText(buffer, size, "\n\nStack Trace:");
  if (count == 0) {
    appendText(buffer, size, " <unavailable>");
    return;
  }
  for (int i = 0; i < count; ++i) {
    if (frames[i] == 0) continue;
    char entry[kEntrySize];
    describeFrame(frames[i], entry, sizeof(entry));
    if (strnlen(buffer, size) + std::strlen(entry) + kEntrySize > size) return;
    appendText(buffer, size, entry);
  }
}

}  // namespace diagnostics
}  // namespace orvo
