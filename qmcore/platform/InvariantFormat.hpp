// printf-style texts in the POSIX locale, whatever the C library's locale is.
//
// Invariant texts (storage, interchange, the library's fixed-precision numbers) must always use
// "." as the decimal separator, even after a host app calls `setlocale(LC_ALL, "de_DE.UTF-8")`.
// `invariantFormat` writes what printf writes in the "C" locale, with printf's rounding (the
// exact binary value, ties to even):
//
//   qm::invariantFormat("%.2f%s", 1.005, "km");  // "1.00km" (1.005 is 1.00499999...)
//   qm::invariantFormat("%+.2f", 0.0);           // "+0.00"
//
// The conversions of the library's texts (%s, %c, %d, %f with the flags '+' and '0', a width
// and a precision, %%) are written without the C library, about twice as fast as snprintf;
// every other format goes to vsnprintf with the POSIX locale in force for the call.
//
// Thread-safe: nothing is shared, and the locale switch of the fallback is per thread.

#ifndef QMCORE_PLATFORM_INVARIANTFORMAT_HPP_
#define QMCORE_PLATFORM_INVARIANTFORMAT_HPP_

#include <cstdarg>
#include <string>

namespace qm {

// The text printf would write for `format` in the POSIX locale. Text of any length.
[[gnu::format(printf, 1, 2)]] std::string invariantFormat(const char* format, ...);

// The same with a va_list.
std::string invariantFormatV(const char* format, va_list arguments);

}  // namespace qm

#endif  // QMCORE_PLATFORM_INVARIANTFORMAT_HPP_
