#include "qmcore/files/FileError.hpp"

#include <cstring>
#include <string>

namespace qm {

Error posixFileError(int errnum, std::string_view path) {
  std::string description = std::generic_category().message(errnum);
  if (!path.empty()) {
    description += ": ";
    description += path;
  }
  return Error(std::string(kPOSIXErrorDomain), errnum, std::move(description));
}

Error posixFileError(const std::error_code& code, std::string_view path) {
  return posixFileError(code.value(), path);
}

}  // namespace qm
