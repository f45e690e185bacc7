#include "tools/qmcore/ProviderSupport.hpp"

#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"

namespace qm::tool {

std::shared_ptr<SettingsStore> toolStore(const ToolContext& context) {
  static const std::shared_ptr<SettingsStore> store =
      context.settingsPath ? SettingsStore::openFile(*context.settingsPath)
                           : SettingsStore::standard();
  return store;
}

UnitsProvider& toolProvider(const ToolContext& context) {
  static UnitsProvider provider(toolStore(context), NotificationCenter::defaultCenter(),
                                EnvironmentSettings::shared());
  return provider;
}

}  // namespace qm::tool
