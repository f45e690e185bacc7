// Error values of the library and its one deliberate way of stopping the program.
//
// Operations that are documented to fail with an error throw `ErrorException`, which carries
// an `Error`: a domain, a code and a user-info map (localised description, failure reason and
// an optional underlying error). Everything else returns neutral results instead of throwing.
// Programmer errors that must not go unnoticed (an impossible calendar result, an unparsable
// stored colour) end the program through `fatalError`.

#ifndef QMCORE_PLATFORM_ERROR_HPP_
#define QMCORE_PLATFORM_ERROR_HPP_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qm {

// Keys of `Error::userInfo()`.
inline constexpr std::string_view kLocalizedDescriptionKey = "NSLocalizedDescription";
inline constexpr std::string_view kLocalizedFailureReasonErrorKey = "NSLocalizedFailureReason";

class Error {
 public:
  Error(std::string domain, std::int64_t code, std::string localizedDescription = {},
        std::string failureReason = {}, std::shared_ptr<const Error> underlying = nullptr);

  const std::string& domain() const { return domain_; }
  std::int64_t code() const { return code_; }
  // Text entries of the user-info map (description and failure reason when given).
  const std::map<std::string, std::string, std::less<>>& userInfo() const { return userInfo_; }
  // The description, or a generic one naming domain and code when none was given.
  std::string localizedDescription() const;
  std::optional<std::string> localizedFailureReason() const;
  // The form errors take in log lines: Error Domain=<domain> Code=<code> "<description>".
  std::string description() const;
  // The error that caused this one, if any.
  const std::shared_ptr<const Error>& underlyingError() const { return underlying_; }

  // The deepest error of the chain of underlying errors: this error itself when it has none.
  // Always present; optional only because callers treat the answer as possibly absent.
  std::optional<Error> leafUnderlyingError() const;
  // The chain in one text: this error's description, then for each underlying error ", " and
  // its description, followed by ": <reason>." when it has a failure reason. This error's own
  // failure reason is left out: A over B (reason R) gives "A, B: R.".
  std::optional<std::string> errorRundownText() const;

 private:
  std::string domain_;
  std::int64_t code_;
  std::map<std::string, std::string, std::less<>> userInfo_;
  std::shared_ptr<const Error> underlying_;
};

// The exception thrown by operations that fail with an `Error`.
class ErrorException : public std::runtime_error {
 public:
  explicit ErrorException(Error error);
  const Error& error() const { return error_; }

 private:
  Error error_;
};

// Prints `message` to stderr and aborts. Reserved for programmer errors.
[[noreturn]] void fatalError(std::string_view message);

}  // namespace qm

#endif  // QMCORE_PLATFORM_ERROR_HPP_
