// The process-wide libcurl state behind Http.hpp: global initialisation and the one
// connection cache that every request shares.

#ifndef QMCORE_PLATFORM_INTERNAL_CURLSHARE_HPP_
#define QMCORE_PLATFORM_INTERNAL_CURLSHARE_HPP_

#include <curl/curl.h>

namespace qm::internal {

// The share handle holding the connection cache and DNS cache, made on first use (after
// curl_global_init) and kept for the process lifetime. Its locks make it safe to use from
// several threads at once.
CURLSH* sharedCurlState();

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_CURLSHARE_HPP_
