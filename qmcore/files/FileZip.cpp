// The zip of a file or folder (QMFileHelper::zip). The archive is made in the temporary
// directory first and then copied to its destination, so that a destination that cannot be
// written (or that already holds an item, which is kept) is told apart from an item that
// cannot be zipped.

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>
#include <system_error>

#include "qmcore/files/FileError.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/files/internal/FileOps.hpp"
#include "qmcore/platform/ConsoleLog.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/ZipArchive.hpp"

namespace qm {

namespace fs = std::filesystem;

namespace {

// The domain of the one error the zip makes itself.
constexpr const char* kBundleIdentifier = "com.quillmark.QMCore";

// A name for the archive in the making that no other zip of this process uses.
fs::path newArchivePath(const fs::path& temporaryDirectory) {
  static std::atomic<unsigned long> counter{0};
  return temporaryDirectory / ("qmcore-zip-" + std::to_string(::getpid()) + "-" +
                               std::to_string(counter.fetch_add(1)) + ".zip");
}

}  // namespace

fs::path QMFileHelper::zip(const fs::path& source, const std::optional<fs::path>& toFileAt,
                           std::string_view zipDirName) {
  return zip(source, toFileAt, zipDirName, Env::Default());
}

fs::path QMFileHelper::zip(const fs::path& source, const std::optional<fs::path>& toFileAt,
                           std::string_view zipDirName, const Env& env) {
  const fs::path destination = toFileAt ? *toFileAt : fs::path(source.string() + ".zip");
  const fs::path temporary = env.temporaryDirectory();

  fs::path item = source;
  std::optional<fs::path> scratch;
  if (!internal::isDirectory(source)) {
    // An empty name would make the temporary directory itself the scratch folder.
    if (zipDirName.empty() || zipDirName == "." || zipDirName == "..") {
      throw ErrorException(
          posixFileError(EINVAL, "zip-dir name \"" + std::string(zipDirName) + "\""));
    }
    scratch = temporary / fs::path(zipDirName);
    if (const std::optional<Error> failed = internal::createDirectories(*scratch)) {
      throw ErrorException(*failed);
    }
    fs::path name = source;
    if (!name.has_filename()) name = name.parent_path();
    if (const std::optional<Error> failed =
            internal::copyItem(source, *scratch / name.filename())) {
      std::error_code ignored;
      fs::remove_all(*scratch, ignored);
      throw ErrorException(*failed);
    }
    item = *scratch;
  }

  // The archive of the item, made beside the other temporary files, then copied.
  std::optional<Error> result;
  const fs::path archive = newArchivePath(temporary);
  bool archived = false;
  try {
    writeZipArchive(item, archive);
    archived = internal::itemExists(archive);
  } catch (const ErrorException& e) {
    consoleLog("zipping failed");
    result = e.error();
  }
  if (!result && archived) {
    // Like every copy of the library, this never replaces an existing item.
    if (const std::optional<Error> failed = internal::copyItem(archive, destination)) {
      consoleLog("zipping succeeded but copying the zip file failed");
      result = posixFileError(failed->code(), destination.string());
    }
  } else if (!result) {
    consoleLog(
        "NSFileCoordinator has violated its API contract. It has errored without throwing an "
        "error object");
    result = Error(kBundleIdentifier, 0);
  }
  std::error_code ignored;
  fs::remove(archive, ignored);

  if (scratch) {
    std::error_code error;
    fs::remove_all(*scratch, error);
    if (error)
      consoleLog("Warning. Zipping succeeded but could not remove temporary directory afterwards");
  }
  if (result) throw ErrorException(*result);
  return destination;
}

}  // namespace qm
