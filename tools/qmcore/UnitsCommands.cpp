#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

void addUnitsCommands(CLI::App& /*app*/, ToolContext& /*context*/) {}

}  // namespace qm::tool
