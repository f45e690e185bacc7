#include "qmcore/platform/Error.hpp"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace qm {

Error::Error(std::string domain, std::int64_t code, std::string localizedDescription,
             std::string failureReason, std::shared_ptr<const Error> underlying)
    : domain_(std::move(domain)), code_(code), underlying_(std::move(underlying)) {
  if (!localizedDescription.empty()) {
    userInfo_.emplace(kLocalizedDescriptionKey, std::move(localizedDescription));
  }
  if (!failureReason.empty()) {
    userInfo_.emplace(kLocalizedFailureReasonErrorKey, std::move(failureReason));
  }
}

std::string Error::localizedDescription() const {
  if (const auto it = userInfo_.find(kLocalizedDescriptionKey); it != userInfo_.end()) {
    return it->second;
  }
  return "The operation couldn't be completed. (" + domain_ + " error " + std::to_string(code_) +
         ".)";
}

std::optional<std::string> Error::localizedFailureReason() const {
  if (const auto it = userInfo_.find(kLocalizedFailureReasonErrorKey); it != userInfo_.end()) {
    return it->second;
  }
  return std::nullopt;
}

std::string Error::description() const {
  return "Error Domain=" + domain_ + " Code=" + std::to_string(code_) + " \"" +
         localizedDescription() + "\"";
}

std::optional<Error> Error::leafUnderlyingError() const {
  const Error* current = this;
  while (current->underlying_ != nullptr) current = current->underlying_.get();
  return *current;
}

std::optional<std::string> Error::errorRundownText() const {
  std::string text = localizedDescription();
  for (const Error* under = underlying_.get(); under != nullptr; under = under->underlying_.get()) {
    text += ", ";
    text += under->localizedDescription();
    if (const std::optional<std::string> reason = under->localizedFailureReason()) {
      text += ": ";
      text += *reason;
      text += '.';
    }
  }
  return text;
}

ErrorException::ErrorException(Error error)
    : std::runtime_error(error.localizedDescription()), error_(std::move(error)) {}

void fatalError(std::string_view message) {
  std::fprintf(stderr, "Fatal error: %.*s\n", static_cast<int>(message.size()), message.data());
  std::fflush(stderr);
  std::abort();
}

}  // namespace qm
