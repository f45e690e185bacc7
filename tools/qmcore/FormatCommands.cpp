#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

void addFormatCommands(CLI::App& app, ToolContext& context) { addHeadingCommands(app, context); }

}  // namespace qm::tool
