#include <dlfcn.h>
#include <link.h>
#include <ucontext.h>

#include <cinttypes>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "diagnostics/DiagnosticsTestSupport.h"
#include "diagnostics/ElfSymbols.h"
#include "diagnostics/StackTrace.h"
#include "gtest/gtest.h"

namespace trace_probe {

// Frames with known names: a class template member and a plain function.
template <class T>
struct Walker {
  __attribute__((noinline)) static std::string walk(std::size_t size) {
    std::vector<char> buffer(size, '\0');
    std::memcpy(buffer.data(), "head", size < 5 ? size - 1 : 4);
    orvo::diagnostics::appendStackTrace(buffer.data(), static_cast<orvo::common::UInt32>(size),
                                        nullptr);
    asm volatile("" ::: "memory");
    return std::string(buffer.data(), strnlen(buffer.data(), size));
  }
};

__attribute__((noinline)) std::string outerFrame(std::size_t size) {
  std::string trace = Walker<int>::walk(size);
  asm volatile("" ::: "memory");  // keeps this frame: no tail call
  return trace;
}

__attribute__((noinline)) int knownFunction(int value) {
  asm volatile("" ::: "memory");
  return value * 3 + 1;
}

}  // namespace trace_probe

namespace orvo {
namespace diagnostics {
namespace {

std::vector<std::string> traceLines(const std::string& trace) {
  std::vector<std::string> lines;
  std::size_t at = trace.find('\n', trace.find("Stack Trace:"));
  while (at != std::string::npos) {
    const std::size_t next = trace.find('\n', at + 1);
    lines.push_back(trace.substr(at + 1, next == std::string::npos ? next : next - at - 1));
    at = next;
  }
  return lines;
}

TEST(StackTraceTest, FramesNameModuleAndDemangledFunction) {
  const std::string trace = trace_probe::outerFrame(40960);
  ASSERT_EQ(0u, trace.find("head\n\nStack Trace:\n0x")) << trace;
  const auto lines = traceLines(trace);
  EXPECT_LE(lines.size(), 16u);
  for (const std::string& text : lines) {
    EXPECT_TRUE(text.size() > 21 && text.compare(0, 2, "0x") == 0 &&
                testing_support::madeOf(text.substr(2, 16), "0123456789ABCDEF") &&
                text.compare(18, 2, "  ") == 0 && text[20] != ' ')
        << text;
  }
  EXPECT_NE(std::string::npos, lines[0].find(": orvo::diagnostics::appendStackTrace() + "))
      << trace;
  EXPECT_NE(std::string::npos, trace.find(": trace_probe::Walker<int>::walk() + ")) << trace;
  EXPECT_NE(std::string::npos, trace.find(": trace_probe::outerFrame() + "));
  const std::string program = "/" + std::string(program_invocation_short_name);
  EXPECT_NE(std::string::npos, trace.find(program + ": trace_probe::outerFrame() + "));
  EXPECT_EQ(std::string::npos, trace.find(": _Z")) << "mangled name left";
}

TEST(StackTraceTest, TraceKeeps512BytesFreeAndNeverOverflows) {
  for (const std::size_t size : {5u, 20u, 600u, 700u, 1024u, 2048u}) {
    const std::string trace = trace_probe::outerFrame(size);
    ASSERT_LT(trace.size(), size);
    const std::string header = std::string("head\n\nStack Trace:").substr(0, size - 1);
    ASSERT_EQ(0u, trace.find(header)) << size;
    if (trace.size() > header.size()) {
      EXPECT_LE(trace.size() + 512, size) << size;
    }
  }
  EXPECT_GT(trace_probe::outerFrame(1024).size(), std::strlen("head\n\nStack Trace:"));
}

#if defined(__x86_64__)
TEST(StackTraceTest, ContextOutsideTheWalkGivesItsOwnFrameOnly) {
  ucontext_t context;
  std::memset(&context, 0, sizeof(context));
  const auto address = reinterpret_cast<std::uintptr_t>(&trace_probe::knownFunction) + 2;
  context.uc_mcontext.gregs[REG_RIP] = static_cast<greg_t>(address);
  char buffer[4096] = "";
  appendStackTrace(buffer, sizeof(buffer), &context);
  const auto lines = traceLines(buffer);
  ASSERT_EQ(1u, lines.size()) << buffer;
  char expected[32];
  std::snprintf(expected, sizeof(expected), "0x%016" PRIXPTR "  ", address);
  EXPECT_EQ(0u, lines[0].find(expected)) << lines[0];
  EXPECT_NE(std::string::npos, lines[0].find(": trace_probe::knownFunction() + 2 bytes"));

  context.uc_mcontext.gregs[REG_RIP] = 0;
  buffer[0] = '\0';
  appendStackTrace(buffer, sizeof(buffer), &context);
  EXPECT_STREQ("\n\nStack Trace: <unavailable>", buffer);
}
#endif

TEST(StackTraceTest, FunctionNamesReadAsQualifiedNames) {
  char name[260];
  const auto readable = [&](const char* raw) {
    readableFunctionName(raw, name, sizeof(name));
    return std::string(name);
  };
  EXPECT_EQ("ns::f", readable("_ZN2ns1fEi"));
  EXPECT_EQ("ns::f(int)::{lambda(int)#1}::operator()", readable("_ZZN2ns1fEiENKUliE_clEi"));
  EXPECT_EQ("ns::f", readable("_ZN2ns1fEi.cold"));
  EXPECT_EQ("ns::g", readable("_ZN2ns1gB5cxx11Ev"));
  EXPECT_EQ("main", readable("main"));
  EXPECT_EQ("i", readable("i"));
  EXPECT_EQ("_Zjunk", readable("_Zjunk"));
  char small[5];
  readableFunctionName("_ZN2ns1fEi", small, sizeof(small));
  EXPECT_STREQ("ns::", small);
}

class ElfSymbolsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ifstream in("/proc/self/exe", std::ios::binary);
    _image.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    ASSERT_GT(_image.size(), 64u);
    Dl_info info;
    link_map* module = nullptr;
    ASSERT_NE(0, dladdr1(reinterpret_cast<void*>(&trace_probe::knownFunction), &info,
                         reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP));
    _address = reinterpret_cast<std::uintptr_t>(&trace_probe::knownFunction) - module->l_addr;
  }

  bool find(std::size_t size, std::string* name, std::uintptr_t* displacement) {
    const char* found = nullptr;
    if (!findFunctionSymbol(_image.data(), size, _address + 1, &found, displacement)) {
      return false;
    }
    const auto* start = reinterpret_cast<const unsigned char*>(found);
    EXPECT_TRUE(start >= _image.data() && start < _image.data() + size);
    EXPECT_NE(nullptr, std::memchr(start, '\0', _image.data() + size - start));
    *name = found;
    return true;
  }

  std::vector<unsigned char> _image;
  std::uintptr_t _address = 0;
};

TEST_F(ElfSymbolsTest, FindsFunctionsLocalToTheProgram) {
  std::string name;
  std::uintptr_t displacement = 0;
  ASSERT_TRUE(find(_image.size(), &name, &displacement));
  EXPECT_EQ("_ZN11trace_probe13knownFunctionEi", name);
  EXPECT_EQ(1u, displacement);
  const char* found = nullptr;
  EXPECT_FALSE(findFunctionSymbol(_image.data(), _image.size(), 0, &found, &displacement));
}

TEST_F(ElfSymbolsTest, DamagedImagesAnswerFalseWithoutReadingOutside) {
  std::string name;
  std::uintptr_t displacement;
  for (const std::size_t size : {std::size_t{0}, std::size_t{16}, sizeof(ElfW(Ehdr)) - 1,
                                 sizeof(ElfW(Ehdr)), _image.size() / 2}) {
    EXPECT_FALSE(find(size, &name, &displacement)) << size;
  }
  // Damage each byte of the file header and of the first section headers in
  // turn: the search may fail or find a name, but stays inside the image.
  ElfW(Ehdr) header;
  std::memcpy(&header, _image.data(), sizeof(header));
  std::vector<std::size_t> offsets;
  for (std::size_t i = 0; i < sizeof(header); ++i) offsets.push_back(i);
  for (std::size_t i = 0; i < 8 * sizeof(ElfW(Shdr)); i += 3) offsets.push_back(header.e_shoff + i);
  for (const std::size_t offset : offsets) {
    ASSERT_LT(offset, _image.size());
    const unsigned char kept = _image[offset];
    for (const unsigned char damage : {0x00, 0x7F, 0xFF}) {
      _image[offset] = damage;
      find(_image.size(), &name, &displacement);
    }
    _image[offset] = kept;
  }
}

TEST_F(ElfSymbolsTest, FilesThatAreNoImagesAnswerFalse) {
  char name[64];
  std::uintptr_t displacement;
  EXPECT_FALSE(findFunctionSymbolInFile("/nonexistent/module.so", _address, name, sizeof(name),
                                        &displacement));
  EXPECT_FALSE(findFunctionSymbolInFile("/proc/self", _address, name, sizeof(name), &displacement));
  EXPECT_FALSE(findFunctionSymbolInFile("/dev/null", _address, name, sizeof(name), &displacement));
  ASSERT_TRUE(
      findFunctionSymbolInFile("/proc/self/exe", _address, name, sizeof(name), &displacement));
  EXPECT_STREQ("_ZN11trace_probe13knownFunctionEi", name);
}

}  // namespace
}  // namespace diagnostics
}  // namespace orvo
