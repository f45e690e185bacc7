// Writing a whole file so that readers see either the old file or the complete new one.

#ifndef QMCORE_FILES_ATOMICWRITE_HPP_
#define QMCORE_FILES_ATOMICWRITE_HPP_

#include <filesystem>
#include <optional>
#include <string_view>

#include "qmcore/platform/Error.hpp"

namespace qm {

// The domain of errors that carry an errno value as their code.
inline constexpr std::string_view kPosixErrorDomain = "NSPOSIXErrorDomain";

// Writes `data` to a new file beside `path`, flushes it to disk and renames it over `path`.
// On failure nothing at `path` changes, no temporary file is left, and the error (domain
// kPosixErrorDomain, code errno) comes back.
std::optional<Error> writeDataAtomically(const std::filesystem::path& path, std::string_view data);

}  // namespace qm

#endif  // QMCORE_FILES_ATOMICWRITE_HPP_
