#include "qmcore/files/QMFileHelper.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utime.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "qmcore/files/FileManagerCleanup.hpp"
#include "qmcore/files/QMDisk.hpp"
#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::ConsoleCapture;
using testing::readFile;
using testing::run;
using testing::tree;
using testing::writeFile;
using Files = std::vector<std::string>;

class QMFileHelperTest : public ::testing::Test {
 protected:
  fs::path home() const { return env_.homeDirectory(); }
  testing::FakeEnv env_;
};

TEST(SanitizeTest, ReplacesEachForbiddenCharacterByOneDash) {
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString("a:b/c"), "a-b-c");
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString("/\\?%*|\"<>:"), "----------");
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString(""), "");
  const std::string kept = "d\xC3\xBC r.b-c_d#e";
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString(kept), kept);
}

TEST_F(QMFileHelperTest, NodeTypes) {
  writeFile(home() / "f", "x");
  fs::create_symlink(home() / "f", home() / "link");
  fs::create_symlink(home() / "gone", home() / "dangling");
  ASSERT_EQ(::mkfifo((home() / "fifo").c_str(), 0600), 0);
  const std::vector<std::pair<std::string, FileNodeType>> cases = {
      {"missing", FileNodeType::nofile},   {"", FileNodeType::directory},
      {"f", FileNodeType::file},           {"link", FileNodeType::symlink},
      {"dangling", FileNodeType::symlink}, {"fifo", FileNodeType::unknown}};
  for (const auto& [name, type] : cases) {
    EXPECT_EQ(QMFileHelper::nodeType((home() / name).string()), type) << name;
  }
  // A path through a file is not "no such file": thrown.
  EXPECT_THROW(QMFileHelper::nodeType((home() / "f/inner").string()), ErrorException);
  EXPECT_EQ(fileNodeTypeName(FileNodeType::symlink), "symlink");
}

TEST(UniqueTest, TakesTheFirstFreeNumber) {
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
}

TEST(UniqueTest, GivesUpAfterTenThousandAndTwoCandidates) {
  testing::FakeEnv env;
  const fs::path folder = env.homeDirectory();
  for (int n = 0; n <= 10000; ++n) writeFile(folder / ("r." + std::to_string(n) + ".x.t"), "");
  EXPECT_EQ(QMFileHelper::uniquedFileUrlForBaseFileUrl("r.t", "x", folder), folder / "r.10001.x.t");
  writeFile(folder / "r.10001.x.t", "");
  EXPECT_EQ(QMFileHelper::uniquedFileUrlForBaseFileUrl("r.t", "x", folder), std::nullopt);
}

TEST_F(QMFileHelperTest, CopyWithNameResolutionCreatesTheFolderAndNumbers) {
  writeFile(home() / "in.gpx", "track");
  const auto first = QMFileHelper::copyFileWithNameResolution(
      "Track.gpx", "imp", (home() / "in.gpx").string(), "inbox", home() / "target");
  const auto second = QMFileHelper::copyFileWithNameResolution(
      "Track.gpx", "imp", (home() / "in.gpx").string(), "inbox", home() / "target");
  EXPECT_EQ(first, home() / "target/inbox/Track.0.imp.gpx");
  EXPECT_EQ(second, home() / "target/inbox/Track.1.imp.gpx");
  EXPECT_EQ(readFile(*second), "track");
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(QMFileHelper::copyFileWithNameResolution("T.gpx", "imp", (home() / "nope").string(),
                                                     "inbox", home() / "target"),
            std::nullopt);
  EXPECT_EQ(::testing::internal::GetCapturedStdout().rfind("eror when saving file: ", 0), 0u);
}

TEST_F(QMFileHelperTest, HardLinkReplacesWhatIsThere) {
  writeFile(home() / "f", "data");
  writeFile(home() / "links/l", "old");
  const auto made = QMFileHelper::createLinkToFile(home() / "f", "l", home() / "links");
  ASSERT_TRUE(made.destination.has_value());
  EXPECT_EQ(fs::hard_link_count(home() / "f"), 2u);
  EXPECT_EQ(readFile(home() / "links/l"), "data");
  const auto failed = QMFileHelper::createLinkToFile(home() / "missing", "m", home() / "links");
  EXPECT_FALSE(failed.destination.has_value());
  ASSERT_TRUE(failed.error.has_value());
  EXPECT_EQ(failed.error->code(), ENOENT);
}

TEST_F(QMFileHelperTest, CopyFilesRenamesWithTheTemplateAndThrowsOnFailure) {
  writeFile(home() / "src/track-1.gpx", "1");
  writeFile(home() / "src/track-2.gpx", "2");
  writeFile(home() / "src/notes.txt", "n");
  fs::create_directories(home() / "dst");
  const QMFileHelper::Substitution rename{*RegularExpression::create("track-(\\d)"), "t$1"};
  QMFileHelper::copyFiles(*RegularExpression::create("\\.gpx$"), home() / "src", home() / "dst",
                          rename);
  EXPECT_EQ(tree(home() / "dst"), (Files{"t1.gpx", "t2.gpx"}));
  EXPECT_EQ(QMFileHelper::reWriteFileName("track-9.gpx", std::nullopt), "track-9.gpx");
  // Copying again finds the names taken.
  EXPECT_THROW(QMFileHelper::copyFiles(*RegularExpression::create("gpx"), home() / "src",
                                       home() / "dst", rename),
               ErrorException);
}

TEST_F(QMFileHelperTest, SizesAndDates) {
  writeFile(home() / "f", "12345");
  const std::string f = (home() / "f").string();
  EXPECT_EQ(QMFileHelper::sizeForLocalFilePath(f), 5u);
  const struct utimbuf times { 1000, 2000 };
  ASSERT_EQ(::utime(f.c_str(), &times), 0);
  EXPECT_EQ(QMFileHelper::modificationDateForLocalFilePath(f), Date::fromUnixSeconds(2000));
  for (const std::string& missing : {(home() / "none").string(), f + "/inner"}) {
    EXPECT_EQ(QMFileHelper::sizeForLocalFilePath(missing), std::nullopt);
    EXPECT_EQ(QMFileHelper::creationDateForLocalFilePath(missing), std::nullopt);
    EXPECT_EQ(QMFileHelper::modificationDateForLocalFilePath(missing), std::nullopt);
  }
  EXPECT_TRUE(QMFileHelper::directoryExistsAtPath(home().string()));
  EXPECT_FALSE(QMFileHelper::directoryExistsAtPath(f));
  EXPECT_TRUE(QMFileHelper::createDirectoryAtPath((home() / "a/b").string()));
  ::testing::internal::CaptureStdout();
  EXPECT_FALSE(QMFileHelper::createDirectoryAtPath(f + "/x"));
  EXPECT_NE(::testing::internal::GetCapturedStdout(), "");
}

// A file goes into a top-level folder named by the zip-dir name; a folder is zipped as it is, by
// default to its path + ".zip". Another reader lists the entries and checks every CRC.
TEST_F(QMFileHelperTest, ZipWritesTheArchiveAndCleansUp) {
  writeFile(home() / "a.log", "line\n");
  writeFile(home() / "data/x.txt", "x");
  writeFile(home() / "data/sub/y.txt", "yy");
  const auto entries = [](const fs::path& zip) {
    return run("unzip -Z1 '" + zip.string() + "' && unzip -tq '" + zip.string() + "' >/dev/null");
  };
  ConsoleCapture console;
  EXPECT_EQ(QMFileHelper::zip(home() / "a.log", home() / "a.zip", "MyZipDir", env_),
            home() / "a.zip");
  EXPECT_EQ(QMFileHelper::zip(home() / "data", std::nullopt, "MyZipDir", env_),
            home() / "data.zip");
  EXPECT_TRUE(console.texts().empty());
  EXPECT_EQ(entries(home() / "a.zip"), "MyZipDir/\nMyZipDir/a.log\n");
  EXPECT_EQ(entries(home() / "data.zip"), "data/\ndata/sub/\ndata/sub/y.txt\ndata/x.txt\n");
  // Neither the scratch folder nor the archive in the making is left behind.
  EXPECT_EQ(tree(env_.temporaryDirectory()), Files{});
  EXPECT_EQ(readFile(home() / "a.log"), "line\n");
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
    EXPECT_EQ(console.texts(), c.copyFailed ? Files{"zipping succeeded but copying the zip file "
                                                    "failed"}
                                            : Files{});
    EXPECT_EQ(tree(env.temporaryDirectory()), Files{"taken"});
    EXPECT_EQ(tree(work), (Files{"a.log", "old.zip", "plain"}));
    EXPECT_EQ(testing::readFile(work / "old.zip"), "an older archive");
  }
}

TEST_F(QMFileHelperTest, ClearTmpDirectoryEmptiesTheEnvironmentsTemporaryFolder) {
  writeFile(env_.temporaryDirectory() / "a", "");
  writeFile(env_.temporaryDirectory() / "d/b", "");
  writeFile(home() / "kept", "");
  clearTmpDirectory(env_);
  EXPECT_EQ(tree(env_.temporaryDirectory()), Files{});
  EXPECT_TRUE(fs::exists(home() / "kept"));
}

TEST_F(QMFileHelperTest, DiskFiguresAddUpForTheEnvironmentsHome) {
  const double total = QMDisk::totalDiskSpaceInBytes(env_);
  const double free = QMDisk::freeDiskSpaceInBytes(env_);
  const double used = QMDisk::usedDiskSpaceInBytes(env_);
  EXPECT_GT(total, 0);
  EXPECT_LE(free, total);
  EXPECT_EQ(used, std::trunc(used));
  // Free space can change between the readings; the used figure stays within a megabyte.
  EXPECT_NEAR(used, total - free, 1 << 20);
  EXPECT_EQ(QMDisk::totalDiskSpace(env_),
            QMFormatter::stringFromFileSize(static_cast<std::int64_t>(total)));
  // The texts measure the environment's home as the byte counts do: one that cannot be read
  // is 0, while the process's own home is not.
  std::filesystem::remove_all(home());
  const std::string none = QMFormatter::stringFromFileSize(0);
  EXPECT_EQ(QMDisk::totalDiskSpaceInBytes(env_), 0);
  EXPECT_EQ(QMDisk::totalDiskSpace(env_), none);
  EXPECT_EQ(QMDisk::freeDiskSpace(env_), none);
  EXPECT_EQ(QMDisk::usedDiskSpace(env_), none);
  EXPECT_NE(QMDisk::totalDiskSpace(), none);
}

}  // namespace
}  // namespace qm
