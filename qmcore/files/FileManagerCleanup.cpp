#include "qmcore/files/FileManagerCleanup.hpp"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/files/FileError.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/files/internal/FileOps.hpp"
#include "qmcore/platform/Env.hpp"

namespace qm {

namespace fs = std::filesystem;

namespace {

void logCleanupError(const Error& error) {
  debuglog(
      [&] { return "[FILE]: Error when cleaning up temporary directory: " + error.description(); });
}

// The entries of `folder`, or the error of listing it.
std::optional<Error> listFolder(const fs::path& folder, std::vector<fs::path>& entries) {
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    entries.push_back(it->path());
  }
  if (error) return posixFileError(error, folder.string());
  return std::nullopt;
}

}  // namespace

void clearTmpDirectory() { clearTmpDirectory(Env::Default()); }

void clearTmpDirectory(const Env& env) {
  std::vector<fs::path> entries;
  if (const std::optional<Error> failed = listFolder(env.temporaryDirectory(), entries)) {
    logCleanupError(*failed);
    return;
  }
  for (const fs::path& entry : entries) {
    if (const std::optional<Error> failed = internal::removeItem(entry)) {
      logCleanupError(*failed);
      return;
    }
  }
}

int removeFilesOlder(Date than, const fs::path& folder) {
  std::vector<fs::path> entries;
  if (const std::optional<Error> failed = listFolder(folder, entries)) {
    logCleanupError(*failed);
    return 0;
  }
  int deleted = 0;
  for (const fs::path& entry : entries) {
    const std::optional<Date> modified =
        QMFileHelper::modificationDateForLocalFilePath(entry.string());
    if (!modified || !(*modified < than)) continue;
    if (const std::optional<Error> failed = internal::removeItem(entry)) {
      logCleanupError(*failed);
      break;
    }
    ++deleted;
  }
  return deleted;
}

}  // namespace qm
