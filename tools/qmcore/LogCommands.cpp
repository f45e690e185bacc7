// qmcore log: appends to, rotates, resets and trims the file logger's logs in the temporary
// directory ($TMPDIR, else /tmp), and lists the archived logs to ship.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/files/QMFileLogger.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

std::vector<std::string> sortedArchive(const QMFileLogger& logger) {
  std::vector<std::string> paths;
  std::error_code error;
  for (const auto& entry :
       std::filesystem::directory_iterator(logger.logArchiveFolderURL(), error)) {
    paths.push_back(entry.path().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

struct RotateOptions {
  std::string name;
  bool force = false;
  std::optional<std::string> nick;
  std::optional<std::string> client;
};

void rotate(const RotateOptions& options, const ToolContext& context) {
  QMFileLogger& logger = QMFileLogger::shared();
  // Trims from earlier runs must not be counted as this rotation's changes.
  logger.waitUntilAllOperationsAreFinished();
  const std::vector<std::string> before = sortedArchive(logger);
  logger.rotateLogIfNeeded(options.name, options.force, options.nick, options.client, {});
  logger.waitUntilAllOperationsAreFinished();
  const std::vector<std::string> after = sortedArchive(logger);
  std::vector<std::string> made;
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                      std::back_inserter(made));
  if (made.empty()) {
    std::fprintf(stderr, "qmcore: %s was not archived\n", options.name.c_str());
    return;
  }
  for (const std::string& path : made)
    Record(Record::Layout::kOneLine).field("archive", path).print(context);
}

}  // namespace

void addLogCommands(CLI::App& app, ToolContext& context) {
  CLI::App* log = app.add_subcommand(
      "log", "The file logger's logs in the temporary directory ($TMPDIR, else /tmp)");
  log->require_subcommand(1);

  CLI::App* write = log->add_subcommand(
      "write", "Append the line '<time> - MESSAGE' to the log NAME (debug builds only)");
  auto name = std::make_shared<std::string>();
  auto words = std::make_shared<std::vector<std::string>>();
  write->add_option("NAME", *name, "The log's file name, e.g. debuglog.log")->required();
  write->add_option("MESSAGE", *words, "The message; several words are joined by spaces")
      ->required();
  write->callback([name, words] {
    if (!kQMEnableDebugLog) {
      std::fprintf(stderr,
                   "qmcore: this build has the debug log compiled out; nothing was written\n");
      return;
    }
    std::string message;
    for (const std::string& word : *words) {
      if (!message.empty()) message += ' ';
      message += word;
    }
    QMFileLogger::shared().logTofile(*name, message);
    QMFileLogger::shared().waitUntilAllOperationsAreFinished();
  });

  CLI::App* rotateCommand = log->add_subcommand(
      "rotate",
      "Zip the log NAME into logs-archive/ when it is over 10,000,000 bytes or a day old (or "
      "with --force), empty it, and print the archive's path");
  auto rotateOptions = std::make_shared<RotateOptions>();
  rotateCommand->add_option("NAME", rotateOptions->name, "The log's file name")->required();
  rotateCommand->add_flag("--force", rotateOptions->force, "Archive and empty it even if not due");
  rotateCommand->add_option("--nick", rotateOptions->nick, "The nickname in the archive's name");
  rotateCommand->add_option("--client", rotateOptions->client,
                            "The client identifier; its first and last three characters go "
                            "into the archive's name");
  rotateCommand->callback([rotateOptions, &context] { rotate(*rotateOptions, context); });

  CLI::App* reset = log->add_subcommand("reset", "Empty the log NAME (created when missing)");
  auto resetName = std::make_shared<std::string>();
  reset->add_option("NAME", *resetName, "The log's file name")->required();
  reset->callback([resetName] {
    QMFileLogger::shared().resetLog(*resetName);
    QMFileLogger::shared().waitUntilAllOperationsAreFinished();
  });

  CLI::App* trim = log->add_subcommand(
      "trim", "Delete archived logs modified more than three days ago; print how many");
  trim->callback([&context] {
    QMFileLogger& logger = QMFileLogger::shared();
    logger.waitUntilAllOperationsAreFinished();
    const std::size_t before = sortedArchive(logger).size();
    logger.trimLogArchive();
    logger.waitUntilAllOperationsAreFinished();
    const std::size_t after = sortedArchive(logger).size();
    Record(Record::Layout::kOneLine)
        .field("deleted", static_cast<double>(before - std::min(before, after)),
               std::to_string(before - std::min(before, after)))
        .print(context);
  });

  CLI::App* archive = log->add_subcommand("archive", "The archived logs to ship, one path a line");
  archive->callback([&context] {
    for (const std::filesystem::path& path : QMFileLogger::shared().archiveLogURLsToShip()) {
      Record(Record::Layout::kOneLine).field("path", path.string()).print(context);
    }
  });
}

void finishLogging() { QMFileLogger::shared().waitUntilAllOperationsAreFinished(); }

}  // namespace qm::tool
