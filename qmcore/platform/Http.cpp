#include "qmcore/platform/Http.hpp"

#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <new>
#include <stdexcept>

#include "qmcore/platform/internal/CurlShare.hpp"

namespace qm {
namespace {

struct EasyDeleter {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct MultiDeleter {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
struct ListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

struct Transfer {
  std::string body;
  bool outOfMemory = false;
  // Bytes received so far, header lines included: what the idle timer watches.
  curl_off_t received = 0;
};

std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* user) {
  auto* const transfer = static_cast<Transfer*>(user);
  transfer->received += static_cast<curl_off_t>(size * count);
  try {
    transfer->body.append(bytes, size * count);
  } catch (const std::bad_alloc&) {
    transfer->outOfMemory = true;
    return 0;  // makes libcurl stop the transfer with an error
  }
  return size * count;
}

struct HeaderContext {
  CURL* easy;
  Transfer* transfer;
};

// Grows the body once to the announced size rather than by doubling through a large body.
std::size_t header(char*, std::size_t size, std::size_t count, void* user) {
  auto* const context = static_cast<HeaderContext*>(user);
  context->transfer->received += static_cast<curl_off_t>(size * count);
  curl_off_t length = -1;
  if (curl_easy_getinfo(context->easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length) == CURLE_OK &&
      length > 0 && static_cast<std::size_t>(length) > context->transfer->body.capacity()) {
    try {
      context->transfer->body.reserve(static_cast<std::size_t>(length));
    } catch (const std::bad_alloc&) {
      // Not fatal: the body then grows as it arrives.
    }
  }
  return size * count;
}

// The one place a libcurl result becomes an Error.
Error transportError(CURLcode code, const char* detail) {
  std::string description =
      detail != nullptr && detail[0] != '\0' ? detail : curl_easy_strerror(code);
  return Error(std::string(kHttpTransportErrorDomain), static_cast<std::int64_t>(code),
               std::move(description));
}

// Runs the transfer until it ends, or fails it with CURLE_OPERATION_TIMEDOUT once no byte has
// moved either way for `idle`. libcurl's own low-speed check would not do: it averages the
// speed over several seconds, so a body that stops after a burst of bytes failed seconds late.
CURLcode perform(CURL* easy, const Transfer& transfer, std::chrono::milliseconds idle,
                 char* errorText) {
  using Clock = std::chrono::steady_clock;
  const std::unique_ptr<CURLM, MultiDeleter> multi(curl_multi_init());
  if (multi == nullptr) throw std::bad_alloc();
  // The shared connection cache keeps as many idle connections as the multi handle allows:
  // enough for many threads to find one each.
  curl_multi_setopt(multi.get(), CURLMOPT_MAXCONNECTS, 64L);
  if (curl_multi_add_handle(multi.get(), easy) != CURLM_OK) throw std::bad_alloc();
  CURLcode code = CURLE_OPERATION_TIMEDOUT;
  curl_off_t moved = 0;
  Clock::time_point lastMove = Clock::now();
  for (int running = 1;;) {
    if (curl_multi_perform(multi.get(), &running) != CURLM_OK) {
      code = CURLE_OUT_OF_MEMORY;  // its only failure, short of a bug in libcurl
      break;
    }
    if (running == 0) {
      int queued = 0;
      while (const CURLMsg* message = curl_multi_info_read(multi.get(), &queued)) {
        if (message->msg == CURLMSG_DONE) code = message->data.result;
      }
      break;
    }
    curl_off_t sent = 0;
    curl_easy_getinfo(easy, CURLINFO_SIZE_UPLOAD_T, &sent);
    const Clock::time_point now = Clock::now();
    if (transfer.received + sent != moved) {
      moved = transfer.received + sent;
      lastMove = now;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(lastMove + idle - now);
    if (left.count() <= 0) {
      std::snprintf(errorText, CURL_ERROR_SIZE,
                    "Operation timed out: no data moved for %lld milliseconds",
                    static_cast<long long>(idle.count()));
      break;
    }
    curl_multi_poll(multi.get(), nullptr, 0, static_cast<int>(left.count()), nullptr);
  }
  curl_multi_remove_handle(multi.get(), easy);
  return code;
}

}  // namespace

HttpResult sendHttpRequest(const HttpRequest& request) {
  CURLSH* const share = internal::sharedCurlState();
  const std::unique_ptr<CURL, EasyDeleter> easy(curl_easy_init());
  if (easy == nullptr) throw std::bad_alloc();
  CURL* const handle = easy.get();

  if (request.url.find('\0') != std::string::npos ||
      curl_easy_setopt(handle, CURLOPT_URL, request.url.c_str()) != CURLE_OK) {
    throw std::invalid_argument("bad URL: " + request.url);
  }
  {
    // Reject what libcurl's parser rejects now, while the request is being built.
    CURLU* const parsed = curl_url();
    const CURLUcode parsedResult = curl_url_set(parsed, CURLUPART_URL, request.url.c_str(), 0);
    curl_url_cleanup(parsed);
    if (parsedResult != CURLUE_OK) throw std::invalid_argument("bad URL: " + request.url);
  }

  Transfer transfer;
  HeaderContext headerContext{handle, &transfer};
  char errorText[CURL_ERROR_SIZE] = {};
  // At least a millisecond (also for NaN) and at most a day, well within a poll's time-out.
  const std::chrono::milliseconds idle(static_cast<long long>(
      std::ceil(std::min(86'400'000.0, std::max(1.0, request.timeoutInterval * 1000.0)))));

  curl_easy_setopt(handle, CURLOPT_SHARE, share);
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, errorText);
  curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, receive);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &transfer);
  curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, header);
  curl_easy_setopt(handle, CURLOPT_HEADERDATA, &headerContext);

  if (request.method == "GET" && !request.body.has_value()) {
    curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
  } else {
    if (request.body.has_value()) {
      curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE,
                       static_cast<curl_off_t>(request.body->size()));
      curl_easy_setopt(handle, CURLOPT_POSTFIELDS, request.body->data());
    }
    if (request.method != "POST") {
      curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, request.method.c_str());
    }
  }

  std::unique_ptr<curl_slist, ListDeleter> fields;
  const auto appendField = [&fields](const std::string& line) {
    curl_slist* const grown = curl_slist_append(fields.get(), line.c_str());
    if (grown == nullptr) throw std::bad_alloc();
    fields.release();  // now owned through `grown`
    fields.reset(grown);
  };
  for (const auto& [name, value] : request.headerFields) appendField(name + ": " + value);
  // The platform sends a body at once, without waiting for "100 Continue".
  if (request.body.has_value()) appendField("Expect:");
  if (fields != nullptr) curl_easy_setopt(handle, CURLOPT_HTTPHEADER, fields.get());

  const CURLcode code = perform(handle, transfer, idle, errorText);
  HttpResult result;
  if (transfer.outOfMemory) throw std::bad_alloc();
  if (code != CURLE_OK) {
    result.error = transportError(code, errorText);
    return result;
  }
  HttpResponse response;
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &response.statusCode);
  const char* effective = nullptr;
  if (curl_easy_getinfo(handle, CURLINFO_EFFECTIVE_URL, &effective) == CURLE_OK &&
      effective != nullptr) {
    response.url = effective;
  }
  result.response = std::move(response);
  result.data = std::move(transfer.body);
  return result;
}

}  // namespace qm
