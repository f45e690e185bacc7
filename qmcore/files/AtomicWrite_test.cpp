#include "qmcore/files/AtomicWrite.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

using Files = std::vector<std::string>;

TEST(AtomicWriteTest, WritesNewFilesAndReplacesOldOnesWhole) {
  testing::FakeEnv env;
  const auto path = env.temporaryDirectory() / "a.bin";
  for (const std::string& data : {std::string("first"), std::string("a\0b", 3), std::string()}) {
    ASSERT_FALSE(writeDataAtomically(path, data).has_value());
    EXPECT_EQ(testing::readFile(path), data);
    EXPECT_EQ(testing::tree(env.temporaryDirectory()), Files{"a.bin"});  // nothing left beside it
  }
}

TEST(AtomicWriteTest, FailuresLeaveTheFolderAsItWas) {
  testing::FakeEnv env;
  const auto folder = env.temporaryDirectory();
  std::filesystem::create_directories(folder / "taken" / "inner");
  ASSERT_FALSE(writeDataAtomically(folder / "file", "old").has_value());
  const struct {
    std::filesystem::path path;
    int code;
  } cases[] = {
      {folder / "taken", EISDIR},            // a folder is never replaced by a file
      {folder / "no" / "such.txt", ENOENT},  // nor are folders made on the way
      {folder / "file" / "x", ENOTDIR},
  };
  for (const auto& c : cases) {
    const auto error = writeDataAtomically(c.path, "new");
    ASSERT_TRUE(error.has_value()) << c.path;
    EXPECT_EQ(error->domain(), kPOSIXErrorDomain);
    EXPECT_EQ(error->code(), c.code) << c.path;
  }
  EXPECT_EQ(testing::readFile(folder / "file"), "old");
  EXPECT_EQ(testing::tree(folder), (Files{"file", "taken/", "taken/inner/"}));
}

}  // namespace
}  // namespace qm
