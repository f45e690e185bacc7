// `FileHelper`: the older, path-based file operations (delete, rename, create, move, copy,
// extended attributes).
//
//   qm::FileHelper::createDirectoryPath("/tmp/a/b");
//   qm::FileHelper::moveFile("/tmp/x.gpx", "/tmp/a/b", "y.gpx");   // true
//   qm::FileHelper::setXAttrStringValue("v1", "com.app.version", "/tmp/a/b/y.gpx");
//
// Failures are reported on the console log (ConsoleLog.hpp) with the texts below and the
// operation carries on or ends; nothing is thrown. Errors appear in those lines in the form of
// `Error::description()`.
//
// Walks ("walk the tree") list every entry under a folder, at any depth, by its path relative
// to that folder ("sub/a.txt"), parents before their contents; the list is taken before any
// entry is touched. A pattern matches when it has at least one match anywhere in that relative
// path.
//
// Thread-safety: no state; operations on different files may run at once.

#ifndef QMCORE_FILES_FILEHELPER_HPP_
#define QMCORE_FILES_FILEHELPER_HPP_

#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/RegularExpression.hpp"

namespace qm {

class FileHelper {
 public:
  FileHelper() = delete;

  // Removes the entries of the folder (one level) except its sub-folders, or with them when
  // `includeSubDirectories`. A failed removal prints "oops, error on remove file: <error>,
  // file: <path>" and the others are still tried.
  static void deleteAllFilesAtPath(std::string_view path, bool includeSubDirectories = false);
  // Removes the folder and its contents when `path` is an existing folder; a failure prints
  // "oops, error on remove file: <error>, file: <path>".
  static void deleteDirectoryAtPath(std::string_view path);
  // When `path` is an existing folder, moves it to its parent / `name`, removing whatever was
  // there first (errors of that removal ignored); a failed move prints the error's
  // description.
  static void ifExistsRenameDirectoryAtPath(std::string_view path, std::string_view name);
  // Creates the folder with its missing parents unless it is an existing folder; a failure
  // prints "error creating a directory: <path>, <description>".
  static void createDirectoryPath(std::string_view path);
  // Removes every entry of the walk under `path` that `pattern` matches; errors are ignored.
  static void removeFiles(const RegularExpression& pattern, std::string_view path);
  // Moves every matching entry to the same relative path under `toPath`, printing "Moving
  // file from <source>, to <target>" first; a failure prints "Failed to move the file:
  // <source> to <target>. Error: <error>".
  static void moveFiles(const RegularExpression& pattern, std::string_view path,
                        std::string_view toPath);
  // Moves the file to `destinationDir` / `fileName`, creating the folder when needed (a move
  // never replaces an existing item). A failure prints "oops, error on move file: <error>".
  static bool moveFile(std::string_view file, std::string_view destinationDir,
                       std::string_view fileName);
  // Moves (copies) every entry of the walk under `dir` to the same relative path under
  // `destinationDir`, created when needed. A folder carries its contents along, so the walk's
  // later entries inside it fail. Failures print "oops, error on move file: <error>" ("oops,
  // error on copy file: <error>").
  static void moveAllFilesFromDir(std::string_view dir, std::string_view destinationDir);
  static void copyAllFilesFromDir(std::string_view dir, std::string_view destinationDir);

  // The extended attribute `key` of the file at `path`, decoded as UTF-8; absent when it
  // cannot be read. A key without a namespace ("com.app.v") is stored as "user." + key.
  static std::optional<std::string> xattrStringValueForKey(std::string_view key,
                                                           std::string_view path);
  // Writes the attribute. The byte count written is the value's length in UTF-16 units, not
  // its UTF-8 byte count, so a value with non-ASCII characters is cut short. True on success.
  static bool setXAttrStringValue(std::string_view value, std::string_view key,
                                  std::string_view path);
};

}  // namespace qm

#endif  // QMCORE_FILES_FILEHELPER_HPP_
