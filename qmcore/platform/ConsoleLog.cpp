#include "qmcore/platform/ConsoleLog.hpp"

#include <sys/syscall.h>
#include <unistd.h>

#include "qmcore/platform/DateFormatter.hpp"
#include "qmcore/platform/Env.hpp"

namespace qm {

std::string consoleLogLine(std::string_view text) {
  // Made once: the stamp is the same pattern for every line, in the current zone.
  static const DateFormatter stamp("yyyy-MM-dd HH:mm:ss.SSS", "en_US_POSIX");
  const long tid = ::syscall(SYS_gettid);
  std::string line = stamp.format(Env::Default().now());
  line += " qmcore[";
  line += std::to_string(::getpid());
  line += ':';
  line += std::to_string(tid);
  line += "] ";
  line += text;
  return line;
}

void consoleLog(std::string_view text) {
  std::string line = consoleLogLine(text);
  line += '\n';
  // One write per line, retried on short writes, so concurrent lines stay whole.
  const char* data = line.data();
  std::size_t left = line.size();
  while (left > 0) {
    const ssize_t written = ::write(STDERR_FILENO, data, left);
    if (written <= 0) return;
    data += written;
    left -= static_cast<std::size_t>(written);
  }
}

}  // namespace qm
