#include "qmcore/platform/Http.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

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

TEST_F(HttpTest, EveryStatusComesBackWithItsBody) {
  for (const int status : {200, 201, 304, 404, 500}) {
    const HttpResult result =
        sendHttpRequest({.url = server_.url("/status/" + std::to_string(status))});
    ASSERT_FALSE(result.error.has_value())
        << status << ": " << result.error->localizedDescription();
    ASSERT_TRUE(result.response.has_value());
    EXPECT_EQ(result.response->statusCode, status);
    EXPECT_EQ(*result.data, status == 304 ? "" : "body of " + std::to_string(status));
  }
}

TEST_F(HttpTest, RedirectsAreFollowed) {
  const HttpResult result = sendHttpRequest({.url = server_.url("/moved")});
  ASSERT_TRUE(result.response.has_value());
  EXPECT_EQ(result.response->statusCode, 200);
  EXPECT_EQ(result.response->url, server_.url("/status/200"));
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
  for (const char* url : {"", "not a url", "http://exa mple.org/"}) {
    EXPECT_THROW(sendHttpRequest({.url = url}), std::invalid_argument) << url;
  }
}

}  // namespace
}  // namespace qm
