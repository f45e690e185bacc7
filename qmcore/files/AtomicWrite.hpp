// Writing a whole file so that readers see either the old file or the complete new one.

#ifndef QMCORE_FILES_ATOMICWRITE_HPP_
#define QMCORE_FILES_ATOMICWRITE_HPP_

#include <filesystem>
#include <optional>
#include <string_view>

#include "qmcore/files/FileError.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm {

// Writes `data` to a new file beside `path`, flushes it to disk and renames it over `path`.
// On failure nothing at `path` changes, no temporary file is left, and the error (domain
// kPOSIXErrorDomain, code errno) comes back.
std::optional<Error> writeDataAtomically(const std::filesystem::path& path, std::string_view data);

}  // namespace qm

#endif  // QMCORE_FILES_ATOMICWRITE_HPP_
