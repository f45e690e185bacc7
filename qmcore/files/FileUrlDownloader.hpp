// Blocking HTTP requests to an app's download server: texts, data and JSON by GET, form posts,
// file downloads checked against an MD5 digest, and time-limited signed download URLs.
//
//   std::optional<qm::Error> error;
//   auto data = qm::FileUrlDownloader::dataWithGetFromUrlString(url, &error);
//   if (!data) show(error->localizedDescription());   // e.g. download error 205
//
//   qm::FileUrlDownloader::downloadFileFromUrl(url, "/tmp/maps.zip", expectedMd5,
//       [](const std::optional<qm::Error>& error) { ... });
//
// Every request blocks the calling thread until it completes, so call them off the main
// thread; any number of threads may make requests at once (they share one connection cache).
// Nothing throws: failures come back as an absent result, an empty text or an empty
// dictionary, and as an `Error` in the domain "download" (codes below) where the caller passed
// a place for one. Messages go to the console log; the data GET also logs its errors through
// `QMLog` when the debug log is compiled in.
//
// Time-outs are idle time-outs (no byte for that long fails the request): 5 s for text GETs,
// 20 s for data GETs and form posts.

#ifndef QMCORE_FILES_FILEURLDOWNLOADER_HPP_
#define QMCORE_FILES_FILEURLDOWNLOADER_HPP_

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/Http.hpp"

namespace qm {

inline constexpr std::string_view kDownloadErrorDomain = "download";

// The codes of errors in kDownloadErrorDomain.
enum DownloadErrorCode : std::int64_t {
  // Building or sending a request failed in the library itself; the error's domain is then
  // the failure's description instead of "download".
  kDownloadErrorException = 200,
  // A file download got no data at all.
  kDownloadErrorEmptyData = 201,
  // A downloaded file's digest is not the expected one.
  kDownloadErrorChecksum = 202,
  // The transport failed (no connection, time-out, a body cut short); the transport error is
  // the underlying error.
  kDownloadErrorTransport = 204,
  // The server answered with a status other than 200.
  kDownloadErrorStatus = 205,
  // Neither data, nor a response, nor an error came back.
  kDownloadErrorNoResponse = 206,
};

// Idle time-outs of the requests, in seconds.
struct FileUrlDownloaderTimeouts {
  double text = 5.0;   // text GETs (and so JSON GETs)
  double data = 20.0;  // data GETs, file downloads and form posts
};

class FileUrlDownloader {
 public:
  // JSON values come back as nlohmann::json; a "dictionary" is a JSON object.
  using Dictionary = nlohmann::json;
  // Called once when a download ends: with nothing on success, else with the error.
  using Completion = std::function<void(const std::optional<Error>& error)>;

  // Sends `request` and waits for it. Returns the body (possibly empty) or nothing; stores the
  // response and the transport error in the places given (either may be null). A request that
  // cannot be built (a URL that is no URL) gives nothing and error 200.
  static std::optional<std::string> sendSynchronousRequest(const HttpRequest& request,
                                                           std::optional<HttpResponse>* response,
                                                           std::optional<Error>* error);

  // GET of a UTF-8 text: the text, an empty text when no data came back, nothing on a
  // transport error (error 204) or a body that is not UTF-8. The status is not checked.
  static std::optional<std::string> stringWithGetFromUrlString(
      std::string_view url, std::optional<Error>* error = nullptr);
  // GET of data: the body when the status is 200; else nothing and, when `error` is given,
  // error 204, 205, 206 or 200 there.
  static std::optional<std::string> dataWithGetFromUrlString(std::string_view url,
                                                             std::optional<Error>* error = nullptr);
  // Text GET parsed by dictionaryFromJsonString; nothing (error 204 over the text GET's
  // error) when the text GET failed.
  static std::optional<Dictionary> jsonDictionaryWithGetFromUrlString(
      std::string_view url, std::optional<Error>* error = nullptr);
  // POST of a form body (sent as ASCII, other characters as "?"): the answer as text, an
  // empty text on any failure.
  static std::string getStringWithPostFromUrlString(std::string_view url,
                                                    std::string_view dataString);
  // The form POST's answer parsed by dictionaryFromJsonString.
  static Dictionary jsonDictionaryWithPostFromUrlString(std::string_view url,
                                                        std::string_view dataString);
  // The JSON object or array in `text`, or an empty object when it is not JSON of either kind.
  static Dictionary dictionaryFromJsonString(std::string_view text);

  // Downloads `url` (a data GET) and, when `md5` is given, checks the data's digest against
  // it exactly (lower-case hexadecimal). Writes the data to `path` atomically: a download that
  // fails leaves whatever was at `path` untouched. Then calls `callback` on this thread.
  static void downloadFileFromUrl(std::string_view url, const std::filesystem::path& path,
                                  std::optional<std::string_view> md5, const Completion& callback);

  // The signed URL "<base>/<file>?md5=<digest>&expires=<expiry>" that the server accepts until
  // `epochExpirationSeconds` (seconds since 1970, printed rounded to whole seconds), where the
  // digest is the URL-friendly MD5 of "<expiry>/zip/<file> <secret>".
  static std::string urlForProtectedFileName(std::string_view fileName, std::string_view urlBase,
                                             double epochExpirationSeconds,
                                             std::string_view secret);
  // The same, valid for 300 seconds from the clock of `env`.
  static std::string urlForProtectedFileName(std::string_view fileName, std::string_view urlBase,
                                             std::string_view secret,
                                             const Env& env = Env::Default());

  // The time-outs in use (process-wide). Tests shorten them; nothing else should.
  static FileUrlDownloaderTimeouts timeouts();
  static void setTimeouts(FileUrlDownloaderTimeouts timeouts);

  FileUrlDownloader() = delete;
};

}  // namespace qm

#endif  // QMCORE_FILES_FILEURLDOWNLOADER_HPP_
