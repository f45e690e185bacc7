#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

void addFormatCommands(CLI::App& /*app*/, ToolContext& /*context*/) {}

}  // namespace qm::tool
