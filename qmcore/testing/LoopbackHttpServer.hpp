// A real HTTP server on 127.0.0.1 for tests of the request code: cpp-httplib on an ephemeral
// port, serving on threads of its own until destroyed. Tests add handlers for the paths they
// need, including ones that misbehave on purpose (wrong statuses, short bodies, silence).
//
//   qm::testing::LoopbackHttpServer server;
//   server.http().Get("/a", [](const httplib::Request&, httplib::Response& res) {
//     res.set_content("hello", "text/plain");
//   });
//   server.start();
//   fetch(server.url("/a"));
//
// `connectionCount()` counts the distinct client connections that carried requests; `hang()`
// lets a handler stay silent until a deadline or until the server stops.

#ifndef QMCORE_TESTING_LOOPBACKHTTPSERVER_HPP_
#define QMCORE_TESTING_LOOPBACKHTTPSERVER_HPP_

#include <httplib.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <string>
#include <thread>

namespace qm::testing {

class LoopbackHttpServer {
 public:
  LoopbackHttpServer() {
    server_.set_keep_alive_max_count(100000);
    // Idle connections close after a second, so that stopping does not wait long for them.
    server_.set_keep_alive_timeout(1);
    // Connections are kept open while idle, one thread each: enough threads for the tests that
    // run many clients at once. The server takes ownership of the queue it is handed.
    server_.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
    server_.set_logger([this](const httplib::Request& request, const httplib::Response&) {
      const std::lock_guard<std::mutex> guard(mutex_);
      clients_.insert(request.remote_port);
    });
  }
  ~LoopbackHttpServer() { stop(); }
  LoopbackHttpServer(const LoopbackHttpServer&) = delete;
  LoopbackHttpServer& operator=(const LoopbackHttpServer&) = delete;

  httplib::Server& http() { return server_; }

  // Binds an ephemeral port and starts serving; returns once the server accepts connections.
  void start() {
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }

  void stop() {
    {
      const std::lock_guard<std::mutex> guard(mutex_);
      stopping_ = true;
    }
    released_.notify_all();
    if (thread_.joinable()) {
      server_.stop();
      thread_.join();
    }
  }

  int port() const { return port_; }
  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }

  // Distinct client connections (by client port) that carried at least one request.
  std::size_t connectionCount() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return clients_.size();
  }

  // Blocks a handler for `duration`, or less when the server stops first.
  void hang(std::chrono::milliseconds duration) {
    std::unique_lock<std::mutex> lock(mutex_);
    released_.wait_for(lock, duration, [this] { return stopping_; });
  }

 private:
  static constexpr std::size_t kThreads = 48;

  httplib::Server server_;
  std::thread thread_;
  int port_ = 0;
  std::mutex mutex_;
  std::condition_variable released_;
  bool stopping_ = false;
  std::set<int> clients_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_LOOPBACKHTTPSERVER_HPP_
