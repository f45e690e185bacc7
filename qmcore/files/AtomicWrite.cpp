#include "qmcore/files/AtomicWrite.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>

namespace qm {
namespace {

// A new file that is closed, and removed unless committed, when it goes out of scope.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::string path) : path_(std::move(path)) {
    // Created with the usual mode (0666 less the umask), never over an existing file.
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    created_ = descriptor_ >= 0;
  }
  ~TemporaryFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (created_ && !committed_) ::unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int descriptor() const { return descriptor_; }
  const std::string& path() const { return path_; }
  bool close() {
    const int result = ::close(descriptor_);
    descriptor_ = -1;
    return result == 0;
  }
  void commit() { committed_ = true; }

 private:
  std::string path_;
  int descriptor_ = -1;
  bool created_ = false;
  bool committed_ = false;
};

// A name beside `path` that no other writer in this or another process picks at the same time.
std::filesystem::path temporaryPathFor(const std::filesystem::path& path) {
  static std::atomic<unsigned> counter = 0;
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  return folder / ("." + path.filename().string() + "." + std::to_string(::getpid()) + "." +
                   std::to_string(counter.fetch_add(1)) + ".tmp");
}

}  // namespace

std::optional<Error> writeDataAtomically(const std::filesystem::path& path, std::string_view data) {
  TemporaryFile file(temporaryPathFor(path).string());
  if (file.descriptor() < 0) return posixFileError(errno, path.string());

  std::size_t written = 0;
  while (written < data.size()) {
    const ssize_t count = ::write(file.descriptor(), data.data() + written, data.size() - written);
    if (count < 0) {
      if (errno == EINTR) continue;
      return posixFileError(errno, path.string());
    }
    written += static_cast<std::size_t>(count);
  }
  if (::fsync(file.descriptor()) != 0) return posixFileError(errno, path.string());
  if (!file.close()) return posixFileError(errno, path.string());
  if (::rename(file.path().c_str(), path.c_str()) != 0) return posixFileError(errno, path.string());
  file.commit();
  return std::nullopt;
}

}  // namespace qm
