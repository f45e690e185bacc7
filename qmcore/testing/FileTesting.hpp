// Test helpers: files written and read back, commands run, zip archives read by another reader,
// the texts of console-log lines and a file logger's diagnostics.

#ifndef QMCORE_TESTING_FILETESTING_HPP_
#define QMCORE_TESTING_FILETESTING_HPP_

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

namespace qm::testing {

inline void writeFile(const std::filesystem::path& path, const std::string& content) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

inline std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Runs a shell command; its standard output, with "exit N" appended when it fails.
inline std::string run(const std::string& command) {
  std::string out;
  FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return "popen failed";
  char buffer[4096];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
  const int status = ::pclose(pipe);
  if (status != 0) out += "exit " + std::to_string(status);
  return out;
}

// The files in a zip archive, one after another, as Info-ZIP's unzip reads them (checking CRCs).
inline std::string zipContents(const std::filesystem::path& archive) {
  return run("unzip -p '" + archive.string() + "'");
}

// Every path under `folder`, relative, sorted; folders end with "/".
inline std::vector<std::string> tree(const std::filesystem::path& folder) {
  std::vector<std::string> out;
  std::error_code error;
  for (auto it = std::filesystem::recursive_directory_iterator(folder, error);
       !error && it != std::filesystem::recursive_directory_iterator(); it.increment(error)) {
    std::string relative = std::filesystem::relative(it->path(), folder).string();
    if (it->is_directory()) relative += "/";
    out.push_back(relative);
  }
  std::sort(out.begin(), out.end());
  return out;
}

// Captures stderr while alive; `texts()` gives the text part of each console-log line.
class ConsoleCapture {
 public:
  ConsoleCapture() { ::testing::internal::CaptureStderr(); }
  std::vector<std::string> texts() {
    std::istringstream out(::testing::internal::GetCapturedStderr());
    std::vector<std::string> lines;
    for (std::string line; std::getline(out, line);) {
      lines.push_back(line.substr(line.find("] ") == std::string::npos ? 0 : line.find("] ") + 2));
    }
    return lines;
  }
};

// The diagnostics a file logger reported, in order; safe to fill from the logger's queues.
struct Diagnostics {
  std::function<void(const std::string&)> sink() {
    return [this](const std::string& line) {
      const std::lock_guard lock(mutex);
      received.push_back(line);
    };
  }
  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex);
    return received;
  }
  mutable std::mutex mutex;
  std::vector<std::string> received;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_FILETESTING_HPP_
