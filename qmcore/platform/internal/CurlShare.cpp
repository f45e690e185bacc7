#include "qmcore/platform/internal/CurlShare.hpp"

#include <array>
#include <mutex>

#include "qmcore/platform/Error.hpp"

namespace qm::internal {
namespace {

// One lock per kind of shared data, as libcurl asks.
std::array<std::mutex, CURL_LOCK_DATA_LAST> locks;

void lock(CURL*, curl_lock_data data, curl_lock_access, void*) {
  locks[static_cast<std::size_t>(data)].lock();
}

void unlock(CURL*, curl_lock_data data, void*) { locks[static_cast<std::size_t>(data)].unlock(); }

}  // namespace

CURLSH* sharedCurlState() {
  // Never cleaned up: requests may still run on other threads while the process exits.
  static CURLSH* const share = [] {
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) fatalError("libcurl failed to start");
    CURLSH* made = curl_share_init();
    if (made == nullptr) fatalError("libcurl could not make a share handle");
    curl_share_setopt(made, CURLSHOPT_LOCKFUNC, lock);
    curl_share_setopt(made, CURLSHOPT_UNLOCKFUNC, unlock);
    curl_share_setopt(made, CURLSHOPT_SHARE, CURL_LOCK_DATA_CONNECT);
    curl_share_setopt(made, CURLSHOPT_SHARE, CURL_LOCK_DATA_DNS);
    return made;
  }();
  return share;
}

}  // namespace qm::internal
