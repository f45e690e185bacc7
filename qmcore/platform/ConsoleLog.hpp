// The library's console log, the stand-in for the phone platform's `NSLog`: the older file
// utilities report their failures here, unconditionally (not gated by the debug-log switch).
//
//   qm::consoleLog("zipping failed");
//   // stderr: "2026-11-23 21:55:16.123 qmcore[4242:4243] zipping failed"
//
// Each call writes one whole line on stderr: the local time to the millisecond, the process
// name "qmcore", the process and thread ids, and the text. A line feed is added; one inside
// the text is written as it is.
//
// Thread-safety: may be called from any thread; lines are written with one write each, so
// lines from different threads do not interleave.

#ifndef QMCORE_PLATFORM_CONSOLELOG_HPP_
#define QMCORE_PLATFORM_CONSOLELOG_HPP_

#include <string>
#include <string_view>

namespace qm {

void consoleLog(std::string_view text);

// The line `consoleLog` writes for `text` at this moment, without the line feed.
std::string consoleLogLine(std::string_view text);

}  // namespace qm

#endif  // QMCORE_PLATFORM_CONSOLELOG_HPP_
