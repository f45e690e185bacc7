// Writing zip archives: the library's one use of libzip, behind a small interface.
//
//   qm::writeZipArchive("/tmp/logs", "/tmp/logs.zip");
//   // logs.zip holds "logs/", "logs/a.txt", "logs/sub/", "logs/sub/b.txt"
//
// The archive is a standard zip (deflate, level 6, UTF-8 names) of the item and everything
// under it, folder structure kept, readable by `unzip` and Python's `zipfile`. Entry names
// begin with the item's own name, so unpacking gives back the item itself. Symbolic links are
// followed; entries are added in name order, so the same tree gives the same entry list.
//
// Thread-safety: calls on different archives may run at once.

#ifndef QMCORE_PLATFORM_ZIPARCHIVE_HPP_
#define QMCORE_PLATFORM_ZIPARCHIVE_HPP_

#include <filesystem>

namespace qm {

// The error domain of failures reported by the zip library.
inline constexpr const char* kZipErrorDomain = "libzip";

// Writes a zip archive of `item` (a file or a folder) to `archive`, replacing a file there.
// Throws ErrorException when the item cannot be read or the archive cannot be written; no
// partial archive is left at `archive` then (libzip writes to a temporary file beside it and
// renames it only once complete).
void writeZipArchive(const std::filesystem::path& item, const std::filesystem::path& archive);

}  // namespace qm

#endif  // QMCORE_PLATFORM_ZIPARCHIVE_HPP_
