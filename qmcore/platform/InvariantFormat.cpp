#include "qmcore/platform/InvariantFormat.hpp"

#include <locale.h>
#include <clocale>
#include <cstdio>

namespace qm {
namespace {

// Puts the POSIX locale in force on this thread for the lifetime of the object.
class ScopedPosixLocale {
 public:
  ScopedPosixLocale() : previous_(uselocale(posix())) {}
  ~ScopedPosixLocale() { uselocale(previous_); }
  ScopedPosixLocale(const ScopedPosixLocale&) = delete;
  ScopedPosixLocale& operator=(const ScopedPosixLocale&) = delete;

 private:
  static locale_t posix() {
    // Made once and kept for the process: freeing it could race with another thread's use.
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
  }
  locale_t previous_;
};

}  // namespace

std::string invariantFormat(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string result = invariantFormatV(format, arguments);
  va_end(arguments);
  return result;
}

std::string invariantFormatV(const char* format, va_list arguments) {
  const ScopedPosixLocale posix;
  char buffer[256];
  va_list copy;
  va_copy(copy, arguments);
  const int length = std::vsnprintf(buffer, sizeof buffer, format, copy);
  va_end(copy);
  if (length < 0) return {};
  if (static_cast<size_t>(length) < sizeof buffer) return std::string(buffer, length);
  std::string result(static_cast<size_t>(length), '\0');
  std::vsnprintf(result.data(), result.size() + 1, format, arguments);
  return result;
}

}  // namespace qm
