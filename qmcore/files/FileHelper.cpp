#include "qmcore/files/FileHelper.hpp"

#include <sys/xattr.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "qmcore/files/FileError.hpp"
#include "qmcore/files/internal/FileOps.hpp"
#include "qmcore/platform/ConsoleLog.hpp"

namespace qm {

namespace fs = std::filesystem;

namespace {

std::string str(std::string_view text) { return std::string(text); }

// Linux keeps user attributes in the "user." namespace; a key naming none goes there.
std::string xattrName(std::string_view key) {
  for (const std::string_view space : {"user.", "trusted.", "security.", "system."}) {
    if (key.substr(0, space.size()) == space) return str(key);
  }
  return "user." + str(key);
}

// The number of UTF-16 units of a UTF-8 text: one per code point, two above U+FFFF (the
// lead bytes 0xF0 to 0xF7). Invalid bytes count as one unit each, as a replacement would.
std::size_t utf16Length(std::string_view text) {
  std::size_t units = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) ++units;
    if (byte >= 0xF0 && byte <= 0xF7) ++units;
  }
  return units;
}

// Well-formed UTF-8: no stray continuation bytes, no overlong forms, no surrogates, nothing
// above U+10FFFF.
bool isValidUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const auto lead = static_cast<unsigned char>(text[i]);
    std::size_t length = 0;
    std::uint32_t code = 0;
    if (lead < 0x80) {
      ++i;
      continue;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2, code = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3, code = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4, code = lead & 0x07;
    } else {
      return false;
    }
    if (i + length > text.size()) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    if ((length == 3 && (code < 0x800 || (code >= 0xD800 && code <= 0xDFFF))) ||
        (length == 4 && (code < 0x10000 || code > 0x10FFFF))) {
      return false;
    }
    i += length;
  }
  return true;
}

void moveOrCopyAll(std::string_view dir, std::string_view destinationDir, bool copy) {
  const fs::path source(dir);
  const fs::path destination(destinationDir);
  FileHelper::createDirectoryPath(destinationDir);
  for (const std::string& relative : internal::walkRelativePaths(source)) {
    const std::optional<Error> error =
        copy ? internal::copyItem(source / relative, destination / relative)
             : internal::moveItem(source / relative, destination / relative);
    if (error) {
      consoleLog((copy ? "oops, error on copy file: " : "oops, error on move file: ") +
                 error->description());
    }
  }
}

}  // namespace

void FileHelper::deleteAllFilesAtPath(std::string_view path, bool includeSubDirectories) {
  const fs::path folder(path);
  std::error_code error;
  std::vector<fs::path> entries;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    entries.push_back(it->path());
  }
  for (const fs::path& entry : entries) {
    if (!includeSubDirectories && internal::isDirectory(entry)) continue;
    if (const std::optional<Error> failed = internal::removeItem(entry)) {
      consoleLog("oops, error on remove file: " + failed->description() +
                 ", file: " + entry.string());
    }
  }
}

void FileHelper::deleteDirectoryAtPath(std::string_view path) {
  if (!internal::isDirectory(fs::path(path))) return;
  if (const std::optional<Error> failed = internal::removeItem(fs::path(path))) {
    consoleLog("oops, error on remove file: " + failed->description() + ", file: " + str(path));
  }
}

void FileHelper::ifExistsRenameDirectoryAtPath(std::string_view path, std::string_view name) {
  const fs::path source(path);
  if (!internal::isDirectory(source)) return;
  fs::path parent =
      source.has_filename() ? source.parent_path() : source.parent_path().parent_path();
  const fs::path target = parent / fs::path(name);
  static_cast<void>(internal::removeItem(target));
  if (const std::optional<Error> failed = internal::moveItem(source, target)) {
    consoleLog(failed->localizedDescription());
  }
}

void FileHelper::createDirectoryPath(std::string_view path) {
  if (internal::isDirectory(fs::path(path))) return;
  if (const std::optional<Error> failed = internal::createDirectories(fs::path(path))) {
    consoleLog("error creating a directory: " + str(path) + ", " + failed->localizedDescription());
  }
}

void FileHelper::removeFiles(const RegularExpression& pattern, std::string_view path) {
  const fs::path folder(path);
  for (const std::string& relative : internal::walkRelativePaths(folder)) {
    if (pattern.firstMatch(relative)) static_cast<void>(internal::removeItem(folder / relative));
  }
}

void FileHelper::moveFiles(const RegularExpression& pattern, std::string_view path,
                           std::string_view toPath) {
  const fs::path folder(path);
  const fs::path target(toPath);
  for (const std::string& relative : internal::walkRelativePaths(folder)) {
    if (!pattern.firstMatch(relative)) continue;
    const std::string from = (folder / relative).string();
    const std::string to = (target / relative).string();
    consoleLog("Moving file from " + from + ", to " + to);
    if (const std::optional<Error> failed = internal::moveItem(from, to)) {
      consoleLog("Failed to move the file: " + from + " to " + to +
                 ". Error: " + failed->description());
    }
  }
}

bool FileHelper::moveFile(std::string_view file, std::string_view destinationDir,
                          std::string_view fileName) {
  createDirectoryPath(destinationDir);
  if (const std::optional<Error> failed =
          internal::moveItem(fs::path(file), fs::path(destinationDir) / fs::path(fileName))) {
    consoleLog("oops, error on move file: " + failed->description());
    return false;
  }
  return true;
}

void FileHelper::moveAllFilesFromDir(std::string_view dir, std::string_view destinationDir) {
  moveOrCopyAll(dir, destinationDir, false);
}

void FileHelper::copyAllFilesFromDir(std::string_view dir, std::string_view destinationDir) {
  moveOrCopyAll(dir, destinationDir, true);
}

std::optional<std::string> FileHelper::xattrStringValueForKey(std::string_view key,
                                                              std::string_view path) {
  const std::string name = xattrName(key);
  const std::string file(path);
  for (;;) {
    const ssize_t size = ::getxattr(file.c_str(), name.c_str(), nullptr, 0);
    if (size < 0) return std::nullopt;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t read = ::getxattr(file.c_str(), name.c_str(), value.data(), value.size());
    if (read < 0 && errno == ERANGE) continue;  // grew between the two calls
    if (read < 0) return std::nullopt;
    value.resize(static_cast<std::size_t>(read));
    if (!isValidUtf8(value)) return std::nullopt;  // bytes that are not text read as absent
    return value;
  }
}

bool FileHelper::setXAttrStringValue(std::string_view value, std::string_view key,
                                     std::string_view path) {
  const std::string name = xattrName(key);
  const std::string file(path);
  const std::size_t count = utf16Length(value);
  return ::setxattr(file.c_str(), name.c_str(), value.data(), count, 0) == 0;
}

}  // namespace qm
