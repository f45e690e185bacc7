// The download server of the downloader's tests: a loopback HTTP server whose paths answer as
// a good server does and as bad ones do.
//
//   /text              "Grüße" as UTF-8          /empty        200 with no body
//   /binary            bytes that are no UTF-8   /status/N     status N with a short body
//   /json/K            K = object, array, scalar or broken JSON
//   /form (POST)       echoes method, Content-Type, Content-Length and body as a JSON object
//   /short             announces 100 bytes, sends 10 and hangs up
//   /silent/MS         says nothing for MS milliseconds (less if the server stops), then "late"
//   /slow/N/MS         N bytes, one every MS milliseconds
//   /big               kBigSize bytes streamed from memory (bigBody() is the same bytes)

#ifndef QMCORE_TESTING_DOWNLOADTESTSERVER_HPP_
#define QMCORE_TESTING_DOWNLOADTESTSERVER_HPP_

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

#include "qmcore/testing/LoopbackHttpServer.hpp"

namespace qm::testing {

class DownloadTestServer {
 public:
  static constexpr std::size_t kBigSize = 100u << 20;
  static constexpr std::size_t kBigPattern = 1u << 20;

  DownloadTestServer() : pattern_(makePattern()) {
    httplib::Server& http = server_.http();
    http.Get("/text", [](const httplib::Request&, httplib::Response& res) {
      res.set_content(
          "Gr\xc3\xbc\xc3\x9f"
          "e",
          "text/plain; charset=utf-8");
    });
    http.Get("/empty", [](const httplib::Request&, httplib::Response& res) { res.status = 200; });
    http.Get("/binary", [](const httplib::Request&, httplib::Response& res) {
      res.set_content("\xff\xfe\x00\x01", 4, "application/octet-stream");
    });
    http.Get("/status/(\\d+)", [](const httplib::Request& req, httplib::Response& res) {
      res.status = std::stoi(req.matches[1]);
      if (res.status != 304) res.set_content("status body", "text/plain");
    });
    http.Get("/json/(\\w+)", [](const httplib::Request& req, httplib::Response& res) {
      const std::string kind = req.matches[1];
      const std::string body = kind == "object"   ? R"({"name":"maps","size":3})"
                               : kind == "array"  ? R"([1,"two",{"three":3}])"
                               : kind == "scalar" ? "42"
                                                  : R"({"name":)";
      res.set_content(body, "application/json");
    });
    http.Post("/form", [](const httplib::Request& req, httplib::Response& res) {
      const nlohmann::json echo = {{"method", req.method},
                                   {"contentType", req.get_header_value("Content-Type")},
                                   {"contentLength", req.get_header_value("Content-Length")},
                                   {"body", req.body}};
      res.set_content(echo.dump(), "application/json");
    });
    http.Get("/short", [](const httplib::Request&, httplib::Response& res) {
      res.set_content_provider(100, "application/octet-stream",
                               [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                 if (offset > 0) return false;  // hang up after 10 bytes
                                 sink.write("0123456789", 10);
                                 return true;
                               });
    });
    http.Get("/silent/(\\d+)", [this](const httplib::Request& req, httplib::Response& res) {
      server_.hang(std::chrono::milliseconds(std::stoi(req.matches[1])));
      res.set_content("late", "text/plain");
    });
    http.Get("/slow/(\\d+)/(\\d+)", [](const httplib::Request& req, httplib::Response& res) {
      const std::size_t count = std::stoul(req.matches[1]);
      const auto pause = std::chrono::milliseconds(std::stoi(req.matches[2]));
      res.set_content_provider(count, "application/octet-stream",
                               [pause](std::size_t, std::size_t, httplib::DataSink& sink) {
                                 std::this_thread::sleep_for(pause);
                                 sink.write("s", 1);
                                 return true;
                               });
    });
    http.Get("/big", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content_provider(
          kBigSize, "application/octet-stream",
          [this](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            const std::size_t start = offset % kBigPattern;
            const std::size_t count = std::min(length, kBigPattern - start);
            sink.write(pattern_.data() + start, count);
            return true;
          });
    });
    server_.start();
  }

  std::string url(const std::string& path) const { return server_.url(path); }
  LoopbackHttpServer& server() { return server_; }

  // The bytes /big sends.
  std::string bigBody() const {
    std::string body;
    body.reserve(kBigSize);
    while (body.size() < kBigSize) body += pattern_;
    return body;
  }

 private:
  static std::string makePattern() {
    std::string pattern(kBigPattern, '\0');
    for (std::size_t i = 0; i < pattern.size(); ++i) pattern[i] = static_cast<char>((i * 7) % 251);
    return pattern;
  }

  const std::string pattern_;
  LoopbackHttpServer server_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_DOWNLOADTESTSERVER_HPP_
