// The file-system steps of the file logger, each as the logger's text describes it: the
// appends with their printed failure line, the reset, the attribute reads that the rotation
// needs, the archive listing and the texts in which paths, dates and errors appear in its
// diagnostics. Internal to the logger.

#ifndef QMCORE_FILES_QMFILELOGGERIO_HPP_
#define QMCORE_FILES_QMFILELOGGERIO_HPP_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/platform/Date.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm::internal {

// An error of the POSIX domain for `errnum`, described by the C library.
Error posixError(int errnum);

// "Error Domain=<domain> Code=<code> "<description>"", the form errors take in log lines.
std::string errorDescription(const Error& error);
// "file:///tmp/debuglog.log".
std::string fileURLDescription(const std::filesystem::path& path);
// "2001-01-01 00:00:00 +0000": the default description of a date, in UTC.
std::string dateDescription(Date date);
// A new random (version 4) UUID in upper case: "E621E1F8-C36C-495A-93FC-0C247A3E6E5F".
std::string newUUIDString();

// Whether anything exists at `path` (following symbolic links).
bool fileExists(const std::string& path);
// Size, birth and modification time of the item at `path`; absent when unreadable.
std::optional<std::uint64_t> fileSize(const std::string& path);
std::optional<Date> creationDate(const std::string& path);
std::optional<Date> modificationDate(const std::string& path);
// Creates the folder and its missing parents unless it is a directory already; a failure is
// printed on the console.
void createDirectory(const std::filesystem::path& path);
// The entry names of a folder, in the order the system lists them; throws ErrorException.
std::vector<std::string> listDirectory(const std::filesystem::path& folder);

// Appends `bytes` (the text of `lineCount` log lines) to the file at `path`, creating it when
// missing, with one open and one write. When the file cannot be opened, prints the failure
// line on standard output once for each of the lines, as appending them one by one would.
void appendToLogFile(const std::string& path, std::string_view bytes, std::size_t lineCount);
// Removes the file at `path` (errors ignored) and creates it again, empty.
void resetLogFile(const std::string& path);

}  // namespace qm::internal

#endif  // QMCORE_FILES_QMFILELOGGERIO_HPP_
