// URL components and their query items, parsed with libcurl's URL API.
//
//   auto components = qm::URLComponents::fromString("https://example.org/d?md5=x%2By&expires=1");
//   components->queryItems();   // {{"md5", "x+y"}, {"expires", "1"}}
//
// The query is split at "&" into items and each item at its first "=" into name and value;
// both are percent-decoded ("+" stays a plus). An item without "=" has no value; an empty
// query ("?") has no items, a URL without "?" has no query at all.
//
// Thread-safety: values; every function may be called from any thread.

#ifndef QMCORE_PLATFORM_URL_HPP_
#define QMCORE_PLATFORM_URL_HPP_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

struct URLQueryItem {
  std::string name;
  // Absent for an item without "=", empty for "name=".
  std::optional<std::string> value;

  bool operator==(const URLQueryItem&) const = default;
};

class URLComponents {
 public:
  // The parts of an absolute URL ("scheme://host/path?query#fragment", any scheme), or
  // nothing when libcurl does not accept the text as a URL.
  static std::optional<URLComponents> fromString(std::string_view url);

  const std::string& scheme() const { return scheme_; }
  const std::string& host() const { return host_; }
  const std::string& path() const { return path_; }
  // The query as written in the URL (still percent-encoded), or nothing without "?".
  const std::optional<std::string>& percentEncodedQuery() const { return query_; }
  // The decoded query items, or nothing when the URL has no query.
  std::optional<std::vector<URLQueryItem>> queryItems() const;

 private:
  std::string scheme_;
  std::string host_;
  std::string path_;
  std::optional<std::string> query_;
};

// The items of a percent-encoded query text (without the "?"); none for an empty text.
std::vector<URLQueryItem> parseQueryItems(std::string_view query);

// `text` with every "%XY" of two hexadecimal digits replaced by that byte; a "%" not followed
// by two hexadecimal digits stays as it is.
std::string percentDecode(std::string_view text);

}  // namespace qm

#endif  // QMCORE_PLATFORM_URL_HPP_
