#include "qmcore/files/QMFileHelper.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utime.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/files/FileManagerCleanup.hpp"
#include "qmcore/files/FilesTestSupport.hpp"
#include "qmcore/files/QMDisk.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::readFile;
using testing::tree;
using testing::writeFile;
using Files = std::vector<std::string>;

class QMFileHelperTest : public ::testing::Test {
 protected:
  fs::path home() const { return env_.homeDirectory(); }
  testing::FakeEnv env_;
};

struct SanitizeCase {
  std::string name;
  std::string expected;
};

class SanitizeTest : public ::testing::TestWithParam<SanitizeCase> {};

TEST_P(SanitizeTest, ReplacesEachForbiddenCharacterByOneDash) {
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString(GetParam().name), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Names, SanitizeTest,
                         ::testing::Values(SanitizeCase{"a:b/c", "a-b-c"},
                                           SanitizeCase{"plain name.gpx", "plain name.gpx"},
                                           SanitizeCase{"/\\?%*|\"<>:", "----------"},
                                           SanitizeCase{"::", "--"}, SanitizeCase{"", ""},
                                           SanitizeCase{"d\xC3\xBC:r", "d\xC3\xBC-r"},
                                           SanitizeCase{"a.b-c_d#e", "a.b-c_d#e"}));

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

struct UniqueCase {
  std::string base;
  std::vector<std::string> existing;
  std::optional<std::string> expected;
};

class UniqueTest : public ::testing::TestWithParam<UniqueCase> {};

TEST_P(UniqueTest, TakesTheFirstFreeNumber) {
  testing::FakeEnv env;
  const fs::path folder = env.homeDirectory();
  for (const std::string& name : GetParam().existing) writeFile(folder / name, "");
  const std::optional<fs::path> path =
      QMFileHelper::uniquedFileUrlForBaseFileUrl("/some/where/" + GetParam().base, "x", folder);
  if (!GetParam().expected) {
    EXPECT_EQ(path, std::nullopt);
  } else {
    EXPECT_EQ(path, folder / *GetParam().expected);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Bases, UniqueTest,
    ::testing::Values(UniqueCase{"report.pdf", {}, "report.0.x.pdf"},
                      UniqueCase{"report.pdf", {"report.0.x.pdf"}, "report.1.x.pdf"},
                      UniqueCase{
                          "report.pdf", {"report.0.x.pdf", "report.2.x.pdf"}, "report.1.x.pdf"},
                      UniqueCase{".gpx", {}, "file.0.x.gpx"}, UniqueCase{"noext", {}, "noext.0.x"},
                      UniqueCase{"a.tar.gz", {}, "a.tar.0.x.gz"}));

TEST(UniqueLimitTest, GivesUpAfterTenThousandAndTwoCandidates) {
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

// Captures the facade's file messages (debug builds) for the clean-up tests.
class CleanupTest : public QMFileHelperTest {
 protected:
  CleanupTest()
      : sink_([this](std::string_view, std::string message) { messages_.push_back(message); }) {}
  void touch(const fs::path& path, double mtime) {
    writeFile(path, "");
    const struct utimbuf times { static_cast<time_t>(mtime), static_cast<time_t>(mtime) };
    ASSERT_EQ(::utime(path.c_str(), &times), 0);
  }
  std::vector<std::string> messages_;
  ScopedDebugLogFileSink sink_;
};

TEST_F(CleanupTest, RemoveFilesOlderDeletesStrictlyEarlierOnly) {
  const fs::path folder = home() / "archive";
  touch(folder / "old.zip", 999);
  touch(folder / "cutoff.zip", 1000);
  touch(folder / "new.zip", 1001);
  EXPECT_EQ(removeFilesOlder(Date::fromUnixSeconds(1000), folder), 1);
  EXPECT_EQ(tree(folder), (Files{"cutoff.zip", "new.zip"}));
  EXPECT_TRUE(messages_.empty());
}

TEST_F(CleanupTest, FailuresAreLoggedWithTheCleanupText) {
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(removeFilesOlder(Date::fromUnixSeconds(1000), home() / "missing"), 0);
  ::testing::internal::GetCapturedStdout();
  const std::size_t expected = kQMEnableDebugLog ? 1 : 0;
  ASSERT_EQ(messages_.size(), expected);
  if (expected) {
    EXPECT_NE(messages_[0].find(", debuglog[:] [FILE]: Error when cleaning up temporary "
                                "directory: Error Domain=NSPOSIXErrorDomain Code=2 "),
              std::string::npos)
        << messages_[0];
  }
}

TEST_F(CleanupTest, ClearTmpDirectoryEmptiesTheEnvironmentsTemporaryFolder) {
  writeFile(env_.temporaryDirectory() / "a", "");
  writeFile(env_.temporaryDirectory() / "d/b", "");
  writeFile(home() / "kept", "");
  clearTmpDirectory(env_);
  EXPECT_EQ(tree(env_.temporaryDirectory()), Files{});
  EXPECT_TRUE(fs::exists(home() / "kept"));
  EXPECT_TRUE(messages_.empty());
}

TEST_F(QMFileHelperTest, DiskFiguresAddUp) {
  const double total = QMDisk::totalDiskSpaceInBytes(env_);
  const double free = QMDisk::freeDiskSpaceInBytes(env_);
  const double used = QMDisk::usedDiskSpaceInBytes(env_);
  EXPECT_GT(total, 0);
  EXPECT_LE(free, total);
  EXPECT_EQ(used, std::trunc(used));
  // Free space can change between the readings; the used figure stays within a megabyte.
  EXPECT_NEAR(used, total - free, 1 << 20);
  EXPECT_NE(QMDisk::totalDiskSpace().find("B"), std::string::npos);
}

}  // namespace
}  // namespace qm
