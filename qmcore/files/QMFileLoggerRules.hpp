// The file logger's decisions, kept apart from its file work so that they can be checked on
// their own: when a log is due for rotation, how its archive is named, how far back the archive
// is kept, and which archived logs may be shipped.
//
//   qm::QMFileLoggerRules::isRotationDue(10'000'001, created, now);   // true: too big
//   qm::QMFileLoggerRules::clientPart("ABCDEFGH");                    // "ABCFGH"
//
// Everything here is pure and may be called from any thread.

#ifndef QMCORE_FILES_QMFILELOGGERRULES_HPP_
#define QMCORE_FILES_QMFILELOGGERRULES_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Date.hpp"

namespace qm {

struct QMFileLoggerRules {
  // A log bigger than this many bytes is rotated.
  static constexpr std::uint64_t kMaximumLogSize = 10'000'000;
  // A log older than this many seconds is rotated.
  static constexpr double kMaximumLogAge = 86'400.0;
  // Archived logs older than this many seconds are trimmed.
  static constexpr double kArchiveKeepingTime = 259'200.0;
  // Stands for an absent part of an archive name.
  static constexpr std::string_view kAbsentPart = "NIL";

  // True when a log of `size` bytes created at `creation` is due at `now`: an unknown size is
  // due, so is a size above kMaximumLogSize; otherwise the log is due when it is more than
  // kMaximumLogAge old, counting an unknown creation date as 1970-01-01.
  static bool isRotationDue(std::optional<std::uint64_t> size, std::optional<Date> creation,
                            Date now);

  // The first three and the last three characters (grapheme clusters) of the client
  // identifier, so a short one repeats ("XY" gives "XYXY"); kAbsentPart without one.
  static std::string clientPart(std::optional<std::string_view> clientID);

  // "MD-<modified>-CD-<created>-<log name>-NICK-<nick>-CLIENT-<client part>", without the
  // "zip" extension. Dates are backup-name texts ("20240305_140709"), an unknown one
  // kAbsentPart; so is an absent nickname.
  static std::string archiveName(std::string_view logName,
                                 const std::optional<std::string>& modificationText,
                                 const std::optional<std::string>& creationText,
                                 std::optional<std::string_view> nick,
                                 std::optional<std::string_view> clientID);

  // Archived logs modified strictly before this moment are trimmed at `now`.
  static Date trimCutoff(Date now) { return now.addingTimeInterval(-kArchiveKeepingTime); }

  // Whether an archive entry is offered for shipping, judged on its whole absolute path:
  // entries whose path begins with "shipping" are held back (which an absolute path never
  // does, so every entry is offered).
  static bool isShippable(std::string_view absolutePath);
};

}  // namespace qm

#endif  // QMCORE_FILES_QMFILELOGGERRULES_HPP_
