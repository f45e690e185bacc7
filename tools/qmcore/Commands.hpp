// The subcommands of the qmcore tool, one group per source file.

#ifndef QMCORE_TOOLS_QMCORE_COMMANDS_HPP_
#define QMCORE_TOOLS_QMCORE_COMMANDS_HPP_

#include <CLI/CLI.hpp>

#include <optional>
#include <stdexcept>
#include <string>

namespace qm::tool {

// Options shared by every subcommand, filled in before a subcommand's callback runs.
struct ToolContext {
  // --settings PATH: the settings store file to use instead of the standard one.
  std::optional<std::string> settingsPath;
  // --json: print each result as one JSON object on a line of its own instead of the text.
  bool json = false;
  // The tool's exit status when the command ran: a command whose request failed sets 1.
  int exitStatus = 0;
};

// Thrown by a subcommand for bad input; the tool prints the message as one line on stderr and
// exits with status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Parses a whole text as a number, or throws UsageError naming `what`.
double parseNumber(const std::string& text, const std::string& what);
// The same, and UsageError "WHAT is not a finite number" for an infinity.
double parseFiniteNumber(const std::string& text, const std::string& what);

// The shortest text that reads back as the same double, without an exponent unless the value
// is too large or too small to read well without one: 180, 0.30479999, 156543.03392.
std::string numberText(double value);

// The whole content of the file at `path`, or UsageError "cannot read the file 'PATH'".
std::string readFile(const std::string& path);

void addUnitsCommands(CLI::App& app, ToolContext& context);     // units, convert
void addSettingsCommands(CLI::App& app, ToolContext& context);  // settings
void addDateCommands(CLI::App& app, ToolContext& context);      // date
void addTextCommands(CLI::App& app, ToolContext& context);      // time, filesize
void addFormatCommands(CLI::App& app, ToolContext& context);    // format, heading, bearing
void addHeadingCommands(CLI::App& app, ToolContext& context);   // heading, bearing
void addStringsCommands(CLI::App& app, ToolContext& context);   // strings
void addFilesCommands(CLI::App& app, ToolContext& context);     // zip, files, disk, memory
// color, sequence, sanitize, image
void addPersistenceCommands(CLI::App& app, ToolContext& context);
void addGeoCommands(CLI::App& app, ToolContext& context);  // region, zoom, address, coordinates
void addDownloadCommands(CLI::App& app, ToolContext& context);  // get, post, download, sign, md5
void addLogCommands(CLI::App& app, ToolContext& context);       // log

// Waits for the file logger's queued work, so that nothing queued is lost when the tool exits.
void finishLogging();

}  // namespace qm::tool

#endif  // QMCORE_TOOLS_QMCORE_COMMANDS_HPP_
