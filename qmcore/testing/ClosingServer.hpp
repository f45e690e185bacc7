// A TCP server on 127.0.0.1 that accepts connections and closes each one at once, before
// sending a byte: the server that hangs up on every request, for tests of request failures.

#ifndef QMCORE_TESTING_CLOSINGSERVER_HPP_
#define QMCORE_TESTING_CLOSINGSERVER_HPP_

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <string>
#include <thread>

namespace qm::testing {

class ClosingServer {
 public:
  ClosingServer() {
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::listen(listener_, 16);
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] {
      while (!stopping_) {
        const int client = ::accept(listener_, nullptr, nullptr);
        if (client >= 0) ::close(client);
      }
    });
  }
  ~ClosingServer() {
    stopping_ = true;
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }
  ClosingServer(const ClosingServer&) = delete;
  ClosingServer& operator=(const ClosingServer&) = delete;

  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }

 private:
  int listener_ = -1;
  int port_ = 0;
  std::atomic<bool> stopping_ = false;
  std::thread thread_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_CLOSINGSERVER_HPP_
