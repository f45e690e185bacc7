#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

void addSettingsCommands(CLI::App& /*app*/, ToolContext& /*context*/) {}

}  // namespace qm::tool
