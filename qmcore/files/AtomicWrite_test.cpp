#include "qmcore/files/AtomicWrite.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

using Files = std::vector<std::string>;

// Files are written whole and replaced whole; a failure leaves the folder as it was.
TEST(AtomicWriteTest, ReplacesWholeFilesAndFailsWithoutATrace) {
  testing::FakeEnv env;
  const auto folder = env.temporaryDirectory();
  for (const std::string& data : {std::string(), std::string("a\0b", 3), std::string("old")}) {
    ASSERT_FALSE(writeDataAtomically(folder / "file", data).has_value());
    EXPECT_EQ(testing::readFile(folder / "file"), data);
    EXPECT_EQ(testing::tree(folder), Files{"file"});  // nothing left beside it
  }
  std::filesystem::create_directories(folder / "taken" / "inner");
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
