// The download server of the downloader's tests: a loopback HTTP server whose paths answer as
// a good server does and as bad ones do.
//
//   /body/K        K = text ("Grüße"), empty, binary (no UTF-8) or array (JSON)
//   /status/N      status N with a short body
//   /echo (POST)   the form body, when Content-Type and Content-Length are a form's
//   /short/MS      announces 100 bytes, sends 10, is silent for MS milliseconds, hangs up
//   /silent/MS     says nothing for MS milliseconds, then "late"
//   /slow/N/MS     N bytes, one every MS milliseconds
//   /big           kBigSize bytes streamed from memory
//
// Silences end early when the server stops; silentFor() tells how long ago the last one began.
// download() fetches a path with FileUrlDownloader::downloadFileFromUrl.

#ifndef QMCORE_TESTING_DOWNLOADTESTSERVER_HPP_
#define QMCORE_TESTING_DOWNLOADTESTSERVER_HPP_

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <thread>

#include "qmcore/files/FileUrlDownloader.hpp"
#include "qmcore/testing/LoopbackHttpServer.hpp"

namespace qm::testing {

class DownloadTestServer {
 public:
  // /big sends kBigSize bytes: 100 times the same mebibyte, of digest kBigMd5.
  static constexpr std::size_t kBigSize = 100u << 20;
  static constexpr const char* kBigMd5 = "35dfc33311f555533771b82fc2a60f63";

  DownloadTestServer() {
    httplib::Server& http = server_.http();
    http.Get("/body/(\\w+)", [](const httplib::Request& req, httplib::Response& res) {
      static const std::map<std::string, std::string> bodies = {
          {"text", "Gr\u00fc\u00dfe"},
          {"empty", ""},
          {"binary", "\xff\xfe"},
          {"array", R"([1,"two",{"three":3}])"}};
      res.set_content(bodies.at(req.matches[1]), "application/octet-stream");
    });
    http.Get("/status/(\\d+)", [](const httplib::Request& req, httplib::Response& res) {
      res.status = std::stoi(req.matches[1]);
      if (res.status != 304) res.set_content("status body", "text/plain");
    });
    http.Post("/echo", [](const httplib::Request& req, httplib::Response& res) {
      const bool form =
          req.get_header_value("Content-Type") == "application/x-www-form-urlencoded" &&
          req.get_header_value("Content-Length") == std::to_string(req.body.size());
      res.set_content(form ? req.body : "not a form", "text/plain");
    });
    http.Get("/short/(\\d+)", [this](const httplib::Request& req, httplib::Response& res) {
      const std::chrono::milliseconds silence(std::stoi(req.matches[1]));
      res.set_content_provider(
          100, "application/octet-stream",
          [this, silence](std::size_t offset, std::size_t, httplib::DataSink& sink) {
            if (offset == 0) return sink.write("0123456789", 10);
            hang(silence);
            return false;  // hangs up
          });
    });
    http.Get("/silent/(\\d+)", [this](const httplib::Request& req, httplib::Response& res) {
      hang(std::chrono::milliseconds(std::stoi(req.matches[1])));
      res.set_content("late", "text/plain");
    });
    http.Get("/slow/(\\d+)/(\\d+)", [](const httplib::Request& req, httplib::Response& res) {
      const auto pause = std::chrono::milliseconds(std::stoi(req.matches[2]));
      res.set_content_provider(std::stoul(req.matches[1]), "application/octet-stream",
                               [pause](std::size_t, std::size_t, httplib::DataSink& sink) {
                                 std::this_thread::sleep_for(pause);
                                 return sink.write("s", 1);
                               });
    });
    http.Get("/big", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content_provider(
          kBigSize, "application/octet-stream",
          [this](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            const std::size_t start = offset % kBigPattern;
            return sink.write(pattern_.data() + start, std::min(length, kBigPattern - start));
          });
    });
    server_.start();
  }

  std::string url(const std::string& path) const { return server_.url(path); }
  LoopbackHttpServer& server() { return server_; }
  // Seconds since the last silence began.
  double silentFor() const {
    return std::chrono::duration<double>(Clock::now() - silentSince_.load()).count();
  }

  // What the completion of a download of `path` into `to` got ("not called" when it was not).
  std::optional<Error> download(const std::string& path, const std::filesystem::path& to,
                                std::optional<std::string_view> md5 = std::nullopt) const {
    std::optional<Error> got = Error("not called", 0);
    FileUrlDownloader::downloadFileFromUrl(
        url(path), to, md5, [&got](const std::optional<Error>& error) { got = error; });
    return got;
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t kBigPattern = 1u << 20;

  void hang(std::chrono::milliseconds duration) {
    silentSince_ = Clock::now();
    server_.hang(duration);
  }

  const std::string pattern_ = [] {
    std::string pattern(kBigPattern, '\0');
    for (std::size_t i = 0; i < pattern.size(); ++i) pattern[i] = static_cast<char>((i * 7) % 251);
    return pattern;
  }();
  std::atomic<Clock::time_point> silentSince_{};
  LoopbackHttpServer server_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_DOWNLOADTESTSERVER_HPP_
