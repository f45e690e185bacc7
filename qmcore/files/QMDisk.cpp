#include "qmcore/files/QMDisk.hpp"

#include <sys/statvfs.h>

#include <cmath>
#include <cstdint>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/Env.hpp"

namespace qm {

namespace {

struct Capacity {
  double total = 0;
  double free = 0;
};

Capacity capacity(const Env& env) {
  struct statvfs info {};
  if (::statvfs(env.homeDirectory().c_str(), &info) != 0) return {};
  const double block = static_cast<double>(info.f_frsize);
  return {static_cast<double>(info.f_blocks) * block, static_cast<double>(info.f_bavail) * block};
}

std::string sizeText(double bytes) {
  return QMFormatter::stringFromFileSize(static_cast<std::int64_t>(bytes));
}

}  // namespace

double QMDisk::totalDiskSpaceInBytes(const Env& env) { return capacity(env).total; }
double QMDisk::freeDiskSpaceInBytes(const Env& env) { return capacity(env).free; }
double QMDisk::usedDiskSpaceInBytes(const Env& env) {
  const Capacity c = capacity(env);
  return std::trunc(c.total - c.free);
}

std::string QMDisk::totalDiskSpace(const Env& env) { return sizeText(totalDiskSpaceInBytes(env)); }
std::string QMDisk::freeDiskSpace(const Env& env) { return sizeText(freeDiskSpaceInBytes(env)); }
std::string QMDisk::usedDiskSpace(const Env& env) { return sizeText(usedDiskSpaceInBytes(env)); }

double QMDisk::totalDiskSpaceInBytes() { return totalDiskSpaceInBytes(Env::Default()); }
double QMDisk::freeDiskSpaceInBytes() { return freeDiskSpaceInBytes(Env::Default()); }
double QMDisk::usedDiskSpaceInBytes() { return usedDiskSpaceInBytes(Env::Default()); }
std::string QMDisk::totalDiskSpace() { return totalDiskSpace(Env::Default()); }
std::string QMDisk::freeDiskSpace() { return freeDiskSpace(Env::Default()); }
std::string QMDisk::usedDiskSpace() { return usedDiskSpace(Env::Default()); }

}  // namespace qm
