#include "qmcore/platform/Url.hpp"

#include <curl/curl.h>

#include <algorithm>
#include <memory>

namespace qm {
namespace {

struct UrlDeleter {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
struct CurlTextDeleter {
  void operator()(char* text) const { curl_free(text); }
};

// One part of a parsed URL; nothing when the URL has no such part.
std::optional<std::string> part(CURLU* url, CURLUPart which) {
  char* raw = nullptr;
  if (curl_url_get(url, which, &raw, 0) != CURLUE_OK || raw == nullptr) return std::nullopt;
  const std::unique_ptr<char, CurlTextDeleter> owned(raw);
  return std::string(raw);
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::optional<URLComponents> URLComponents::fromString(std::string_view text) {
  const std::unique_ptr<CURLU, UrlDeleter> url(curl_url());
  if (url == nullptr) return std::nullopt;
  const std::string terminated(text);
  if (terminated.size() != text.size() || terminated.find('\0') != std::string::npos) {
    return std::nullopt;
  }
  if (curl_url_set(url.get(), CURLUPART_URL, terminated.c_str(), CURLU_NON_SUPPORT_SCHEME) !=
      CURLUE_OK) {
    return std::nullopt;
  }
  URLComponents components;
  components.scheme_ = part(url.get(), CURLUPART_SCHEME).value_or("");
  components.host_ = part(url.get(), CURLUPART_HOST).value_or("");
  components.path_ = part(url.get(), CURLUPART_PATH).value_or("");
  components.query_ = part(url.get(), CURLUPART_QUERY);
  // libcurl drops an empty query; "?" still means a query without items.
  if (!components.query_.has_value()) {
    const std::size_t mark = text.find('?');
    if (mark != std::string_view::npos && text.find('#') > mark) components.query_ = "";
  }
  return components;
}

std::optional<std::vector<URLQueryItem>> URLComponents::queryItems() const {
  if (!query_.has_value()) return std::nullopt;
  return parseQueryItems(*query_);
}

std::vector<URLQueryItem> parseQueryItems(std::string_view query) {
  std::vector<URLQueryItem> items;
  if (query.empty()) return items;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = std::min(query.find('&', start), query.size());
    const std::string_view item = query.substr(start, end - start);
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos) {
      items.push_back({percentDecode(item), std::nullopt});
    } else {
      items.push_back(
          {percentDecode(item.substr(0, equals)), percentDecode(item.substr(equals + 1))});
    }
    if (end == query.size()) break;
    start = end + 1;
  }
  return items;
}

std::string percentDecode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
        hexValue(text[i + 2]) >= 0) {
      decoded.push_back(static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2])));
      i += 2;
    } else {
      decoded.push_back(text[i]);
    }
  }
  return decoded;
}

}  // namespace qm
