#include "qmcore/files/FileUrlDownloader.hpp"

#include <gtest/gtest.h>

#include "qmcore/testing/DownloadTestServer.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

constexpr const char* kText = "Gr\u00fc\u00dfe";

class FileUrlDownloaderTest : public ::testing::Test {
 protected:
  testing::DownloadTestServer server_;
  testing::FakeEnv env_;
};

TEST_F(FileUrlDownloaderTest, DataGetsAcceptOnlyStatus200AndTextGetsOnlyUtf8) {
  const struct {
    const char* path;
    std::optional<std::string> data;  // nothing: error 205
    std::optional<std::string> text;
  } cases[] = {
      {"/body/text", kText, kText},
      {"/body/empty", "", ""},
      {"/body/binary", "\xff\xfe", std::nullopt},
      {"/status/201", std::nullopt, "status body"},
      {"/status/304", std::nullopt, ""},
  };
  for (const auto& c : cases) {
    const std::string url = server_.url(c.path);
    std::optional<Error> error;
    EXPECT_EQ(FileUrlDownloader::dataWithGetFromUrlString(url, &error), c.data) << c.path;
    EXPECT_EQ(FileUrlDownloader::dataWithGetFromUrlString(url), c.data) << c.path;
    if (!c.data.has_value()) {
      ASSERT_TRUE(error.has_value());
      EXPECT_EQ(error->domain(), "download");
      EXPECT_EQ(error->code(), 205);
      EXPECT_EQ(error->localizedDescription(),
                "Server at the provided url ('" + url +
                    "') returned error code: " + url.substr(url.rfind('/') + 1));
    }
    error.reset();
    EXPECT_EQ(FileUrlDownloader::stringWithGetFromUrlString(url, &error), c.text) << c.path;
    EXPECT_FALSE(error.has_value());
  }
}

TEST_F(FileUrlDownloaderTest, JsonIsAnObjectOrAnArrayElseAnEmptyDictionary) {
  const struct {
    const char* text;
    nlohmann::json json;
  } cases[] = {
      {R"({"a":[1,2]})", {{"a", {1, 2}}}},
      {" [true] ", nlohmann::json::array({true})},
      {"", nlohmann::json::object()},
      {"42", nlohmann::json::object()},
      {R"({"a":1}x)", nlohmann::json::object()},
      {R"({"a":)", nlohmann::json::object()},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FileUrlDownloader::dictionaryFromJsonString(c.text), c.json) << c.text;
    // The server echoes the form, which it gets with a form's length and type.
    EXPECT_EQ(FileUrlDownloader::jsonDictionaryWithPostFromUrlString(server_.url("/echo"), c.text),
              c.json)
        << c.text;
  }
  EXPECT_EQ(FileUrlDownloader::jsonDictionaryWithGetFromUrlString(server_.url("/body/array")),
            nlohmann::json::array({1, "two", {{"three", 3}}}));
  EXPECT_EQ(FileUrlDownloader::getStringWithPostFromUrlString(server_.url("/echo"),
                                                              "name=J\u00fcrgen&city=\u6771\u4eac"),
            "name=J?rgen&city=??");
}

TEST_F(FileUrlDownloaderTest, UrlsThatCannotBeRequestedFailWithoutThrowing) {
  // The data GET and the plain request give error 200, named by the failure.
  std::optional<Error> dataError;
  std::optional<Error> sendError;
  std::optional<HttpResponse> response = HttpResponse{};
  EXPECT_FALSE(FileUrlDownloader::dataWithGetFromUrlString("not a url", &dataError).has_value());
  EXPECT_FALSE(
      FileUrlDownloader::sendSynchronousRequest({.url = "not a url"}, &response, &sendError));
  EXPECT_FALSE(response.has_value());
  for (const std::optional<Error>& error : {dataError, sendError}) {
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->code(), 200);
    EXPECT_EQ(error->domain(), "bad URL: not a url");
  }
  // The text GET and the form POST print the failure and answer with an empty text instead.
  std::optional<Error> textError;
  EXPECT_EQ(FileUrlDownloader::stringWithGetFromUrlString("not a url", &textError), "");
  EXPECT_FALSE(textError.has_value());
  EXPECT_EQ(FileUrlDownloader::getStringWithPostFromUrlString("not a url", "a"), "");
}

TEST_F(FileUrlDownloaderTest, DownloadsWriteTheFileOnlyWhenAllIsWell) {
  const std::string digest = "49c5f675b49037b6044b803ac9d1a6d7";  // of kText
  const std::string upper = "49C5F675B49037B6044B803AC9D1A6D7";
  const auto to = env_.temporaryDirectory() / "file.txt";
  const struct {
    const char* path;
    std::optional<std::string> md5;
    std::int64_t code;  // 0: written
    const char* written;
  } cases[] = {
      {"/body/text", std::nullopt, 0, kText},
      {"/body/text", digest, 0, kText},
      {"/body/empty", std::nullopt, 0, ""},
      {"/body/text", upper, 202, nullptr},  // the digest is compared exactly
      {"/status/404", digest, 205, nullptr},
      {"/short/0", std::nullopt, 204, nullptr},
  };
  for (const bool existing : {false, true}) {
    for (const auto& c : cases) {
      std::filesystem::remove(to);
      if (existing) testing::writeFile(to, "old");
      const auto error = server_.download(c.path, to, c.md5);
      EXPECT_EQ(error.has_value() ? error->code() : 0, c.code) << c.path;
      // A failure leaves the folder as it was, without even a temporary file.
      const bool kept = existing || c.code == 0;
      EXPECT_EQ(testing::tree(to.parent_path()).size(), kept ? 1u : 0u) << c.path;
      if (kept) {
        EXPECT_EQ(testing::readFile(to), c.code == 0 ? c.written : "old") << c.path;
      }
    }
  }
  EXPECT_EQ(server_.download("/body/text", to, upper)->localizedDescription(),
            "md5 checksum for downloaded data '" + digest +
                "' is different from expected checksum of '" + upper +
                "' (url: " + server_.url("/body/text") + ")");
  EXPECT_EQ(server_.download("/body/text", to.parent_path() / "no" / "x.txt", std::nullopt)->code(),
            ENOENT);
}

TEST_F(FileUrlDownloaderTest, SignedUrls) {
  // The expiry is rounded the same way in the signature and in the URL.
  EXPECT_EQ(
      FileUrlDownloader::urlForProtectedFileName("maps v2.zip", "http://h", 1700000000.7, "k+y=/"),
      "http://h/maps v2.zip?md5=fjODrixc9M_22KIoICeSjQ&expires=1700000001");
  // The short form is valid for five minutes from now: 2001-01-01 plus 300 s.
  EXPECT_EQ(FileUrlDownloader::urlForProtectedFileName("a.zip", "B", "s", env_),
            "B/a.zip?md5=Av43cEz2ztGAOKyFa7TtiA&expires=978307500");
}

}  // namespace
}  // namespace qm
