#include "qmcore/files/QMFileLoggerIO.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <random>
#include <system_error>

#include "qmcore/files/FileError.hpp"

namespace qm::internal {

namespace {

// Closes a file descriptor when it goes out of scope.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  int get() const { return fd_; }

 private:
  const int fd_;
};

// Creates an empty file, as the file manager's create without attributes does; a failure
// shows when the file is opened.
void createEmptyFile(const std::string& path) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd >= 0) ::close(fd);
}

}  // namespace

std::string errorDescription(const Error& error) {
  return "Error Domain=" + error.domain() + " Code=" + std::to_string(error.code()) + " \"" +
         error.localizedDescription() + "\"";
}

std::string fileURLDescription(const std::filesystem::path& path) {
  return "file://" + path.string();
}

std::string dateDescription(Date date) {
  const std::time_t seconds = static_cast<std::time_t>(std::floor(date.timeIntervalSince1970()));
  std::tm utc{};
  if (!std::isfinite(date.timeIntervalSince1970()) || gmtime_r(&seconds, &utc) == nullptr) {
    return "(invalid date)";
  }
  char text[64];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S +0000", &utc);
  return text;
}

std::string newUUIDString() {
  thread_local std::mt19937_64 random{std::random_device{}()};
  unsigned char bytes[16];
  for (int i = 0; i < 16; i += 8) {
    const std::uint64_t value = random();
    std::memcpy(bytes + i, &value, 8);
  }
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string text;
  for (int i = 0; i < 16; ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kHex[bytes[i] >> 4];
    text += kHex[bytes[i] & 0x0F];
  }
  return text;
}

bool fileExists(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0;
}

std::vector<std::string> listDirectory(const std::filesystem::path& folder) {
  DIR* const directory = ::opendir(folder.c_str());
  if (directory == nullptr) throw ErrorException(posixFileError(errno));
  std::vector<std::string> names;
  while (const struct dirent* entry = ::readdir(directory)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  ::closedir(directory);
  return names;
}

void appendToLogFile(const std::string& path, std::string_view bytes, std::size_t lineCount) {
  if (!fileExists(path)) createEmptyFile(path);
  const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (file.get() < 0) {
    const std::string line = "Can't write to log file at url: " + fileURLDescription(path) +
                             ", error: " + errorDescription(posixFileError(errno)) + "\n";
    for (std::size_t i = 0; i < lineCount; ++i) std::fputs(line.c_str(), stdout);
    std::fflush(stdout);
    return;
  }
  // Seek to the end and cut the file there (which changes nothing), then append.
  const off_t end = ::lseek(file.get(), 0, SEEK_END);
  if (end >= 0) (void)::ftruncate(file.get(), end);
  while (!bytes.empty()) {
    const ssize_t written = ::write(file.get(), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void resetLogFile(const std::string& path) {
  if (fileExists(path)) {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  createEmptyFile(path);
}

}  // namespace qm::internal
