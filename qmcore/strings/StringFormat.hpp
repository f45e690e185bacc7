// Fills the object placeholders of the library's localised format strings.
//
// The string tables hold formats written for the platform's string formatting: "%@" takes the
// next argument, "%1$@" ... "%9$@" a numbered one (so that a translation may reorder them),
// "%%" is a percent sign. Only text arguments exist here; numbers are formatted before.
//
//   qm::formatLocalized("Switch to %1$@ from %2$@", {"miles", "2000 ft"});
//   // "Switch to miles from 2000 ft"
//
// A placeholder without an argument becomes empty; any other "%" sequence stays as written.

#ifndef QMCORE_STRINGS_STRINGFORMAT_HPP_
#define QMCORE_STRINGS_STRINGFORMAT_HPP_

#include <initializer_list>
#include <string>
#include <string_view>

namespace qm {

std::string formatLocalized(std::string_view format,
                            std::initializer_list<std::string_view> arguments);

}  // namespace qm

#endif  // QMCORE_STRINGS_STRINGFORMAT_HPP_
