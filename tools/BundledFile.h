// Where the tools find the sample files bundled in the source tree's data/
// folder when no path is given.
#ifndef ORVO_TOOLS_BUNDLED_FILE_H_
#define ORVO_TOOLS_BUNDLED_FILE_H_

#include <unistd.h>

#include <string>

namespace orvo {
namespace tool {

// `relative` under the current directory, or under the folder of the program
// or one of its parents (a build tree inside the source tree, or share/orvo/
// of an installed tree); `relative` itself when found nowhere.
inline std::string findBundledFile(const char* relative) {
  auto readable = [](const std::string& path) { return access(path.c_str(), R_OK) == 0; };
  if (readable(relative)) return relative;
  char self[4096];
  const ssize_t n = readlink("/proc/self/exe", self, sizeof(self) - 1);
  if (n <= 0) return relative;
  self[n] = '\0';
  std::string dir(self);
  for (int up = 0; up < 6; ++up) {
    const std::size_t slash = dir.rfind('/');
    if (slash == std::string::npos || slash == 0) break;
    dir.resize(slash);
    for (const char* middle : {"/", "/share/orvo/"}) {
      const std::string candidate = dir + middle + relative;
      if (readable(candidate)) return candidate;
    }
  }
  return relative;
}

}  // namespace tool
}  // namespace orvo

#endif  // ORVO_TOOLS_BUNDLED_FILE_H_
