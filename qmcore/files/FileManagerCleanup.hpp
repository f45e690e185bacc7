// Clean-ups of folders, the additions to the platform's file manager: emptying the temporary
// directory and deleting files older than a date (the logger trims its archive with it).
//
//   qm::clearTmpDirectory(env);
//   int deleted = qm::removeFilesOlder(env.now().addingTimeInterval(-259200), archiveFolder);
//
// Failures are logged through `debuglog` as "[FILE]: Error when cleaning up temporary
// directory: <error>", and the operation stops at the first one.

#ifndef QMCORE_FILES_FILEMANAGERCLEANUP_HPP_
#define QMCORE_FILES_FILEMANAGERCLEANUP_HPP_

#include <filesystem>

#include "qmcore/platform/Date.hpp"

namespace qm {

class Env;

// Removes every entry of `env`'s temporary directory (Env::Default() when not given).
void clearTmpDirectory();
void clearTmpDirectory(const Env& env);

// Deletes every entry of `folder` whose modification date is strictly earlier than `than`;
// entries without a readable date are kept. Returns the number deleted before any failure.
int removeFilesOlder(Date than, const std::filesystem::path& folder);

}  // namespace qm

#endif  // QMCORE_FILES_FILEMANAGERCLEANUP_HPP_
