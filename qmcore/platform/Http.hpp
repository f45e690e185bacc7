// Blocking HTTP requests over libcurl, the stand-in for the platform's shared URL session.
//
//   qm::HttpRequest request{.url = "http://127.0.0.1:8080/a.txt", .timeoutInterval = 5};
//   const qm::HttpResult result = qm::sendHttpRequest(request);
//   if (result.error) ...                     // the transport failed: no data, no response
//   else if (result.response->statusCode == 200) use(*result.data);
//
// All requests of the process share one connection cache, so a second request to the same
// host reuses an idle connection. The time-out is an idle time-out: a request fails when no
// byte moves for that long (while connecting, waiting for the answer or receiving it); a slow
// but steady transfer is never cut off. There is no local HTTP cache. Redirects are followed.
//
// Thread-safety: `sendHttpRequest` may be called from many threads at once; each call blocks
// its own thread until the request completes.

#ifndef QMCORE_PLATFORM_HTTP_HPP_
#define QMCORE_PLATFORM_HTTP_HPP_

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qmcore/platform/Error.hpp"

namespace qm {

// The domain of transport errors; their code is libcurl's result code.
inline constexpr std::string_view kHttpTransportErrorDomain = "curl";

enum class HttpCachePolicy {
  kUseProtocolCachePolicy,
  // There is no local cache here, so this asks for nothing more than the default does.
  kReloadIgnoringLocalCacheData,
};

struct HttpRequest {
  // An absolute http or https URL.
  std::string url;
  // "GET", "POST", or another method sent as it is.
  std::string method = "GET";
  // Seconds without any byte moving after which the request fails, measured to the
  // millisecond from the last byte sent or received (at least 1 ms, at most a day).
  double timeoutInterval = 60.0;
  HttpCachePolicy cachePolicy = HttpCachePolicy::kUseProtocolCachePolicy;
  // Header fields sent as given, replacing libcurl's own of the same name.
  std::vector<std::pair<std::string, std::string>> headerFields = {};
  // The body, sent when present.
  std::optional<std::string> body = std::nullopt;
};

struct HttpResponse {
  // The last response's status after any redirects.
  long statusCode = 0;
  // The URL that answered.
  std::string url;
};

// What came back: on success the body (possibly empty) and the response; on a transport
// failure (no connection, time-out, a body cut short) only the error.
struct HttpResult {
  std::optional<std::string> data;
  std::optional<HttpResponse> response;
  std::optional<Error> error;
};

// Sends `request` and waits for it to complete. Throws std::invalid_argument when the URL
// cannot be parsed (the request cannot even be built); transport failures come back in the
// result instead.
HttpResult sendHttpRequest(const HttpRequest& request);

}  // namespace qm

#endif  // QMCORE_PLATFORM_HTTP_HPP_
