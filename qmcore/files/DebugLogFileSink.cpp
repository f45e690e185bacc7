// The facade's default file sink. The file logger plugs in here: this is the only function
// that changes when it does, so callers of `debuglog` never see the connection.

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/files/QMFileLogger.hpp"

namespace qm::internal {

void appendToDebugLogFile(std::string_view fileName, std::string message) {
  QMFileLogger::shared().logTofile(fileName, message);
}

}  // namespace qm::internal
