// Prints the distance text of 1234 m in metric units, the way an app would ask for it.

#include <cstdio>

#include "qmcore/qmcore.hpp"

int main() {
  qm::ProcessEnv env({.settingsPath = std::string(qm::ProcessEnvOptions::kInMemorySettings)});
  qm::EnvironmentSettings environment;
  qm::UnitsProvider units(env, environment);
  units.setGeneralUnitType(0);
  std::printf("%s\n", units.textForDistance(1234.0).c_str());
  return 0;
}
