#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

void addTextCommands(CLI::App& /*app*/, ToolContext& /*context*/) {}

}  // namespace qm::tool
