// The environment and the units provider the tool's commands work with: the process's
// environment with the settings store named by --settings (or the standard one), and a
// provider over it with the shared environment settings.

#ifndef QMCORE_TOOLS_QMCORE_PROVIDERSUPPORT_HPP_
#define QMCORE_TOOLS_QMCORE_PROVIDERSUPPORT_HPP_

#include "qmcore/platform/Env.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

// The environment of this run (made once).
Env& toolEnv(const ToolContext& context);

// The provider of this run (made once, after the options are parsed, so that --locale
// applies to its first-launch choices and texts).
UnitsProvider& toolProvider(const ToolContext& context);

}  // namespace qm::tool

#endif  // QMCORE_TOOLS_QMCORE_PROVIDERSUPPORT_HPP_
