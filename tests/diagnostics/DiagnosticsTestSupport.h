// Shared pieces of the diagnostics tests: environment settings that are put
// back afterwards, a scratch directory, and whole-file reads.
#ifndef ORVO_TESTS_DIAGNOSTICS_DIAGNOSTICS_TEST_SUPPORT_H_
#define ORVO_TESTS_DIAGNOSTICS_DIAGNOSTICS_TEST_SUPPORT_H_

#include <dirent.h>
#include <errno.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "gtest/gtest.h"

namespace orvo {
namespace testing_support {

// Sets and unsets environment variables; the destructor restores them.
class ScopedEnvironment {
 public:
  ScopedEnvironment() = default;
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
  ~ScopedEnvironment() {
    for (auto it = _saved.rbegin(); it != _saved.rend(); ++it) {
      if (it->second.first) {
        setenv(it->first.c_str(), it->second.second.c_str(), 1);
      } else {
        unsetenv(it->first.c_str());
      }
    }
  }

  void set(const std::string& name, const std::string& value) {
    save(name);
    setenv(name.c_str(), value.c_str(), 1);
  }
  void unset(const std::string& name) {
    save(name);
    unsetenv(name.c_str());
  }

 private:
  void save(const std::string& name) {
    const char* value = getenv(name.c_str());
    _saved.push_back({name, {value != nullptr, value != nullptr ? value : ""}});
  }

  std::vector<std::pair<std::string, std::pair<bool, std::string>>> _saved;
};

// A fresh directory under /tmp, removed with its files (one level deep).
class ScratchDirectory {
 public:
  ScratchDirectory() {
    char pattern[] = "/tmp/orvo_diag_XXXXXX";
    const char* made = mkdtemp(pattern);
    EXPECT_NE(nullptr, made) << "mkdtemp: " << errno;
    _path = made != nullptr ? made : "/tmp";
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory() { removeTree(_path); }

  const std::string& path() const { return _path; }
  std::string file(const std::string& name) const { return _path + "/" + name; }

  std::vector<std::string> entries() const { return listDirectory(_path); }

  static std::vector<std::string> listDirectory(const std::string& path) {
    std::vector<std::string> names;
    DIR* listing = opendir(path.c_str());
    if (listing == nullptr) return names;
    while (const dirent* entry = readdir(listing)) {
      const std::string name = entry->d_name;
      if (name != "." && name != "..") names.push_back(name);
    }
    closedir(listing);
    return names;
  }

 private:
  static void removeTree(const std::string& path) {
    for (const std::string& name : listDirectory(path)) {
      const std::string child = path + "/" + name;
      if (unlink(child.c_str()) != 0) removeTree(child);
    }
    rmdir(path.c_str());
  }

  std::string _path;
};

inline std::string readWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// True when `text` is not empty and holds only characters of `allowed`.
inline bool madeOf(const std::string& text, const std::string& allowed) {
  return !text.empty() && text.find_first_not_of(allowed) == std::string::npos;
}

// The part of `text` between `prefix` and `suffix`, or "" when it does not
// start and end with them.
inline std::string between(const std::string& text, const std::string& prefix,
                           const std::string& suffix) {
  if (text.size() < prefix.size() + suffix.size() || text.compare(0, prefix.size(), prefix) != 0 ||
      text.compare(text.size() - suffix.size(), suffix.size(), suffix) != 0) {
    return "";
  }
  return text.substr(prefix.size(), text.size() - prefix.size() - suffix.size());
}

inline bool fileExists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

}  // namespace testing_support
}  // namespace orvo

#endif  // ORVO_TESTS_DIAGNOSTICS_DIAGNOSTICS_TEST_SUPPORT_H_
