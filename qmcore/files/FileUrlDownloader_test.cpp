#include "qmcore/files/FileUrlDownloader.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "qmcore/files/MD5.hpp"
#include "qmcore/testing/DownloadTestServer.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

class FileUrlDownloaderTest : public ::testing::Test {
 protected:
  // Downloads and returns what the completion got; fails the test when it is not called once.
  std::optional<Error> download(const std::string& path, const std::filesystem::path& to,
                                std::optional<std::string_view> md5) {
    int calls = 0;
    std::optional<Error> got;
    FileUrlDownloader::downloadFileFromUrl(server_.url(path), to, md5,
                                           [&](const std::optional<Error>& error) {
                                             ++calls;
                                             got = error;
                                           });
    EXPECT_EQ(calls, 1);
    return got;
  }

  testing::DownloadTestServer server_;
  testing::FakeEnv env_;
};

TEST_F(FileUrlDownloaderTest, DataGetAcceptsOnlyStatus200) {
  for (const int status : {200, 201, 304, 404, 500}) {
    const std::string url = server_.url("/status/" + std::to_string(status));
    std::optional<Error> error;
    const auto data = FileUrlDownloader::dataWithGetFromUrlString(url, &error);
    if (status == 200) {
      EXPECT_EQ(data, "status body");
      EXPECT_FALSE(error.has_value());
      continue;
    }
    EXPECT_FALSE(data.has_value()) << status;
    ASSERT_TRUE(error.has_value()) << status;
    EXPECT_EQ(error->domain(), "download");
    EXPECT_EQ(error->code(), 205);
    EXPECT_EQ(error->localizedDescription(),
              "Server at the provided url ('" + url +
                  "') returned error code: " + std::to_string(status));
    // Without a place for the error there is simply nothing.
    EXPECT_FALSE(FileUrlDownloader::dataWithGetFromUrlString(url).has_value());
  }
  EXPECT_EQ(FileUrlDownloader::dataWithGetFromUrlString(server_.url("/empty")), "");
}

TEST_F(FileUrlDownloaderTest, TextGetDecodesUtf8AndIgnoresTheStatus) {
  const struct {
    const char* path;
    std::optional<std::string> text;
  } cases[] = {
      {"/text",
       "Gr\xc3\xbc\xc3\x9f"
       "e"},
      {"/empty", ""},
      {"/status/404", "status body"},
      {"/binary", std::nullopt},
  };
  for (const auto& c : cases) {
    std::optional<Error> error;
    EXPECT_EQ(FileUrlDownloader::stringWithGetFromUrlString(server_.url(c.path), &error), c.text)
        << c.path;
    EXPECT_FALSE(error.has_value()) << c.path;
  }
}

TEST_F(FileUrlDownloaderTest, JsonGetReturnsObjectsAndArraysElseAnEmptyDictionary) {
  const struct {
    const char* path;
    nlohmann::json json;
  } cases[] = {
      {"/json/object", {{"name", "maps"}, {"size", 3}}},
      {"/json/array", nlohmann::json::array({1, "two", {{"three", 3}}})},
      {"/json/scalar", nlohmann::json::object()},
      {"/json/broken", nlohmann::json::object()},
      {"/empty", nlohmann::json::object()},
  };
  for (const auto& c : cases) {
    std::optional<Error> error;
    EXPECT_EQ(FileUrlDownloader::jsonDictionaryWithGetFromUrlString(server_.url(c.path), &error),
              c.json)
        << c.path;
    EXPECT_FALSE(error.has_value());
  }
}

TEST_F(FileUrlDownloaderTest, DictionaryFromJsonString) {
  const struct {
    const char* text;
    nlohmann::json json;
  } cases[] = {
      {R"({"a":[1,2]})", {{"a", {1, 2}}}},         {"[]", nlohmann::json::array()},
      {" [true] ", nlohmann::json::array({true})}, {"", nlohmann::json::object()},
      {"\"text\"", nlohmann::json::object()},      {"null", nlohmann::json::object()},
      {"{\"a\":1}x", nlohmann::json::object()},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FileUrlDownloader::dictionaryFromJsonString(c.text), c.json) << c.text;
  }
}

TEST_F(FileUrlDownloaderTest, FormPostSendsAsciiWithItsLengthAndType) {
  const struct {
    const char* form;
    const char* sent;
  } cases[] = {
      {"a=1&b=two", "a=1&b=two"},
      {"", ""},
      {"name=J\xc3\xbcrgen&city=\xe6\x9d\xb1\xe4\xba\xac", "name=J?rgen&city=??"},
  };
  for (const auto& c : cases) {
    const nlohmann::json echo =
        FileUrlDownloader::jsonDictionaryWithPostFromUrlString(server_.url("/form"), c.form);
    EXPECT_EQ(echo["method"], "POST");
    EXPECT_EQ(echo["contentType"], "application/x-www-form-urlencoded");
    EXPECT_EQ(echo["contentLength"], std::to_string(std::string(c.sent).size()));
    EXPECT_EQ(echo["body"], c.sent);
  }
  // Any failure is an empty text.
  EXPECT_EQ(FileUrlDownloader::getStringWithPostFromUrlString("not a url", "a"), "");
}

TEST_F(FileUrlDownloaderTest, UrlsThatCannotBeRequestedGiveError200) {
  std::optional<Error> error;
  EXPECT_FALSE(FileUrlDownloader::dataWithGetFromUrlString("not a url", &error).has_value());
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->code(), 200);
  EXPECT_EQ(error->domain(), "bad URL: not a url");
  // The text GET prints the failure and answers with an empty text instead.
  error.reset();
  EXPECT_EQ(FileUrlDownloader::stringWithGetFromUrlString("not a url", &error), "");
  EXPECT_FALSE(error.has_value());
}

TEST_F(FileUrlDownloaderTest, DownloadWritesTheFileWhenTheDigestMatches) {
  const std::string text =
      "Gr\xc3\xbc\xc3\x9f"
      "e";
  const std::string digest = MD5::hexStringDigestForData(text);
  const auto to = env_.temporaryDirectory() / "text.txt";
  for (const bool check : {false, true}) {
    std::filesystem::remove(to);
    const auto error =
        download("/text", to, check ? std::optional<std::string_view>(digest) : std::nullopt);
    EXPECT_FALSE(error.has_value()) << error->localizedDescription();
    EXPECT_EQ(testing::readFile(to), text);
  }
  // An existing file is replaced.
  EXPECT_FALSE(download("/empty", to, std::nullopt).has_value());
  EXPECT_EQ(testing::readFile(to), "");
}

TEST_F(FileUrlDownloaderTest, FailedDownloadsNeverTouchTheDestination) {
  const std::string digest = MD5::hexStringDigestForData(
      "Gr\xc3\xbc\xc3\x9f"
      "e");
  std::string upper = digest;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  const struct {
    const char* path;
    std::string md5;
    std::int64_t code;
    std::string description;
  } cases[] = {
      {"/text", upper, 202,
       "md5 checksum for downloaded data '" + digest +
           "' is different from expected checksum of '" + upper +
           "' (url: " + server_.url("/text") + ")"},
      {"/text", "0", 202, ""},
      {"/status/404", digest, 205,
       "Server at the provided url ('" + server_.url("/status/404") +
           "') returned error code: 404"},
      {"/short", digest, 204, ""},
  };
  for (const bool existing : {false, true}) {
    for (const auto& c : cases) {
      const auto to = env_.temporaryDirectory() / "kept.txt";
      std::filesystem::remove(to);
      if (existing) std::ofstream(to) << "old";
      const auto error = download(c.path, to, c.md5);
      ASSERT_TRUE(error.has_value()) << c.path;
      EXPECT_EQ(error->domain(), "download");
      EXPECT_EQ(error->code(), c.code) << c.path;
      if (!c.description.empty()) {
        EXPECT_EQ(error->localizedDescription(), c.description);
      }
      EXPECT_EQ(std::filesystem::exists(to), existing) << c.path;
      if (existing) {
        EXPECT_EQ(testing::readFile(to), "old");
      }
      // Nothing else appears in the folder either.
      EXPECT_EQ(std::distance(std::filesystem::directory_iterator(env_.temporaryDirectory()),
                              std::filesystem::directory_iterator()),
                existing ? 1 : 0);
    }
  }
}

TEST_F(FileUrlDownloaderTest, DownloadIntoAMissingFolderReportsTheWriteError) {
  const auto error = download("/text", env_.temporaryDirectory() / "no" / "x.txt", std::nullopt);
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->code(), ENOENT);
}

TEST_F(FileUrlDownloaderTest, SignedUrls) {
  const struct {
    const char* file;
    const char* base;
    double expires;
    const char* secret;
    const char* url;
  } cases[] = {
      {"F.zip", "https://example.org/d", 1700000000, "s3cret",
       "https://example.org/d/F.zip?md5=NnQMZMxAjiB7XaYFcFDqrQ&expires=1700000000"},
      // The expiry is rounded the same way in the signature and in the URL.
      {"F.zip", "https://example.org/d", 1699999999.6, "s3cret",
       "https://example.org/d/F.zip?md5=NnQMZMxAjiB7XaYFcFDqrQ&expires=1700000000"},
      {"maps v2.zip", "http://h", 1700000000.7, "k+y=/",
       "http://h/maps v2.zip?md5=fjODrixc9M_22KIoICeSjQ&expires=1700000001"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FileUrlDownloader::urlForProtectedFileName(c.file, c.base, c.expires, c.secret),
              c.url);
  }
  // The short form is valid for five minutes from now: 2001-01-01 plus 300 s.
  EXPECT_EQ(FileUrlDownloader::urlForProtectedFileName("a.zip", "B", "s", env_),
            "B/a.zip?md5=Av43cEz2ztGAOKyFa7TtiA&expires=978307500");
}

}  // namespace
}  // namespace qm
