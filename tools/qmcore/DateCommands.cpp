#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

void addDateCommands(CLI::App& /*app*/, ToolContext& /*context*/) {}

}  // namespace qm::tool
