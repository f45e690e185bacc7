#include "qmcore/files/FileUrlDownloader.hpp"

#include <atomic>
#include <cstdio>
#include <exception>
#include <utility>

#include "qmcore/files/AtomicWrite.hpp"
#include "qmcore/files/LogDescription.hpp"
#include "qmcore/files/MD5.hpp"
#include "qmcore/files/QMLog.hpp"
#include "qmcore/platform/ConsoleLog.hpp"

namespace qm {
namespace {

std::atomic<double> textTimeout = FileUrlDownloaderTimeouts{}.text;
std::atomic<double> dataTimeout = FileUrlDownloaderTimeouts{}.data;

Error downloadError(std::int64_t code, std::string description = {},
                    std::shared_ptr<const Error> underlying = nullptr) {
  return Error(std::string(kDownloadErrorDomain), code, std::move(description), {},
               std::move(underlying));
}

// Error 200: the failure's description takes the place of the domain.
Error exceptionError(const std::exception& failure) {
  return Error(failure.what(), kDownloadErrorException);
}

bool isUtf8(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    std::size_t length = 0;
    char32_t point = 0;
    if (lead < 0x80) {
      ++i;
      continue;
    } else if ((lead & 0xe0) == 0xc0) {
      length = 2;
      point = lead & 0x1f;
    } else if ((lead & 0xf0) == 0xe0) {
      length = 3;
      point = lead & 0x0f;
    } else if ((lead & 0xf8) == 0xf0) {
      length = 4;
      point = lead & 0x07;
    } else {
      return false;
    }
    if (i + length > bytes.size()) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(bytes[i + k]);
      if ((next & 0xc0) != 0x80) return false;
      point = (point << 6) | (next & 0x3f);
    }
    // No overlong forms, no surrogates, nothing beyond U+10FFFF.
    static constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (point < kSmallest[length] || point > 0x10ffff || (point >= 0xd800 && point <= 0xdfff)) {
      return false;
    }
    i += length;
  }
  return true;
}

std::optional<std::string> utf8Text(std::string data) {
  if (!isUtf8(data)) return std::nullopt;
  return data;
}

// The form body as ASCII: each character outside it becomes one "?".
std::string asciiLossy(std::string_view text) {
  std::string ascii;
  ascii.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      ascii.push_back(c);
    } else if ((byte & 0xc0) != 0x80) {
      ascii.push_back('?');  // the lead byte of a multi-byte character
    }
  }
  return ascii;
}

// printf's "%.0f": the expiry rounded to whole seconds as the server expects it.
std::string wholeSeconds(double seconds) {
  char text[64];
  std::snprintf(text, sizeof text, "%.0f", seconds);
  return text;
}

// The request operations' own send: a request that cannot be built throws, so that each
// operation answers that failure in its own way.
std::optional<std::string> send(const HttpRequest& request, std::optional<HttpResponse>* response,
                                std::optional<Error>* error) {
  HttpResult result = sendHttpRequest(request);
  if (response != nullptr) *response = std::move(result.response);
  if (error != nullptr) *error = std::move(result.error);
  return std::move(result.data);
}

std::string callFailureMessage(std::string_view url, const std::string& error) {
  return "Error while calling url: " + std::string(url) + ", error: " + error;
}

}  // namespace

FileUrlDownloaderTimeouts FileUrlDownloader::timeouts() {
  return {.text = textTimeout.load(), .data = dataTimeout.load()};
}

void FileUrlDownloader::setTimeouts(FileUrlDownloaderTimeouts timeouts) {
  textTimeout = timeouts.text;
  dataTimeout = timeouts.data;
}

std::optional<std::string> FileUrlDownloader::sendSynchronousRequest(
    const HttpRequest& request, std::optional<HttpResponse>* response,
    std::optional<Error>* error) {
  try {
    return send(request, response, error);
  } catch (const std::exception& failure) {
    if (response != nullptr) response->reset();
    if (error != nullptr) *error = exceptionError(failure);
    return std::nullopt;
  }
}

std::optional<std::string> FileUrlDownloader::stringWithGetFromUrlString(
    std::string_view url, std::optional<Error>* error) {
  try {
    const HttpRequest request{.url = std::string(url), .timeoutInterval = textTimeout.load()};
    std::optional<Error> transportError;
    std::optional<std::string> data = send(request, nullptr, &transportError);
    if (transportError.has_value()) {
      const Error made = downloadError(kDownloadErrorTransport, {},
                                       std::make_shared<const Error>(std::move(*transportError)));
      consoleLog(callFailureMessage(url, logDescription(made)));
      if (error != nullptr) *error = made;
      return std::nullopt;
    }
    if (!data.has_value()) return std::string();
    std::optional<std::string> text = utf8Text(std::move(*data));
    consoleLog("Got a string from '" + std::string(url) + "', content:\n" + logDescription(text));
    return text;
  } catch (const std::exception& failure) {
    consoleLog("Exception while calling url: " + std::string(url) + ", error: " + failure.what());
    return std::string();
  }
}

std::optional<std::string> FileUrlDownloader::dataWithGetFromUrlString(
    std::string_view url, std::optional<Error>* error) {
  // Errors are made and logged only for a caller that asked for them.
  const auto fail = [&](Error made) -> std::optional<std::string> {
    if (error != nullptr) {
      QMLog::log(callFailureMessage(url, logDescription(made)));
      *error = std::move(made);
    }
    return std::nullopt;
  };
  try {
    const HttpRequest request{.url = std::string(url),
                              .timeoutInterval = dataTimeout.load(),
                              .cachePolicy = HttpCachePolicy::kReloadIgnoringLocalCacheData};
    std::optional<HttpResponse> response;
    std::optional<Error> transportError;
    std::optional<std::string> data = send(request, &response, &transportError);
    if (transportError.has_value()) {
      std::string description = transportError->localizedDescription();
      return fail(downloadError(kDownloadErrorTransport, std::move(description),
                                std::make_shared<const Error>(std::move(*transportError))));
    }
    if (response.has_value()) {
      if (response->statusCode != 200) {
        return fail(
            downloadError(kDownloadErrorStatus,
                          "Server at the provided url ('" + std::string(url) +
                              "') returned error code: " + std::to_string(response->statusCode)));
      }
      return data;
    }
    return fail(downloadError(kDownloadErrorNoResponse,
                              "No response from server at url: " + std::string(url)));
  } catch (const std::exception& failure) {
    return fail(exceptionError(failure));
  }
}

std::optional<FileUrlDownloader::Dictionary> FileUrlDownloader::jsonDictionaryWithGetFromUrlString(
    std::string_view url, std::optional<Error>* error) {
  std::optional<Error> textError;
  const std::optional<std::string> text = stringWithGetFromUrlString(url, &textError);
  if (textError.has_value()) {
    const Error made = downloadError(kDownloadErrorTransport, {},
                                     std::make_shared<const Error>(std::move(*textError)));
    consoleLog(callFailureMessage(url, logDescription(made)));
    if (error != nullptr) *error = made;
    return std::nullopt;
  }
  return dictionaryFromJsonString(text.value_or(""));
}

std::string FileUrlDownloader::getStringWithPostFromUrlString(std::string_view url,
                                                              std::string_view dataString) {
  try {
    std::string body = asciiLossy(dataString);
    const std::string length = std::to_string(static_cast<unsigned long>(body.size()));
    const HttpRequest request{
        .url = std::string(url),
        .method = "POST",
        .timeoutInterval = dataTimeout.load(),
        .headerFields = {{"Content-Length", length},
                         {"Content-Type", "application/x-www-form-urlencoded"}},
        .body = std::move(body)};
    std::optional<Error> transportError;
    std::optional<std::string> data = send(request, nullptr, &transportError);
    if (transportError.has_value()) {
      consoleLog(callFailureMessage(url, logDescription(*transportError)));
    }
    if (!data.has_value()) return std::string();
    return utf8Text(std::move(*data)).value_or("");
  } catch (const std::exception& failure) {
    consoleLog("Exception while calling url: " + std::string(url) + ", error: " + failure.what());
    return std::string();
  }
}

FileUrlDownloader::Dictionary FileUrlDownloader::jsonDictionaryWithPostFromUrlString(
    std::string_view url, std::string_view dataString) {
  return dictionaryFromJsonString(getStringWithPostFromUrlString(url, dataString));
}

FileUrlDownloader::Dictionary FileUrlDownloader::dictionaryFromJsonString(std::string_view text) {
  std::string reason;
  try {
    Dictionary parsed = Dictionary::parse(text);
    // Only an object or an array may stand at the top, as with the platform's reader.
    if (parsed.is_object() || parsed.is_array()) return parsed;
    reason = "JSON text did not start with array or object";
  } catch (const Dictionary::exception& failure) {
    reason = failure.what();
  }
  consoleLog("Error while converting the string:\n" + std::string(text) + " to json! Error:\n" +
             reason);
  return Dictionary::object();
}

void FileUrlDownloader::downloadFileFromUrl(std::string_view url, const std::filesystem::path& path,
                                            std::optional<std::string_view> md5,
                                            const Completion& callback) {
  std::optional<Error> error;
  const std::optional<std::string> data = dataWithGetFromUrlString(url, &error);
  if (error.has_value()) {
    if (callback) callback(error);
    return;
  }
  if (!data.has_value()) {
    if (callback) {
      callback(downloadError(kDownloadErrorEmptyData, "Empty data downloaded from requested url"));
    }
    return;
  }
  if (md5.has_value()) {
    const std::string computed = MD5::hexStringDigestForData(*data);
    if (computed != *md5) {
      consoleLog(
          "data from post for invalid md5: " +
          logDescription(isUtf8(*data) ? std::optional<std::string_view>(*data) : std::nullopt));
      if (callback) {
        callback(downloadError(kDownloadErrorChecksum,
                               "md5 checksum for downloaded data '" + computed +
                                   "' is different from expected checksum of '" +
                                   std::string(*md5) + "' (url: " + std::string(url) + ")"));
      }
      return;
    }
  }
  std::optional<Error> writeError = writeDataAtomically(path, *data);
  if (writeError.has_value()) {
    consoleLog("Downloaded file is not saved, error: " + logDescription(*writeError));
  }
  if (callback) callback(writeError);
}

std::string FileUrlDownloader::urlForProtectedFileName(std::string_view fileName,
                                                       std::string_view urlBase,
                                                       double epochExpirationSeconds,
                                                       std::string_view secret) {
  const std::string expires = wholeSeconds(epochExpirationSeconds);
  const std::string signature =
      expires + "/zip/" + std::string(fileName) + " " + std::string(secret);
  const std::string digest = MD5::urlFriendlyMD5StringForString(signature);
  // This puts the secret on the console; the server's tooling relies on the line.
  consoleLog("md5 string for url: '" + signature + "' is = " + digest);
  return std::string(urlBase) + "/" + std::string(fileName) + "?md5=" + digest +
         "&expires=" + expires;
}

std::string FileUrlDownloader::urlForProtectedFileName(std::string_view fileName,
                                                       std::string_view urlBase,
                                                       std::string_view secret, const Env& env) {
  constexpr double kValidSeconds = 300.0;
  return urlForProtectedFileName(fileName, urlBase,
                                 env.now().timeIntervalSince1970() + kValidSeconds, secret);
}

}  // namespace qm
