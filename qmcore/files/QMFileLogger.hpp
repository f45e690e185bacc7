// Appends lines to named log files in the temporary directory, rotates a log into a zip archive
// in "logs-archive" when it is too big or too old, keeps that archive trimmed to three days and
// lists the archived logs an app may send to its makers.
//
//   qm::QMFileLogger& logger = qm::QMFileLogger::shared();
//   logger.logTofile("debuglog.log", "started");   // "23-Nov-26 21:55:16 - started\n"
//   logger.rotateLogIfNeeded("debuglog.log", /*resetAlways=*/true, "nick", "ABCDEFGH", [] {});
//   logger.waitUntilAllOperationsAreFinished();     // before the process exits
//
// Appends only happen when the library is built with the debug log (kQMEnableDebugLog); the
// other operations do not consult it.
//
// All file work runs on two serial queues owned by the logger: `queue()` carries appends,
// resets and rotations in the order they were submitted, `cleanupQueue()` the archive trims.
// A rotation queues the reset of its log behind itself, so lines submitted while the rotation
// runs land in the old file after it was archived and are discarded by that reset.
//
// Failures are never thrown: an append that cannot open its file prints one line on standard
// output ("Can't write to log file at url: ..."); the other operations report through the
// diagnostics sink ("[LOG] ..." lines, the log facade for the shared instance).
//
// Thread-safety: every operation may be called from any thread.

#ifndef QMCORE_FILES_QMFILELOGGER_HPP_
#define QMCORE_FILES_QMFILELOGGER_HPP_

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/platform/Date.hpp"
#include "qmcore/platform/SerialQueue.hpp"

namespace qm {

class Env;

struct QMFileLoggerOptions {
  // Receives the logger's "[LOG] ..." diagnostics. Empty: the log facade (`debuglog`).
  std::function<void(const std::string&)> diagnostic;
  // Writes a zip archive of the file `source` to `destination`, using a scratch folder of the
  // given name in the temporary directory; throws ErrorException on failure. Empty: the
  // library's zip operation (QMFileHelper::zip).
  using ZipFunction =
      std::function<void(const std::filesystem::path& source,
                         const std::filesystem::path& destination, const std::string& scratchName)>;
  ZipFunction zip;
};

class QMFileLogger {
 public:
  // The name of the archive folder inside the temporary directory.
  static constexpr std::string_view kArchiveFolderName = "logs-archive";

  // The process's logger over Env::Default(), created on first use and never destroyed: wait
  // for it (waitUntilAllOperationsAreFinished) before the process exits to keep what is queued.
  static QMFileLogger& shared();

  // A logger over `env`'s temporary directory and clock (both kept by reference).
  explicit QMFileLogger(Env& env, QMFileLoggerOptions options = {});
  // Finishes every queued operation first.
  ~QMFileLogger();
  QMFileLogger(const QMFileLogger&) = delete;
  QMFileLogger& operator=(const QMFileLogger&) = delete;

  // Queues the line "<dd-MMM-yy HH:mm:ss> - <message>\n" (time of writing, current locale)
  // for the file `fileName` in the temporary directory, creating the file when missing. Does
  // nothing for an absent message or when the debug log is compiled out.
  void logTofile(std::string_view fileName, std::optional<std::string_view> message);

  // Queues the emptying of a log: the file is removed and created again, empty.
  void resetLog(std::string_view logName);

  // Queues a rotation: when the log exists and is due (see QMFileLoggerRules::isRotationDue),
  // or `resetAlways` is set, zips it into the archive folder, queues its reset and a trim of
  // the archive. `callback` runs at the end of the rotation, on `queue()`, before that reset.
  void rotateLogIfNeeded(std::string_view logName, bool resetAlways,
                         std::optional<std::string_view> nick,
                         std::optional<std::string_view> clientID, std::function<void()> callback);

  // Queues on `cleanupQueue()` the deletion of archived logs modified more than three days ago.
  void trimLogArchive();

  // The archived logs, in directory order; empty (with a diagnostic) when the archive folder
  // cannot be listed. Runs on the caller's thread.
  std::vector<std::filesystem::path> archiveLogURLsToShip() const;

  // The temporary directory, which holds the logs.
  std::string logFolder() const;
  // Temporary directory / name; a name holding "/" gives a nested path.
  std::string logPathForLogName(std::string_view logName) const;
  // Temporary directory / "logs-archive".
  std::filesystem::path logArchiveFolderURL() const;
  // Archive folder / name.
  std::string logArchivePathForFileName(std::string_view fileName) const;

  SerialQueue& queue() { return *queue_; }
  SerialQueue& cleanupQueue() { return *cleanupQueue_; }

  // Waits until both queues are idle, including the resets and trims that rotations queue.
  // Must not be called from one of the logger's own tasks.
  void waitUntilAllOperationsAreFinished();

 private:
  struct AppendBatch;

  // Queues `task` on `queue()` behind every append submitted so far.
  void submit(SerialQueue::Task task);
  void writeBatch(const std::shared_ptr<AppendBatch>& batch);
  void rotate(const std::string& logName, bool resetAlways, const std::optional<std::string>& nick,
              const std::optional<std::string>& clientID, const std::function<void()>& callback);
  void trim();
  void zipFile(const std::filesystem::path& source, const std::filesystem::path& destination,
               const std::string& scratchName) const;
  void report(const std::string& text) const;

  Env& env_;
  const QMFileLoggerOptions options_;
  // The appends submitted since the last other operation, all written by one queued task that
  // has not started yet (null when there is none): consecutive appends share one open and one
  // write, with the same result as one by one.
  std::mutex batchMutex_;
  std::shared_ptr<AppendBatch> openBatch_;
  // A written batch kept for reuse.
  std::shared_ptr<AppendBatch> spareBatch_;
  // Last: destroyed first, so their tasks finish while the members above still exist.
  std::unique_ptr<SerialQueue> cleanupQueue_;
  std::unique_ptr<SerialQueue> queue_;
};

}  // namespace qm

#endif  // QMCORE_FILES_QMFILELOGGER_HPP_
