// The file-system steps that the file utilities share, with the platform file manager's
// rules: a move or copy never replaces an existing item, a folder is moved or copied with its
// contents, and failures come back as `Error`s (FileError.hpp).

#ifndef QMCORE_FILES_INTERNAL_FILEOPS_HPP_
#define QMCORE_FILES_INTERNAL_FILEOPS_HPP_

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/platform/Error.hpp"

namespace qm::internal {

// Every entry under `folder` at any depth, relative to it, parents before their contents,
// siblings in name order. Empty when the folder cannot be listed.
std::vector<std::string> walkRelativePaths(const std::filesystem::path& folder);

std::optional<Error> removeItem(const std::filesystem::path& path);
std::optional<Error> moveItem(const std::filesystem::path& from, const std::filesystem::path& to);
std::optional<Error> copyItem(const std::filesystem::path& from, const std::filesystem::path& to);
std::optional<Error> createDirectories(const std::filesystem::path& path);
// Whether `path` is an existing folder (following symbolic links).
bool isDirectory(const std::filesystem::path& path);
// Whether anything exists at `path` (following symbolic links).
bool itemExists(const std::filesystem::path& path);

}  // namespace qm::internal

#endif  // QMCORE_FILES_INTERNAL_FILEOPS_HPP_
