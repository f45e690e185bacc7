// A TCP server on 127.0.0.1 that accepts connections and closes each one at once, before
// sending a byte: the server that hangs up on every request, for tests of request failures.

#ifndef QMCORE_TESTING_CLOSINGSERVER_HPP_
#define QMCORE_TESTING_CLOSINGSERVER_HPP_

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <thread>

namespace qm::testing {

class ClosingServer {
 public:
  ClosingServer() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::listen(listener_, 16);
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
    // Accepting fails once the destructor shuts the listener down.
    thread_ = std::thread([this] {
      for (int client; (client = ::accept(listener_, nullptr, nullptr)) >= 0;) ::close(client);
    });
  }
  ~ClosingServer() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }

  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }

 private:
  const int listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  int port_ = 0;
  std::thread thread_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_CLOSINGSERVER_HPP_
