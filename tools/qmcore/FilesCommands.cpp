// qmcore zip, files, disk and memory: the file utilities, the disk capacity and the memory
// footprint, as the library computes them.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "qmcore/files/QMDisk.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/files/QMProfiler.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

namespace fs = std::filesystem;

void addZipCommand(CLI::App& app, ToolContext& context) {
  CLI::App* zip = app.add_subcommand(
      "zip",
      "Zip the file or folder SOURCE and print the archive's path. A folder is zipped as it is; "
      "a file goes into a top-level folder named by --scratch (made in the temporary directory, "
      "$TMPDIR, and removed afterwards)");
  struct Options {
    std::string source;
    std::optional<std::string> to;
    std::optional<std::string> scratch;
  };
  auto options = std::make_shared<Options>();
  zip->add_option("SOURCE", options->source, "The file or folder to zip")->required();
  zip->add_option("--to", options->to, "Where to write the archive (default: SOURCE.zip)");
  zip->add_option("--scratch", options->scratch,
                  "The archive's top-level folder for a file (default: the file's name without "
                  "its extension)");
  zip->callback([options, &context] {
    const fs::path source = options->source;
    std::string scratch = options->scratch.value_or(fs::path(source).stem().string());
    if (scratch.empty()) scratch = "archive";
    const std::optional<fs::path> to =
        options->to ? std::optional<fs::path>(*options->to) : std::nullopt;
    const fs::path written = QMFileHelper::zip(source, to, scratch);
    Record(Record::Layout::kOneLine).field("path", written.string()).print(context);
  });
}

void addFilesGroup(CLI::App& app, ToolContext& context) {
  CLI::App* files = app.add_subcommand("files", "File names and file types");
  files->require_subcommand(1);

  CLI::App* sanitize = files->add_subcommand(
      "sanitize", "NAME with each of / \\ ? % * | \" < > : replaced by \"-\"");
  auto name = std::make_shared<std::string>();
  sanitize->add_option("NAME", *name, "A file name")->required();
  sanitize->callback([name, &context] {
    Record(Record::Layout::kOneLine)
        .field("name", QMFileHelper::sanitizedFileNameString(*name))
        .print(context);
  });

  CLI::App* unique = files->add_subcommand(
      "unique",
      "The first free path FOLDER/<name>.<n>.<suffix>.<extension> for BASE, n from 0 (a base "
      "such as .gpx counts as file.gpx)");
  struct UniqueOptions {
    std::string base;
    std::string suffix;
    std::string folder;
  };
  auto uniqueOptions = std::make_shared<UniqueOptions>();
  unique->add_option("BASE", uniqueOptions->base, "The file name to start from")->required();
  unique->add_option("--suffix", uniqueOptions->suffix, "The suffix after the number")->required();
  unique->add_option("--folder", uniqueOptions->folder, "The folder to look in")->required();
  unique->callback([uniqueOptions, &context] {
    const std::optional<fs::path> path = QMFileHelper::uniquedFileUrlForBaseFileUrl(
        uniqueOptions->base, uniqueOptions->suffix, uniqueOptions->folder);
    if (!path) throw ErrorException(Error("qmcore", 1, "no free name for " + uniqueOptions->base));
    Record(Record::Layout::kOneLine).field("path", path->string()).print(context);
  });

  CLI::App* type = files->add_subcommand(
      "type",
      "What is at PATH: nofile, directory, file, symlink or unknown (a final link is "
      "not followed)");
  auto path = std::make_shared<std::string>();
  type->add_option("PATH", *path, "A path")->required();
  type->callback([path, &context] {
    Record(Record::Layout::kOneLine)
        .field("type", std::string(fileNodeTypeName(QMFileHelper::nodeType(*path))))
        .print(context);
  });
}

void addDiskCommand(CLI::App& app, ToolContext& context) {
  CLI::App* disk = app.add_subcommand(
      "disk",
      "Total, free and used space of the file system holding the home folder, in bytes "
      "and as texts");
  disk->callback([&context] {
    const auto bytes = [](double value) {
      return std::to_string(static_cast<unsigned long long>(value));
    };
    const double total = QMDisk::totalDiskSpaceInBytes();
    const double free = QMDisk::freeDiskSpaceInBytes();
    const double used = QMDisk::usedDiskSpaceInBytes();
    Record(Record::Layout::kLabelledLines)
        .field({"total bytes", "totalBytes"}, total, bytes(total))
        .field("total", QMDisk::totalDiskSpace())
        .field({"free bytes", "freeBytes"}, free, bytes(free))
        .field("free", QMDisk::freeDiskSpace())
        .field({"used bytes", "usedBytes"}, used, bytes(used))
        .field("used", QMDisk::usedDiskSpace())
        .print(context);
  });
}

void addMemoryCommand(CLI::App& app, ToolContext& context) {
  CLI::App* memory = app.add_subcommand(
      "memory", "The process's memory footprint (resident anonymous plus swapped memory)");
  memory->callback([&context] {
    const std::string text = QMProfiler::memoryFootprint();  // "memory: 42 MB"
    constexpr std::string_view kPrefix = "memory: ";
    Record(Record::Layout::kLabelledLines)
        .field("memory", text.substr(kPrefix.size()))
        .print(context);
  });
}

}  // namespace

void addFilesCommands(CLI::App& app, ToolContext& context) {
  addZipCommand(app, context);
  addFilesGroup(app, context);
  addDiskCommand(app, context);
  addMemoryCommand(app, context);
}

}  // namespace qm::tool
