#include "qmcore/platform/Http.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/platform/Digest.hpp"
#include "qmcore/platform/Url.hpp"
#include "qmcore/testing/ClosingServer.hpp"
#include "qmcore/testing/LoopbackHttpServer.hpp"

namespace qm {
namespace {

class HttpTest : public ::testing::Test {
 protected:
  void SetUp() override {
    server_.http().Get("/status/(\\d+)", [](const httplib::Request& req, httplib::Response& res) {
      res.status = std::stoi(req.matches[1]);
      // A 304 has no body by definition.
      if (res.status != 304)
        res.set_content("body of " + std::string(req.matches[1]), "text/plain");
    });
    server_.http().Post("/echo", [](const httplib::Request& req, httplib::Response& res) {
      res.set_content(req.get_header_value("Content-Type") + "|" + req.body, "text/plain");
    });
    server_.http().Get("/moved", [](const httplib::Request&, httplib::Response& res) {
      res.set_redirect("/status/200");
    });
    server_.start();
  }

  testing::LoopbackHttpServer server_;
};

TEST_F(HttpTest, EveryStatusComesBackWithItsBodyAndRedirectsAreFollowed) {
  for (const int status : {200, 304, 404}) {
    const HttpResult result =
        sendHttpRequest({.url = server_.url("/status/" + std::to_string(status))});
    ASSERT_FALSE(result.error.has_value())
        << status << ": " << result.error->localizedDescription();
    ASSERT_TRUE(result.response.has_value());
    EXPECT_EQ(result.response->statusCode, status);
    EXPECT_EQ(*result.data, status == 304 ? "" : "body of " + std::to_string(status));
  }
  const HttpResult moved = sendHttpRequest({.url = server_.url("/moved")});
  ASSERT_TRUE(moved.response.has_value());
  EXPECT_EQ(moved.response->statusCode, 200);
  EXPECT_EQ(moved.response->url, server_.url("/status/200"));
}

TEST_F(HttpTest, BodyAndHeaderFieldsAreSent) {
  const HttpResult result = sendHttpRequest({.url = server_.url("/echo"),
                                             .method = "POST",
                                             .headerFields = {{"Content-Type", "text/x-test"}},
                                             .body = "a=1&b=2"});
  ASSERT_TRUE(result.data.has_value());
  EXPECT_EQ(*result.data, "text/x-test|a=1&b=2");
}

TEST_F(HttpTest, TransportFailuresGiveAnErrorAndNoResponse) {
  testing::ClosingServer closing;
  const HttpResult result = sendHttpRequest({.url = closing.url("/x"), .timeoutInterval = 2});
  ASSERT_TRUE(result.error.has_value());
  EXPECT_EQ(result.error->domain(), kHttpTransportErrorDomain);
  // Nothing came back, or the connection was reset while the request was being read.
  EXPECT_TRUE(result.error->code() == 52 || result.error->code() == 56) << result.error->code();
  EXPECT_FALSE(result.response.has_value());
  EXPECT_FALSE(result.data.has_value());
}

TEST_F(HttpTest, UrlsThatCannotBeParsedThrowWhileBuilding) {
  for (const char* url : {"not a url", "http://exa mple.org/"}) {
    EXPECT_THROW(sendHttpRequest({.url = url}), std::invalid_argument) << url;
  }
}

using Items = std::vector<URLQueryItem>;

TEST(UrlTest, QueryItemsAreSplitAndDecoded) {
  const std::pair<const char*, std::optional<Items>> cases[] = {
      {"https://example.org/d", std::nullopt},
      {"https://example.org/d?", Items{}},
      {"https://example.org/d?a", Items{{"a", std::nullopt}}},
      {"https://example.org/d?a=", Items{{"a", ""}}},
      {"https://example.org/d?a=b=c", Items{{"a", "b=c"}}},
      {"https://example.org/d?m%26d=x%2By+z%3D", Items{{"m&d", "x+y+z="}}},
      {"https://example.org/d?bad=%zz%4", Items{{"bad", "%zz%4"}}},
      {"https://example.org/d?a=1&b#frag", Items{{"a", "1"}, {"b", std::nullopt}}},
      {"myapp://open/x?id=7", Items{{"id", "7"}}},
  };
  for (const auto& [url, items] : cases) {
    const auto components = URLComponents::fromString(url);
    ASSERT_TRUE(components.has_value()) << url;
    EXPECT_EQ(components->queryItems(), items) << url;
  }
}

TEST(UrlTest, PartsOfAUrlAndTextsThatAreNoUrl) {
  const auto components = URLComponents::fromString("https://example.org:8443/a/b.zip?x=1");
  ASSERT_TRUE(components.has_value());
  EXPECT_EQ(components->scheme(), "https");
  EXPECT_EQ(components->host(), "example.org");
  EXPECT_EQ(components->path(), "/a/b.zip");
  EXPECT_EQ(components->percentEncodedQuery(), "x=1");
  for (const char* text : {"no url", "http://", "://x"}) {
    EXPECT_FALSE(URLComponents::fromString(text).has_value()) << text;
  }
  EXPECT_FALSE(URLComponents::fromString(std::string_view("http://a/\0b", 11)).has_value());
}

TEST(DigestTest, Base64PadsAndNeverBreaksLines) {
  for (const auto& [input, base64] :
       {std::pair{"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xfb\xff", "+/8="}}) {
    EXPECT_EQ(base64Encode(input), base64) << input;
  }
  // 120 bytes encode to 160 characters; OpenSSL's streaming encoder would break at 64.
  const std::string encoded = base64Encode(std::string(120, 'x'));
  EXPECT_EQ(encoded.size(), 160u);
  EXPECT_EQ(encoded.find('\n'), std::string::npos);
}

// The digests themselves are checked against reference texts by the files layer's MD5 test.
TEST(DigestTest, ThreadsDigestAtOnceWithoutMixingTheirContexts) {
  const std::string inputs[] = {"", "abc"};
  std::vector<std::thread> threads;
  std::vector<Md5Digest> results(8);
  for (std::size_t i = 0; i < results.size(); ++i) {
    threads.emplace_back([&, i] {
      for (int round = 0; round < 200; ++round) results[i] = md5Digest(inputs[i % 2]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < results.size(); ++i) EXPECT_EQ(results[i], md5Digest(inputs[i % 2]));
}

}  // namespace
}  // namespace qm
