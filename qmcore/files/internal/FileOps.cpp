#include "qmcore/files/internal/FileOps.hpp"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "qmcore/files/FileError.hpp"

namespace qm::internal {

namespace fs = std::filesystem;

namespace {

void walk(const fs::path& folder, const std::string& prefix, std::vector<std::string>& out) {
  std::error_code error;
  std::vector<std::string> names;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    const std::string relative = prefix.empty() ? name : prefix + "/" + name;
    out.push_back(relative);
    const fs::path child = folder / name;
    if (fs::is_directory(fs::symlink_status(child, error))) walk(child, relative, out);
  }
}

std::optional<Error> failure(const std::error_code& error, const fs::path& path) {
  if (!error) return std::nullopt;
  return posixFileError(error, path.string());
}

}  // namespace

std::vector<std::string> walkRelativePaths(const fs::path& folder) {
  std::vector<std::string> out;
  walk(folder, "", out);
  return out;
}

std::optional<Error> removeItem(const fs::path& path) {
  std::error_code error;
  if (!fs::exists(fs::symlink_status(path, error))) {
    return posixFileError(ENOENT, path.string());
  }
  fs::remove_all(path, error);
  return failure(error, path);
}

std::optional<Error> moveItem(const fs::path& from, const fs::path& to) {
  std::error_code error;
  if (!fs::exists(fs::symlink_status(from, error))) return posixFileError(ENOENT, from.string());
  if (fs::exists(fs::symlink_status(to, error))) return posixFileError(EEXIST, to.string());
  fs::rename(from, to, error);
  if (error == std::errc::cross_device_link) {
    if (std::optional<Error> copied = copyItem(from, to)) return copied;
    fs::remove_all(from, error);
  }
  return failure(error, from);
}

std::optional<Error> copyItem(const fs::path& from, const fs::path& to) {
  std::error_code error;
  if (!fs::exists(fs::symlink_status(from, error))) return posixFileError(ENOENT, from.string());
  if (fs::exists(fs::symlink_status(to, error))) return posixFileError(EEXIST, to.string());
  fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
  return failure(error, from);
}

std::optional<Error> createDirectories(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (!error && !fs::is_directory(path, error)) return posixFileError(ENOTDIR, path.string());
  return failure(error, path);
}

bool isDirectory(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

bool itemExists(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

}  // namespace qm::internal
