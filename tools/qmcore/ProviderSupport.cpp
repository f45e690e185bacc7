#include "tools/qmcore/ProviderSupport.hpp"

#include "qmcore/provider/EnvironmentSettings.hpp"

namespace qm::tool {

Env& toolEnv(const ToolContext& context) {
  static ProcessEnv env({.settingsPath = context.settingsPath.value_or("")});
  return env;
}

UnitsProvider& toolProvider(const ToolContext& context) {
  static UnitsProvider provider(toolEnv(context), EnvironmentSettings::shared());
  return provider;
}

}  // namespace qm::tool
