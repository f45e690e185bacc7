// Helpers for the file logger's tests: a logger over a fake environment that collects its
// diagnostics, and readers of what it wrote (files, zip archives through Python's zipfile).

#ifndef QMCORE_TESTING_QMFILELOGGERTESTSUPPORT_HPP_
#define QMCORE_TESTING_QMFILELOGGERTESTSUPPORT_HPP_

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

#include "qmcore/files/QMFileLogger.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm::testing {

// The diagnostics a logger reported, in order; safe to fill from the logger's queues.
class Diagnostics {
 public:
  std::function<void(const std::string&)> sink() {
    return [this](const std::string& line) {
      const std::lock_guard lock(mutex_);
      lines_.push_back(line);
    };
  }
  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

inline std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

inline void writeFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// Output of a shell command, or "" when it cannot be run.
inline std::string commandOutput(const std::string& command) {
  std::string output;
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (pipe == nullptr) return output;
  char buffer[65536];
  for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe.get())) > 0;) output.append(buffer, n);
  return output;
}

// "name size" for every member of a zip archive, read by Python's zipfile (which also checks
// each member's CRC), then the concatenated contents of the members.
inline std::string zipListing(const std::filesystem::path& archive) {
  return commandOutput(
      "python3 -c 'import sys, zipfile\n"
      "z = zipfile.ZipFile(sys.argv[1])\n"
      "assert z.testzip() is None\n"
      "for i in z.infolist(): print(i.filename, i.file_size)' '" +
      archive.string() + "' 2>&1");
}
inline std::string zipContents(const std::filesystem::path& archive) {
  return commandOutput(
      "python3 -c 'import sys, zipfile\n"
      "z = zipfile.ZipFile(sys.argv[1])\n"
      "[sys.stdout.buffer.write(z.read(i)) for i in z.infolist() if not i.is_dir()]' '" +
      archive.string() + "'");
}

}  // namespace qm::testing

#endif  // QMCORE_TESTING_QMFILELOGGERTESTSUPPORT_HPP_
