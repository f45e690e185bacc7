#include "qmcore/platform/InvariantFormat.hpp"

#include <locale.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>

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

// The C library's vsnprintf in the POSIX locale, for every format.
std::string printfInPosixLocale(const char* format, va_list arguments) {
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

// A text of bounded length being written; `fits()` turns false for good once a piece did not fit.
class BoundedText {
 public:
  BoundedText(char* data, size_t capacity) : data_(data), capacity_(capacity) {}

  void append(const char* text, size_t length) {
    if (!fits_ || length > capacity_ - size_) {
      fits_ = false;
      return;
    }
    std::memcpy(data_ + size_, text, length);
    size_ += length;
  }
  void fill(char c, size_t count) {
    if (!fits_ || count > capacity_ - size_) {
      fits_ = false;
      return;
    }
    std::memset(data_ + size_, c, count);
    size_ += count;
  }
  bool fits() const { return fits_; }
  size_t size() const { return size_; }

 private:
  char* data_;
  size_t capacity_;
  size_t size_ = 0;
  bool fits_ = true;
};

// One conversion's flags, width and precision (-1 when absent).
struct Conversion {
  bool plus = false;
  bool zero = false;
  int width = -1;
  int precision = -1;
};

// Writes a number text (`body` with its '-' if any) with printf's '+', '0' and width.
void appendNumber(BoundedText& out, const Conversion& c, const char* body, size_t length) {
  const bool negative = length > 0 && body[0] == '-';
  const char* sign = negative ? "-" : (c.plus ? "+" : "");
  const size_t signLength = std::strlen(sign);
  const size_t digits = negative ? length - 1 : length;
  const size_t total = signLength + digits;
  const size_t padding =
      c.width > 0 && static_cast<size_t>(c.width) > total ? c.width - total : size_t{0};
  if (!c.zero) out.fill(' ', padding);
  out.append(sign, signLength);
  if (c.zero) out.fill('0', padding);
  out.append(negative ? body + 1 : body, digits);
}

int readNumber(const char*& p) {
  int value = 0;
  while (*p >= '0' && *p <= '9' && value < 10000) value = value * 10 + (*p++ - '0');
  return value;
}

// printf of the conversions the library's texts use (%s, %c, %d and %f with the flags '+' and
// '0', a width and a precision, and %%) written without the C library, whose printf is slow
// and reads the locale. Absent for any other format, a text longer than `capacity`, a
// non-finite number or a null string: the caller then asks the C library.
std::optional<size_t> formatSimple(char* data, size_t capacity, const char* format,
                                   va_list arguments) {
  BoundedText out(data, capacity);
  const char* p = format;
  while (*p != '\0') {
    const char* literal = p;
    while (*p != '\0' && *p != '%') ++p;
    out.append(literal, static_cast<size_t>(p - literal));
    if (*p == '\0') break;
    ++p;  // '%'
    Conversion c;
    for (;; ++p) {
      if (*p == '+') {
        c.plus = true;
      } else if (*p == '0') {
        c.zero = true;
      } else {
        break;
      }
    }
    if (*p >= '1' && *p <= '9') c.width = readNumber(p);
    if (*p == '.') {
      ++p;
      if (*p == '*') {
        ++p;
        c.precision = va_arg(arguments, int);
        if (c.precision < 0) c.precision = -1;  // as if none was given
      } else {
        c.precision = readNumber(p);
      }
    }
    char number[128];
    switch (*p++) {
      case '%':
        if (c.plus || c.zero || c.width >= 0 || c.precision >= 0) return std::nullopt;
        out.append("%", 1);
        break;
      case 'd':
      case 'i': {
        if (c.precision >= 0) return std::nullopt;
        const char* end = std::to_chars(number, number + sizeof number, va_arg(arguments, int)).ptr;
        appendNumber(out, c, number, static_cast<size_t>(end - number));
        break;
      }
      case 'f': {
        const double value = va_arg(arguments, double);
        if (!std::isfinite(value)) return std::nullopt;
        const auto [end, error] =
            std::to_chars(number, number + sizeof number, value, std::chars_format::fixed,
                          c.precision < 0 ? 6 : c.precision);
        if (error != std::errc()) return std::nullopt;
        appendNumber(out, c, number, static_cast<size_t>(end - number));
        break;
      }
      case 's': {
        const char* text = va_arg(arguments, const char*);
        if (text == nullptr || c.plus || c.zero) return std::nullopt;
        const size_t length =
            c.precision < 0 ? std::strlen(text) : strnlen(text, static_cast<size_t>(c.precision));
        if (c.width > 0 && static_cast<size_t>(c.width) > length) out.fill(' ', c.width - length);
        out.append(text, length);
        break;
      }
      case 'c': {
        const char character = static_cast<char>(va_arg(arguments, int));
        if (c.plus || c.zero || c.precision >= 0) return std::nullopt;
        if (c.width > 1) out.fill(' ', static_cast<size_t>(c.width - 1));
        out.append(&character, 1);
        break;
      }
      default:
        return std::nullopt;
    }
    if (!out.fits()) return std::nullopt;
  }
  if (!out.fits()) return std::nullopt;
  return out.size();
}

}  // namespace

std::string invariantFormat(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string result = invariantFormatV(format, arguments);
  va_end(arguments);
  return result;
}

std::string invariantFormatV(const char* format, va_list arguments) {
  char buffer[256];
  va_list copy;
  va_copy(copy, arguments);
  const std::optional<size_t> length = formatSimple(buffer, sizeof buffer, format, copy);
  va_end(copy);
  if (length) return std::string(buffer, *length);
  return printfInPosixLocale(format, arguments);
}

}  // namespace qm
