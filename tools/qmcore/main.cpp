// qmcore: shows what the QMCore library does, for app developers, testers and translators.

#include <cstdio>
#include <cstdlib>

#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/Locale.hpp"
#include "tools/qmcore/Commands.hpp"

int main(int argc, char** argv) {
  CLI::App app("qmcore: units, unit settings and value texts of the QMCore library.", "qmcore");
  app.require_subcommand(1);
  app.fallthrough();

  qm::tool::ToolContext context;
  std::string locale;
  app.add_option("--locale", locale, "Locale for this run, e.g. de_DE or en_GB")
      ->each([](const std::string& id) { qm::setCurrentLocaleIdentifier(id); });
  app.add_option("--settings", context.settingsPath, "Settings store file to use");
  app.add_flag("--json", context.json,
               "Print each result as one JSON object a line (JSON Lines) instead of the text");

  qm::tool::addUnitsCommands(app, context);
  qm::tool::addSettingsCommands(app, context);
  qm::tool::addDateCommands(app, context);
  qm::tool::addTextCommands(app, context);
  qm::tool::addFormatCommands(app, context);
  qm::tool::addStringsCommands(app, context);
  qm::tool::addFilesCommands(app, context);
  qm::tool::addPersistenceCommands(app, context);
  qm::tool::addGeoCommands(app, context);
  qm::tool::addDownloadCommands(app, context);
  qm::tool::addLogCommands(app, context);

  try {
    app.parse(argc, argv);
    qm::tool::finishLogging();
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::fprintf(stderr, "qmcore: %s\n", e.what());
    return 2;
  } catch (const qm::tool::UsageError& e) {
    std::fprintf(stderr, "qmcore: %s\n", e.what());
    return 2;
  } catch (const qm::ErrorException& e) {
    // A library operation that failed (a zip that could not be written, an unreadable path).
    std::fprintf(stderr, "qmcore: %s\n", e.error().description().c_str());
    return 1;
  }
  return context.exitStatus;
}
