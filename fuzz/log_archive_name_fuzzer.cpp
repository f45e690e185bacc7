// Nicknames and client identifiers come from the app's users: any bytes must give an archive
// name without crashing, whose client part is at most the identifier twice over (an undecodable
// byte reads as one three-byte replacement character), and which keeps the fixed parts in their
// order.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "qmcore/files/QMFileLoggerRules.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  const std::string nick = input.ConsumeRandomLengthString(64);
  const std::string client = input.ConsumeRemainingBytesAsString();

  const std::string part = qm::QMFileLoggerRules::clientPart(client);
  if (part.size() > 2 * 3 * client.size()) std::abort();
  // Printable ASCII splits into single bytes, so the rule can be checked on bytes.
  bool plain = true;
  for (const char c : client) plain = plain && c >= 0x20 && c < 0x7F;
  if (plain) {
    const std::size_t n = client.size() < 3 ? client.size() : 3;
    if (part != client.substr(0, n) + client.substr(client.size() - n)) std::abort();
  }

  const std::string name =
      qm::QMFileLoggerRules::archiveName("debuglog.log", std::nullopt, "x", nick, client);
  const std::string prefix = "MD-NIL-CD-x-debuglog.log-NICK-" + nick + "-CLIENT-";
  if (name != prefix + part) std::abort();
  return 0;
}
