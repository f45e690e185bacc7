#include "qmcore/files/QMFileHelper.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "qmcore/files/FileError.hpp"
#include "qmcore/files/internal/FileOps.hpp"

namespace qm {

namespace fs = std::filesystem;

namespace {

std::optional<struct statx> statItem(std::string_view path, unsigned int mask) {
  struct statx info {};
  const std::string file(path);
  if (::statx(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, mask, &info) != 0) return std::nullopt;
  return info;
}

Date dateOf(const struct statx_timestamp& t) {
  return Date::fromUnixSeconds(static_cast<double>(t.tv_sec) + t.tv_nsec / 1e9);
}

}  // namespace

std::string_view fileNodeTypeName(FileNodeType type) {
  switch (type) {
    case FileNodeType::nofile:
      return "nofile";
    case FileNodeType::directory:
      return "directory";
    case FileNodeType::file:
      return "file";
    case FileNodeType::symlink:
      return "symlink";
    case FileNodeType::unknown:
      break;
  }
  return "unknown";
}

FileNodeType QMFileHelper::nodeType(std::string_view path) {
  struct stat info {};
  const std::string file(path);
  if (::lstat(file.c_str(), &info) != 0) {
    if (errno == ENOENT) return FileNodeType::nofile;
    throw ErrorException(posixFileError(errno, path));
  }
  if (S_ISDIR(info.st_mode)) return FileNodeType::directory;
  if (S_ISREG(info.st_mode)) return FileNodeType::file;
  if (S_ISLNK(info.st_mode)) return FileNodeType::symlink;
  return FileNodeType::unknown;
}

bool QMFileHelper::directoryExistsAtPath(std::string_view path) {
  return internal::isDirectory(fs::path(path));
}

bool QMFileHelper::createDirectoryAtPath(std::string_view path) {
  if (const std::optional<Error> failed = internal::createDirectories(fs::path(path))) {
    const std::string line = failed->description() + "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
    return false;
  }
  return true;
}

std::string QMFileHelper::sanitizedFileNameString(std::string_view name) {
  static constexpr std::string_view kForbidden = "/\\?%*|\"<>:";
  std::string out(name);
  for (char& c : out) {
    if (kForbidden.find(c) != std::string_view::npos) c = '-';
  }
  return out;
}

std::optional<std::uint64_t> QMFileHelper::sizeForLocalFilePath(std::string_view filePath) {
  const auto info = statItem(filePath, STATX_SIZE);
  if (!info || (info->stx_mask & STATX_SIZE) == 0) return std::nullopt;
  return info->stx_size;
}

std::optional<Date> QMFileHelper::creationDateForLocalFilePath(std::string_view filePath) {
  const auto info = statItem(filePath, STATX_BTIME);
  if (!info || (info->stx_mask & STATX_BTIME) == 0) return std::nullopt;
  return dateOf(info->stx_btime);
}

std::optional<Date> QMFileHelper::modificationDateForLocalFilePath(std::string_view filePath) {
  const auto info = statItem(filePath, STATX_MTIME);
  if (!info || (info->stx_mask & STATX_MTIME) == 0) return std::nullopt;
  return dateOf(info->stx_mtime);
}

std::optional<fs::path> QMFileHelper::uniquedFileUrlForBaseFileUrl(const fs::path& baseFileUrl,
                                                                   std::string_view fileSuffix,
                                                                   const fs::path& folderUrl) {
  fs::path base = baseFileUrl;
  if (!base.has_filename()) base = base.parent_path();
  const std::string last = base.filename().string();
  // The path extension: what follows the last dot, unless the dot starts or ends the name.
  const std::size_t dot = last.rfind('.');
  const bool split = dot != std::string::npos && dot != 0 && dot + 1 != last.size();
  std::string name = split ? last.substr(0, dot) : last;
  std::string extension = split ? last.substr(dot + 1) : std::string();
  if (extension.empty() && !name.empty() && name[0] == '.') {
    extension = name.substr(1);
    name = "file";
  }
  for (int n = 0; n <= 10001; ++n) {
    std::string candidate = name + "." + std::to_string(n) + "." + std::string(fileSuffix);
    if (!extension.empty()) candidate += "." + extension;
    const fs::path path = folderUrl / candidate;
    if (!internal::itemExists(path)) return path;
  }
  return std::nullopt;
}

std::optional<fs::path> QMFileHelper::copyFileWithNameResolution(std::string_view fileName,
                                                                 std::string_view fileSuffix,
                                                                 std::string_view filePath,
                                                                 std::string_view folderName,
                                                                 const fs::path& targetFolder) {
  const fs::path folder = targetFolder / fs::path(folderName);
  if (!directoryExistsAtPath(folder.string())) createDirectoryAtPath(folder.string());
  const std::optional<fs::path> destination =
      uniquedFileUrlForBaseFileUrl(fs::path(fileName), fileSuffix, folder);
  if (!destination) return std::nullopt;
  if (const std::optional<Error> failed = internal::copyItem(fs::path(filePath), *destination)) {
    const std::string line = "eror when saving file: " + failed->description() + "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
    return std::nullopt;
  }
  return destination;
}

QMFileHelper::LinkResult QMFileHelper::createLinkToFile(const fs::path& file, std::string_view name,
                                                        const fs::path& directory) {
  const fs::path destination = directory / fs::path(name);
  std::error_code error;
  if (fs::exists(fs::symlink_status(destination, error))) {
    static_cast<void>(internal::removeItem(destination));
  }
  fs::create_hard_link(file, destination, error);
  if (error) return {std::nullopt, posixFileError(error, file.string())};
  return {destination, std::nullopt};
}

void QMFileHelper::copyFiles(const RegularExpression& pattern, const fs::path& from,
                             const fs::path& to, const std::optional<Substitution>& substituting) {
  for (const std::string& relative : internal::walkRelativePaths(from)) {
    if (!pattern.firstMatch(relative)) continue;
    if (const std::optional<Error> failed =
            internal::copyItem(from / relative, to / reWriteFileName(relative, substituting))) {
      throw ErrorException(*failed);
    }
  }
}

std::string QMFileHelper::reWriteFileName(std::string_view name,
                                          const std::optional<Substitution>& substituting) {
  if (!substituting) return std::string(name);
  return substituting->regex.replacingMatches(name, substituting->replacement);
}

}  // namespace qm
