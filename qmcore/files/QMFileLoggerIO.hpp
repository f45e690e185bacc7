// The file-system steps of the file logger: the appends with their printed failure line, the
// reset, the archive listing, and the texts in which paths, dates and errors appear in its
// reports. Internal to the logger.

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
