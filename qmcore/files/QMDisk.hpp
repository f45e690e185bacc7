// `QMDisk`: the capacity of the file system that holds the home directory, in bytes and as
// file-size texts ("12.3 GB", through QMFormatter::stringFromFileSize).
//
//   qm::QMDisk::freeDiskSpaceInBytes();   // 52613349376.0
//   qm::QMDisk::freeDiskSpace();          // "52.6 GB"
//   qm::QMDisk::freeDiskSpace(env);       // the same for env's home directory
//
// "Free" is the space available to the user (blocks not reserved for the superuser). When the
// file system cannot be read, every figure is 0.

#ifndef QMCORE_FILES_QMDISK_HPP_
#define QMCORE_FILES_QMDISK_HPP_

#include <string>

namespace qm {

class Env;

class QMDisk {
 public:
  QMDisk() = delete;

  // Over Env::Default()'s home directory.
  static double totalDiskSpaceInBytes();
  static double freeDiskSpaceInBytes();
  // Total minus free, truncated toward zero to whole bytes.
  static double usedDiskSpaceInBytes();
  static std::string totalDiskSpace();
  static std::string freeDiskSpace();
  static std::string usedDiskSpace();

  // The same over `env`'s home directory.
  static double totalDiskSpaceInBytes(const Env& env);
  static double freeDiskSpaceInBytes(const Env& env);
  static double usedDiskSpaceInBytes(const Env& env);
  static std::string totalDiskSpace(const Env& env);
  static std::string freeDiskSpace(const Env& env);
  static std::string usedDiskSpace(const Env& env);
};

}  // namespace qm

#endif  // QMCORE_FILES_QMDISK_HPP_
