// File-system failures as `Error`s: the one place where errno values and std::error_codes of
// the file utilities become the library's error type.
//
//   Error e = qm::posixFileError(ENOENT, "/tmp/missing");
//   e.domain();                   // "NSPOSIXErrorDomain"
//   e.code();                     // 2 (ENOENT: the platform's "no such file")
//   e.localizedDescription();     // "No such file or directory: /tmp/missing"

#ifndef QMCORE_FILES_FILEERROR_HPP_
#define QMCORE_FILES_FILEERROR_HPP_

#include <string_view>
#include <system_error>

#include "qmcore/platform/Error.hpp"

namespace qm {

inline constexpr std::string_view kPOSIXErrorDomain = "NSPOSIXErrorDomain";

// An error of the POSIX domain for `errnum`, described by the C library, followed by ": " and
// the path when one is given.
Error posixFileError(int errnum, std::string_view path = {});
// The same for an error code of std::filesystem (its value is an errno value).
Error posixFileError(const std::error_code& code, std::string_view path = {});

}  // namespace qm

#endif  // QMCORE_FILES_FILEERROR_HPP_
