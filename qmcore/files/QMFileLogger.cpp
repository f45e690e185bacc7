#include "qmcore/files/QMFileLogger.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/files/FileHelper.hpp"
#include "qmcore/files/FileManagerCleanup.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/files/QMFileLoggerIO.hpp"
#include "qmcore/files/QMFileLoggerRules.hpp"
#include "qmcore/formatting/QMDateFormatter.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm {

namespace fs = std::filesystem;
using internal::errorDescription;
using internal::fileURLDescription;

// Appends waiting for one queued task. Names and messages are kept in one text, so that an
// append costs no allocation of its own once the batch has grown.
struct QMFileLogger::AppendBatch {
  struct Line {
    std::size_t nameBegin, nameSize, messageBegin, messageSize;
  };
  std::string text;
  std::vector<Line> lines;

  void add(std::string_view fileName, std::string_view message) {
    Line line{0, fileName.size(), 0, message.size()};
    if (!lines.empty() && name(lines.back()) == fileName) {
      line.nameBegin = lines.back().nameBegin;
    } else {
      line.nameBegin = text.size();
      text += fileName;
    }
    line.messageBegin = text.size();
    text += message;
    lines.push_back(line);
  }
  std::string_view name(const Line& line) const {
    return std::string_view(text).substr(line.nameBegin, line.nameSize);
  }
  std::string_view message(const Line& line) const {
    return std::string_view(text).substr(line.messageBegin, line.messageSize);
  }
};

namespace {

// The joined path of a directory and a name, as a URL's path-component append gives it: a
// name holding "/" nests, a leading "/" does not escape the directory.
std::string joinPath(const fs::path& directory, std::string_view name) {
  std::string path = directory.string();
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  while (!name.empty() && name.front() == '/') name.remove_prefix(1);
  if (name.empty()) return path;
  if (path != "/") path += '/';
  path += name;
  return path;
}

// The log-line time text, formatted once per second of the clock.
class LineTimeText {
 public:
  const std::string& at(Date now) {
    const double second = std::floor(now.timeIntervalSince1970());
    if (!valid_ || second != second_) {
      text_ = QMDateFormatter::sharedInstance().datetimeSecondsToShortUIString(now);
      second_ = second;
      valid_ = std::isfinite(second);
    }
    return text_;
  }

 private:
  bool valid_ = false;
  double second_ = 0.0;
  std::string text_;
};

void defaultDiagnostic(const std::string& text) {
  debuglog([&text] { return text; });
}

}  // namespace

QMFileLogger& QMFileLogger::shared() {
  // Never destroyed: libraries used on its threads (libzip, OpenSSL) clean up at exit while
  // those threads are alive. Its queues are drained at exit instead, before the static objects
  // that its work uses and that were made before it (the Env, the date formatters) are destroyed.
  static QMFileLogger* const logger = [] {
    QMFileLogger* const made = std::make_unique<QMFileLogger>(Env::Default()).release();
    std::atexit([] { shared().waitUntilAllOperationsAreFinished(); });
    return made;
  }();
  return *logger;
}

QMFileLogger::QMFileLogger(Env& env, QMFileLoggerOptions options)
    : env_(env),
      options_(std::move(options)),
      cleanupQueue_(std::make_unique<SerialQueue>()),
      queue_(std::make_unique<SerialQueue>()) {
  // The queued work formats dates with the shared formatter and reports through the log
  // facade; making their formatters now keeps them alive until a static logger has finished
  // its queues at exit.
  QMDateFormatter::sharedInstance();
  debugLogTimestamp(Date());
}

QMFileLogger::~QMFileLogger() { waitUntilAllOperationsAreFinished(); }

void QMFileLogger::waitUntilAllOperationsAreFinished() {
  queue_->waitUntilAllOperationsAreFinished();
  cleanupQueue_->waitUntilAllOperationsAreFinished();
}

void QMFileLogger::logTofile(std::string_view fileName, std::optional<std::string_view> message) {
  if (!message || !kQMEnableDebugLog) return;
  const std::lock_guard lock(batchMutex_);
  if (openBatch_ == nullptr) {
    openBatch_ = spareBatch_ != nullptr ? std::move(spareBatch_) : std::make_shared<AppendBatch>();
    queue_->async([this, batch = openBatch_] { writeBatch(batch); });
  }
  openBatch_->add(fileName, *message);
}

void QMFileLogger::submit(SerialQueue::Task task) {
  const std::lock_guard lock(batchMutex_);
  // Appends submitted after this task must run after it.
  openBatch_ = nullptr;
  queue_->async(std::move(task));
}

void QMFileLogger::writeBatch(const std::shared_ptr<AppendBatch>& batch) {
  {
    // From here on no append joins the batch.
    const std::lock_guard lock(batchMutex_);
    if (openBatch_ == batch) openBatch_ = nullptr;
  }
  const std::vector<AppendBatch::Line>& lines = batch->lines;
  LineTimeText time;
  std::string bytes;
  // One open and one write for each run of lines to the same file.
  for (std::size_t first = 0; first < lines.size();) {
    const std::string_view name = batch->name(lines[first]);
    std::size_t end = first + 1;
    while (end < lines.size() && batch->name(lines[end]) == name) ++end;
    bytes.clear();
    for (std::size_t i = first; i < end; ++i) {
      const std::string& stamp = time.at(env_.now());
      // Without a time text the line is not written.
      if (stamp.empty()) continue;
      bytes += stamp;
      bytes += " - ";
      bytes += batch->message(lines[i]);
      bytes += '\n';
    }
    internal::appendToLogFile(logPathForLogName(name), bytes, end - first);
    first = end;
  }
  // Keep the batch's memory for the next one.
  batch->text.clear();
  batch->lines.clear();
  const std::lock_guard lock(batchMutex_);
  if (spareBatch_ == nullptr) spareBatch_ = batch;
}

void QMFileLogger::resetLog(std::string_view logName) {
  submit([path = logPathForLogName(logName)] { internal::resetLogFile(path); });
}

void QMFileLogger::rotateLogIfNeeded(std::string_view logName, bool resetAlways,
                                     std::optional<std::string_view> nick,
                                     std::optional<std::string_view> clientID,
                                     std::function<void()> callback) {
  std::optional<std::string> nickText;
  if (nick) nickText.emplace(*nick);
  std::optional<std::string> clientText;
  if (clientID) clientText.emplace(*clientID);
  submit([this, name = std::string(logName), resetAlways, nickText = std::move(nickText),
          clientText = std::move(clientText), callback = std::move(callback)] {
    rotate(name, resetAlways, nickText, clientText, callback);
  });
}

void QMFileLogger::rotate(const std::string& logName, bool resetAlways,
                          const std::optional<std::string>& nick,
                          const std::optional<std::string>& clientID,
                          const std::function<void()>& callback) {
  const auto finish = [&callback] {
    if (callback) callback();
  };
  const std::string path = logPathForLogName(logName);
  if (!internal::fileExists(path)) {
    finish();
    return;
  }
  const std::optional<std::uint64_t> size = QMFileHelper::sizeForLocalFilePath(path);
  const bool due = QMFileLoggerRules::isRotationDue(
      size, QMFileHelper::creationDateForLocalFilePath(path), env_.now());
  if (!due && !resetAlways) {
    report("[LOG] Log file: " + path + ", is " + std::to_string(size.value_or(0)) +
           " bytes of size, no need to rotate/reset yet.");
    finish();
    return;
  }

  FileHelper::createDirectoryPath(logArchiveFolderURL().string());
  const auto backupText = [](std::optional<Date> date) -> std::optional<std::string> {
    if (!date) return std::nullopt;
    return QMDateFormatter::dateToBackupNameString(*date);
  };
  const std::string archiveName = QMFileLoggerRules::archiveName(
      logName, backupText(QMFileHelper::modificationDateForLocalFilePath(path)),
      backupText(QMFileHelper::creationDateForLocalFilePath(path)), nick, clientID);
  const fs::path destination = logArchivePathForFileName(archiveName + ".zip");
  const std::string scratchName =
      internal::newUUIDString() + "__" + QMDateFormatter::dateToBackupNameString(env_.now());

  std::optional<Error> failure;
  try {
    zipFile(path, destination, scratchName);
  } catch (const ErrorException& e) {
    failure = e.error();
  }
  if (failure) {
    report("[LOG] Failed to compress and/or save the log file: " + path +
           ", error: " + errorDescription(*failure));
    if (resetAlways) resetLog(logName);
    finish();
    return;
  }
  resetLog(logName);
  trimLogArchive();
  report("[LOG] Compressed and moved previous log file: " + path + ", of " +
         std::to_string(QMFileHelper::sizeForLocalFilePath(path).value_or(0)) +
         " bytes of size, to: " + fileURLDescription(destination) + ".");
  finish();
}

void QMFileLogger::trimLogArchive() {
  cleanupQueue_->async([this] { trim(); });
}

void QMFileLogger::trim() {
  const Date cutoff = QMFileLoggerRules::trimCutoff(env_.now());
  const fs::path folder = logArchiveFolderURL();
  const int deleted = qm::removeFilesOlder(cutoff, folder);
  report("[LOG] Trimmed log archive at: " + folder.string() + " by date : " +
         internal::dateDescription(cutoff) + ". Deleted " + std::to_string(deleted) + " files.");
}

std::vector<fs::path> QMFileLogger::archiveLogURLsToShip() const {
  std::vector<fs::path> urls;
  const fs::path folder = logArchiveFolderURL();
  try {
    for (const std::string& name : internal::listDirectory(folder)) {
      const std::string path = logArchivePathForFileName(name);
      if (QMFileLoggerRules::isShippable(path)) urls.emplace_back(path);
    }
  } catch (const ErrorException& e) {
    report("[LOG]: Can't read log archive directory: " + errorDescription(e.error()));
    return {};
  }
  return urls;
}

std::string QMFileLogger::logFolder() const { return env_.temporaryDirectory().string(); }

std::string QMFileLogger::logPathForLogName(std::string_view logName) const {
  return joinPath(env_.temporaryDirectory(), logName);
}

fs::path QMFileLogger::logArchiveFolderURL() const {
  return joinPath(env_.temporaryDirectory(), kArchiveFolderName);
}

std::string QMFileLogger::logArchivePathForFileName(std::string_view fileName) const {
  return joinPath(logArchiveFolderURL(), fileName);
}

void QMFileLogger::zipFile(const fs::path& source, const fs::path& destination,
                           const std::string& scratchName) const {
  if (options_.zip) {
    options_.zip(source, destination, scratchName);
    return;
  }
  QMFileHelper::zip(source, destination, scratchName, env_);
}

void QMFileLogger::report(const std::string& text) const {
  if (options_.diagnostic) {
    options_.diagnostic(text);
  } else {
    defaultDiagnostic(text);
  }
}

}  // namespace qm
