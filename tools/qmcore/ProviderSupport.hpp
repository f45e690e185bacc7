// The units provider the tool's commands work with: over the store named by --settings, or the
// standard store, with the default notification centre and the shared environment.

#ifndef QMCORE_TOOLS_QMCORE_PROVIDERSUPPORT_HPP_
#define QMCORE_TOOLS_QMCORE_PROVIDERSUPPORT_HPP_

#include <memory>

#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "tools/qmcore/Commands.hpp"

namespace qm::tool {

// The settings store of this run (made once).
std::shared_ptr<SettingsStore> toolStore(const ToolContext& context);

// The provider of this run (made once, after the options are parsed, so that --locale
// applies to its first-launch choices and texts).
UnitsProvider& toolProvider(const ToolContext& context);

}  // namespace qm::tool

#endif  // QMCORE_TOOLS_QMCORE_PROVIDERSUPPORT_HPP_
