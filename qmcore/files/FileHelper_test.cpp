// The file utilities: atomic writes, folder moves and attributes, the named file operations,
// the zip, disk figures and the clean-up of the temporary folder.

#include "qmcore/files/FileHelper.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "qmcore/files/AtomicWrite.hpp"
#include "qmcore/files/FileManagerCleanup.hpp"
#include "qmcore/files/QMDisk.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::ConsoleCapture;
using ::testing::ElementsAre;
using testing::readFile;
using ::testing::StartsWith;
using testing::tree;
using testing::writeFile;
using Files = std::vector<std::string>;

RegularExpression regex(std::string_view pattern) { return *RegularExpression::create(pattern); }

class FileHelperTest : public ::testing::Test {
 protected:
  FileHelperTest() : root_(home() / "root") {
    writeFile(root_ / "a.gpx", "a");
    writeFile(root_ / "b.txt", "b");
    writeFile(root_ / "sub/c.gpx", "c");
  }
  fs::path home() const { return env_.homeDirectory(); }
  std::string root() const { return root_.string(); }

  testing::FakeEnv env_;
  const fs::path root_;
};
class QMFileHelperTest : public FileHelperTest {};

TEST(AtomicWriteTest, ReplacesWholeFilesAndFailsWithoutATrace) {
  testing::FakeEnv env;
  const auto folder = env.temporaryDirectory();
  for (const std::string& data : {std::string(), std::string("a\0b", 3), std::string("old")}) {
    ASSERT_FALSE(writeDataAtomically(folder / "file", data).has_value());
    EXPECT_EQ(readFile(folder / "file"), data);
    EXPECT_EQ(tree(folder), Files{"file"});  // nothing left beside it
  }
  std::filesystem::create_directories(folder / "taken" / "inner");
  // A folder is never replaced by a file, nor are folders made on the way.
  const std::optional<Error> error = writeDataAtomically(folder / "taken", "new");
  EXPECT_EQ(error.value().domain(), kPOSIXErrorDomain);
  EXPECT_EQ(error.value().code(), EISDIR);
  EXPECT_EQ(writeDataAtomically(folder / "no/such.txt", "new").value().code(), ENOENT);
  EXPECT_EQ(readFile(folder / "file"), "old");
  EXPECT_EQ(tree(folder), (Files{"file", "taken/", "taken/inner/"}));
}

TEST_F(FileHelperTest, DeletionsTouchOnlyTheirTargets) {
  writeFile(root_ / "sub/d.txt", "d");
  FileHelper::deleteDirectoryAtPath((root_ / "b.txt").string());  // not a folder: kept
  FileHelper::deleteAllFilesAtPath(root());                       // folders are kept whole
  EXPECT_EQ(tree(root_), (Files{"sub/", "sub/c.gpx", "sub/d.txt"}));
  FileHelper::removeFiles(regex("\\.gpx$"), root());  // at any depth
  EXPECT_EQ(tree(root_), (Files{"sub/", "sub/d.txt"}));
  FileHelper::deleteAllFilesAtPath(root(), true);
  EXPECT_EQ(tree(root_), Files{});
  FileHelper::deleteDirectoryAtPath(root());
  EXPECT_FALSE(fs::exists(root_));
}

// Renaming replaces what has the new name, and copying carries folders along.
TEST_F(FileHelperTest, RenameAndCopyFolders) {
  writeFile(home() / "renamed/old.txt", "old");
  FileHelper::ifExistsRenameDirectoryAtPath(root(), "renamed");
  EXPECT_FALSE(fs::exists(root_));
  const fs::path renamed = home() / "renamed";
  EXPECT_EQ(tree(renamed), (Files{"a.gpx", "b.txt", "sub/", "sub/c.gpx"}));
  FileHelper::ifExistsRenameDirectoryAtPath((renamed / "a.gpx").string(), "z");  // not a folder
  EXPECT_FALSE(fs::exists(home() / "z"));
  ConsoleCapture console;
  FileHelper::copyAllFilesFromDir(renamed.string(), (home() / "copy").string());
  // "sub" is copied with its contents, so its own entry then finds "sub/c.gpx" taken.
  EXPECT_EQ(console.texts().size(), 1u);
  EXPECT_EQ(tree(home() / "copy"), tree(renamed));
}

// Moves never replace a file.
TEST_F(FileHelperTest, MovesPrintEachMoveAndEachFailure) {
  const fs::path target = home() / "target";
  writeFile(target / "a.gpx", "already there");
  fs::create_directories(target / "sub");
  ConsoleCapture console;
  FileHelper::moveFiles(regex("gpx"), root(), target.string());
  const std::string from = root_.string();
  const std::string to = target.string();
  EXPECT_THAT(console.texts(),
              ElementsAre("Moving file from " + from + "/a.gpx, to " + to + "/a.gpx",
                          StartsWith("Failed to move the file: " + from + "/a.gpx to " + to +
                                     "/a.gpx. Error: Error Domain=NSPOSIXErrorDomain Code=17 "),
                          "Moving file from " + from + "/sub/c.gpx, to " + to + "/sub/c.gpx"));
  EXPECT_EQ(readFile(target / "sub/c.gpx"), "c");
  EXPECT_EQ(readFile(target / "a.gpx"), "already there");
  // One file, into a folder made on the way; a file in the way of the folder fails both.
  const std::string deeper = (home() / "new/deeper").string();
  EXPECT_TRUE(FileHelper::moveFile((root_ / "a.gpx").string(), deeper, "x.gpx"));
  EXPECT_EQ(readFile(fs::path(deeper) / "x.gpx"), "a");
  ConsoleCapture failures;
  EXPECT_FALSE(FileHelper::moveFile((root_ / "b.txt").string(), deeper, "x.gpx"));
  EXPECT_FALSE(FileHelper::moveFile((target / "a.gpx").string(), deeper + "/x.gpx", "y"));
  const std::string failed = "oops, error on move file: Error Domain=NSPOSIXErrorDomain Code=";
  EXPECT_THAT(failures.texts(),
              ElementsAre(StartsWith(failed + "17 "), StartsWith("error creating a directory: "),
                          StartsWith(failed + "20 ")));
}

// An attribute holds the value's first UTF-16-length bytes and reads back only as whole UTF-8.
TEST_F(FileHelperTest, AttributesKeepTheUtf16LengthInBytes) {
  const std::string file = (root_ / "a.gpx").string();
  if (::setxattr(file.c_str(), "user.bad", "\xFF\xFE", 2, 0) != 0) {
    GTEST_SKIP() << "no user attributes on this file system";
  }
  EXPECT_EQ(FileHelper::xattrStringValueForKey("bad", file), std::nullopt);
  const std::pair<std::string, std::optional<std::string>> cases[] = {
      {"\xC3\xA9t\xC3\xA9", "\xC3\xA9t"},          // "été": 3 units, 5 bytes
      {"\xE2\x82\xAC!", std::nullopt},             // "€!": 2 units, keeping a broken "€"
      {"\xF0\x9F\x98\x80xy", "\xF0\x9F\x98\x80"},  // an emoji is 2 units
  };
  for (const auto& [value, stored] : cases) {
    ASSERT_TRUE(FileHelper::setXAttrStringValue(value, "com.app.key", file));
    // Stored in the user namespace, readable with or without its prefix.
    EXPECT_EQ(FileHelper::xattrStringValueForKey("com.app.key", file), stored) << value;
    EXPECT_EQ(FileHelper::xattrStringValueForKey("user.com.app.key", file), stored);
  }
}

TEST(SanitizeTest, ReplacesEachForbiddenCharacterByOneDash) {
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString("d\xC3\xBC r/\\?%*|\"<>:.b-c_d#e"),
            "d\xC3\xBC r----------.b-c_d#e");
}

TEST_F(QMFileHelperTest, NodeTypes) {
  fs::create_symlink(root_ / "a.gpx", home() / "link");
  ASSERT_EQ(::mkfifo((home() / "fifo").c_str(), 0600), 0);
  const auto type = [&](const char* name) {
    return QMFileHelper::nodeType((home() / name).string());
  };
  EXPECT_EQ(type("missing"), FileNodeType::nofile);
  EXPECT_EQ(type("root"), FileNodeType::directory);
  EXPECT_EQ(type("root/a.gpx"), FileNodeType::file);
  EXPECT_EQ(type("link"), FileNodeType::symlink);  // not followed
  EXPECT_EQ(type("fifo"), FileNodeType::unknown);
  // A path through a file is not "no such file": thrown.
  EXPECT_THROW(type("root/a.gpx/inner"), ErrorException);
}

// The first free number is taken, up to 10001; the extension follows the last dot that
// neither starts nor ends the name.
TEST(UniqueTest, TakesTheFirstFreeNumberUpTo10001) {
  const struct {
    std::string base;
    std::vector<std::string> existing;
    std::string expected;
  } cases[] = {
      {"report.pdf", {"report.0.x.pdf", "report.2.x.pdf"}, "report.1.x.pdf"},
      {".gpx", {}, "file.0.x.gpx"},
      {"noext", {}, "noext.0.x"},
      {"a.tar.gz", {}, "a.tar.0.x.gz"},
  };
  for (const auto& c : cases) {
    testing::FakeEnv env;
    const fs::path folder = env.homeDirectory();
    for (const std::string& name : c.existing) writeFile(folder / name, "");
    EXPECT_EQ(QMFileHelper::uniquedFileUrlForBaseFileUrl("/some/where/" + c.base, "x", folder),
              folder / c.expected);
  }
  testing::FakeEnv env;
  const fs::path folder = env.homeDirectory();
  for (int n = 0; n <= 10000; ++n) writeFile(folder / ("r." + std::to_string(n) + ".x.t"), "");
  EXPECT_EQ(QMFileHelper::uniquedFileUrlForBaseFileUrl("r.t", "x", folder), folder / "r.10001.x.t");
  writeFile(folder / "r.10001.x.t", "");
  EXPECT_EQ(QMFileHelper::uniquedFileUrlForBaseFileUrl("r.t", "x", folder), std::nullopt);
}

// A copy under a numbered name goes into a folder made on the way; a hard link replaces what
// is there; copies of matching files are renamed by a template and never replace a file.
TEST_F(QMFileHelperTest, CopiesAndLinks) {
  const std::string source = (root_ / "a.gpx").string();
  EXPECT_EQ(QMFileHelper::copyFileWithNameResolution("T.gpx", "i", source, "in", home() / "to"),
            home() / "to/in/T.0.i.gpx");
  EXPECT_EQ(readFile(home() / "to/in/T.0.i.gpx"), "a");
  // A file where the folder belongs: neither the folder nor the copy can be made.
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(QMFileHelper::copyFileWithNameResolution("T.gpx", "i", source, "in", source),
            std::nullopt);
  EXPECT_THAT(::testing::internal::GetCapturedStdout(),
              ::testing::AllOf(StartsWith("Error Domain=NSPOSIXErrorDomain Code=20 "),
                               ::testing::HasSubstr("\neror when saving file: ")));

  writeFile(home() / "links/l", "old");
  EXPECT_EQ(QMFileHelper::createLinkToFile(source, "l", home() / "links").destination,
            home() / "links/l");
  EXPECT_EQ(fs::hard_link_count(source), 2u);
  EXPECT_EQ(QMFileHelper::createLinkToFile(home() / "none", "m", home()).error.value().code(),
            ENOENT);

  fs::create_directories(home() / "dst/sub");
  const QMFileHelper::Substitution rename{regex("([a-z])\\.gpx"), "t$1.gpx"};
  QMFileHelper::copyFiles(regex("\\.gpx$"), root_, home() / "dst", rename);
  EXPECT_EQ(tree(home() / "dst"), (Files{"sub/", "sub/tc.gpx", "ta.gpx"}));
  EXPECT_EQ(QMFileHelper::reWriteFileName("a.gpx", std::nullopt), "a.gpx");
  EXPECT_THROW(QMFileHelper::copyFiles(regex("gpx"), root_, home() / "dst", rename),
               ErrorException);
}

// A file goes into a top-level folder named by the zip-dir name; a folder is zipped as it is, by
// default to its path + ".zip". Another reader lists the entries and checks every CRC. The zip
// leaves the temporary folder as it was, and clearing that folder empties it.
TEST_F(QMFileHelperTest, ZipWritesTheArchiveAndCleansUp) {
  const auto entries = [](const fs::path& zip) {
    return testing::run("unzip -Z1 '" + zip.string() + "' && unzip -tq '" + zip.string() +
                        "' >/dev/null");
  };
  ConsoleCapture console;
  EXPECT_EQ(QMFileHelper::zip(root_ / "b.txt", home() / "b.zip", "MyZipDir", env_),
            home() / "b.zip");
  EXPECT_EQ(QMFileHelper::zip(root_, std::nullopt, "MyZipDir", env_), home() / "root.zip");
  EXPECT_TRUE(console.texts().empty());
  EXPECT_EQ(entries(home() / "b.zip"), "MyZipDir/\nMyZipDir/b.txt\n");
  EXPECT_EQ(entries(home() / "root.zip"),
            "root/\nroot/a.gpx\nroot/b.txt\nroot/sub/\nroot/sub/c.gpx\n");
  // Neither the scratch folder nor the archive in the making is left behind.
  EXPECT_EQ(tree(env_.temporaryDirectory()), Files{});
  EXPECT_EQ(readFile(root_ / "b.txt"), "b");
  writeFile(env_.temporaryDirectory() / "d/b", "");
  clearTmpDirectory(env_);
  EXPECT_EQ(tree(env_.temporaryDirectory()), Files{});
  EXPECT_TRUE(fs::exists(home() / "b.zip"));
}

// Each way the zip can fail: the error thrown, whether the archive was made and only its copy
// failed, and that nothing is left in the temporary folder nor changed in the home folder.
TEST(ZipTest, FailuresThrowAndRemoveTheScratchFolder) {
  const struct {
    std::string source;       // in the home folder
    std::string destination;  // in the home folder
    std::string zipDirName;
    int code;
    bool copyFailed;
  } cases[] = {
      // The archive is made but cannot be put where it was asked for.
      {"a.log", "plain/out.zip", "Scratch", ENOTDIR, true},
      {"a.log", "old.zip", "Scratch", EEXIST, true},  // an existing archive is kept
      // The source cannot be copied into the scratch folder: thrown before any zipping.
      {"missing.log", "out.zip", "Scratch", ENOENT, false},
      {"a.log", "out.zip", "", EINVAL, false},
      // The scratch folder cannot be made.
      {"a.log", "out.zip", "taken/inner", ENOTDIR, false},
  };
  const Files copyFailed = {"zipping succeeded but copying the zip file failed"};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.destination + " " + c.zipDirName);
    testing::FakeEnv env;
    const fs::path work = env.homeDirectory();
    writeFile(work / "a.log", "line\n");
    writeFile(work / "old.zip", "an older archive");
    writeFile(work / "plain", "a file where a folder should be");
    writeFile(env.temporaryDirectory() / "taken", "a file where a folder should be");
    ConsoleCapture console;
    try {
      QMFileHelper::zip(work / c.source, work / c.destination, c.zipDirName, env);
      ADD_FAILURE() << "nothing thrown";
    } catch (const ErrorException& e) {
      EXPECT_EQ(e.error().code(), c.code);
    }
    EXPECT_EQ(console.texts(), c.copyFailed ? copyFailed : Files{});
    EXPECT_EQ(tree(env.temporaryDirectory()), Files{"taken"});
    EXPECT_EQ(tree(work), (Files{"a.log", "old.zip", "plain"}));
    EXPECT_EQ(readFile(work / "old.zip"), "an older archive");
  }
}

TEST_F(QMFileHelperTest, DiskFiguresAddUpForTheEnvironmentsHome) {
  const double total = QMDisk::totalDiskSpaceInBytes(env_);
  const double used = QMDisk::usedDiskSpaceInBytes(env_);
  // Free space can change between the readings; the used figure stays within a megabyte.
  EXPECT_NEAR(used, total - QMDisk::freeDiskSpaceInBytes(env_), 1 << 20);
  // The texts measure the environment's home as the byte counts do: one that cannot be read
  // is 0, while the process's own home is not.
  std::filesystem::remove_all(home());
  const std::string none = QMFormatter::stringFromFileSize(0);
  EXPECT_EQ(QMDisk::totalDiskSpace(env_), none);
  EXPECT_EQ(QMDisk::freeDiskSpace(env_), none);
  EXPECT_EQ(QMDisk::usedDiskSpace(env_), none);
  EXPECT_NE(QMDisk::totalDiskSpace(), none);
}

}  // namespace
}  // namespace qm
