// Helpers of the dictionary tests: a scratch folder for dictionary files, a
// dictionary that is destroyed at the end of the scope, and the text of a
// failure.
#ifndef ORVO_TESTS_ODM_DICTIONARY_TEST_UTIL_H_
#define ORVO_TESTS_ODM_DICTIONARY_TEST_UTIL_H_

#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"

namespace orvo {
namespace odm {
namespace testing {

class ScratchDir {
 public:
  ScratchDir() {
    const char* base = getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr ? base : "/tmp") + "/orvo-dict-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    _path = mkdtemp(name.data()) != nullptr ? name.data() : "";
  }
  ~ScratchDir() {
    for (const std::string& file : _files) unlink(file.c_str());
    rmdir(_path.c_str());
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  // Writes `contents` byte for byte to a file of the folder; answers its path.
  std::string write(const std::string& name, const std::string& contents) {
    const std::string file = _path + "/" + name;
    std::FILE* out = std::fopen(file.c_str(), "wb");
    if (out != nullptr) {
      std::fwrite(contents.data(), 1, contents.size(), out);
      std::fclose(out);
    }
    _files.push_back(file);
    return file;
  }
  const std::string& path() const { return _path; }

 private:
  std::string _path;
  std::vector<std::string> _files;
};

// A dictionary made by create() and destroyed with the scope.
class ScopedDictionary {
 public:
  ScopedDictionary()
      : _dictionary(static_cast<ODMFieldDictionaryInt&>(ODMFieldDictionary::create())) {}
  ~ScopedDictionary() { _dictionary.destroy(); }
  ScopedDictionary(const ScopedDictionary&) = delete;
  ScopedDictionary& operator=(const ScopedDictionary&) = delete;

  ODMFieldDictionaryInt& operator*() { return _dictionary; }
  ODMFieldDictionaryInt* operator->() { return &_dictionary; }

 private:
  ODMFieldDictionaryInt& _dictionary;
};

// The failure raised by `f`, with the state it was raised in (1: illegal
// call, 2: bad value); "<none>" when nothing was raised.
struct Raised {
  std::string text = "<none>";
  int state = 0;
};

template <class F>
Raised raisedBy(F&& f) {
  Raised raised;
  try {
    f();
  } catch (const common::InvalidUsageException& e) {
    raised.text = e.what();
    raised.state = static_cast<int>(e.getStatus().getState());
  }
  return raised;
}

template <class F>
std::string failureOf(F&& f) {
  return raisedBy(f).text;
}

inline common::ORVO_String str(const std::string& text) {
  return common::ORVO_String(text.c_str());
}

inline std::string text(const common::ORVO_String& s) { return std::string(s.data(), s.length()); }

}  // namespace testing
}  // namespace odm
}  // namespace orvo

#endif  // ORVO_TESTS_ODM_DICTIONARY_TEST_UTIL_H_
