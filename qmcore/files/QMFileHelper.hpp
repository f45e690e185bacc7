// `QMFileHelper`: file node types, file names made safe and unique, copies with name
// resolution, hard links, pattern copies, file dates and sizes, and the zip of a file or
// folder.
//
//   QMFileHelper::sanitizedFileNameString("a:b/c");                  // "a-b-c"
//   QMFileHelper::uniquedFileUrlForBaseFileUrl("report.pdf", "x", dir); // dir/report.0.x.pdf
//   QMFileHelper::nodeType("/tmp/missing");                          // FileNodeType::nofile
//   QMFileHelper::zip("/tmp/debuglog.log", "/tmp/a.zip", "scratch");  // "/tmp/a.zip"
//
// Operations that are documented to throw throw `ErrorException`; the others return absent
// results or false and print their failures as said.
//
// Thread-safety: no state; operations on different files may run at once.

#ifndef QMCORE_FILES_QMFILEHELPER_HPP_
#define QMCORE_FILES_QMFILEHELPER_HPP_

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Date.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/RegularExpression.hpp"

namespace qm {

class Env;

class QMFileHelper {
 public:
  enum class FileNodeType { nofile, directory, file, symlink, unknown };

  // A rename applied to copied names: every match of `regex` becomes `replacement`, in which
  // "$1" stands for a capture group.
  struct Substitution {
    RegularExpression regex;
    std::string replacement;
  };

  // Success with the link's path, or the error.
  struct LinkResult {
    std::optional<std::filesystem::path> destination;
    std::optional<Error> error;
  };

  QMFileHelper() = delete;

  // The kind of item at `path`, not following a final symbolic link: `nofile` when nothing is
  // there; throws ErrorException for any other failure to read it (a path through a file).
  static FileNodeType nodeType(std::string_view path);
  static bool directoryExistsAtPath(std::string_view path);
  // Creates the folder with its missing parents; on failure prints the error on standard
  // output and returns false.
  static bool createDirectoryAtPath(std::string_view path);
  // Each of the ten characters / \ ? % * | " < > : becomes "-".
  static std::string sanitizedFileNameString(std::string_view name);

  // Size, birth and modification time of the item (not following a final link); absent when
  // it does not exist or the attribute cannot be read (some file systems keep no birth time).
  static std::optional<std::uint64_t> sizeForLocalFilePath(std::string_view filePath);
  static std::optional<Date> creationDateForLocalFilePath(std::string_view filePath);
  static std::optional<Date> modificationDateForLocalFilePath(std::string_view filePath);

  // folder / "<name>.<n>.<suffix>.<extension>" for the first n from 0 at which nothing
  // exists; absent when n = 0 ... 10001 are all taken. A base such as ".gpx" (no extension,
  // name starting with a dot) is treated as "file.gpx".
  static std::optional<std::filesystem::path> uniquedFileUrlForBaseFileUrl(
      const std::filesystem::path& baseFileUrl, std::string_view fileSuffix,
      const std::filesystem::path& folderUrl);
  // Copies the file at `filePath` into `targetFolder` / `folderName` (created when missing)
  // under a unique name made from `fileName` and `fileSuffix`. On a copy failure prints
  // "eror when saving file: <error>" and returns nothing.
  static std::optional<std::filesystem::path> copyFileWithNameResolution(
      std::string_view fileName, std::string_view fileSuffix, std::string_view filePath,
      std::string_view folderName, const std::filesystem::path& targetFolder);
  // A hard link `directory` / `name` to the file, replacing whatever was there.
  static LinkResult createLinkToFile(const std::filesystem::path& file, std::string_view name,
                                     const std::filesystem::path& directory);
  // Copies every entry under `from` (any depth) whose relative path `pattern` matches to `to`
  // / its relative path, renamed by `substituting` when given. Throws ErrorException on the
  // first failed copy.
  static void copyFiles(const RegularExpression& pattern, const std::filesystem::path& from,
                        const std::filesystem::path& to,
                        const std::optional<Substitution>& substituting = std::nullopt);
  static std::string reWriteFileName(std::string_view name,
                                     const std::optional<Substitution>& substituting);

  // Writes a zip archive of `source` to `toFileAt` (default: `source` + ".zip") and returns
  // its path. A folder is zipped as it is; a file is first copied into the scratch folder
  // temporary directory / `zipDirName`, so the archive's top-level folder is `zipDirName`
  // holding the file; the scratch folder is removed afterwards. An item already at `toFileAt`
  // is kept, never replaced. Throws ErrorException when the archive cannot be made or copied to
  // `toFileAt` (File exists when an item is there), after printing "zipping failed" or
  // "zipping succeeded but copying the zip file failed" on the console log. The temporary
  // directory is `env`'s.
  static std::filesystem::path zip(const std::filesystem::path& source,
                                   const std::optional<std::filesystem::path>& toFileAt,
                                   std::string_view zipDirName);
  static std::filesystem::path zip(const std::filesystem::path& source,
                                   const std::optional<std::filesystem::path>& toFileAt,
                                   std::string_view zipDirName, const Env& env);
};

using FileNodeType = QMFileHelper::FileNodeType;

// "nofile", "directory", "file", "symlink", "unknown".
std::string_view fileNodeTypeName(FileNodeType type);

}  // namespace qm

#endif  // QMCORE_FILES_QMFILEHELPER_HPP_
