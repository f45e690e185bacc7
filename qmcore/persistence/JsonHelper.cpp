#include "qmcore/persistence/JsonHelper.hpp"

#include <cstdio>

namespace qm {
namespace {

std::string escapeSlashes(const std::string& text) {
  // Outside strings JSON has no "/", so every one in the text is inside a string.
  std::string out;
  out.reserve(text.size() + 8);
  for (const char c : text) {
    if (c == '/') out += '\\';
    out += c;
  }
  return out;
}

}  // namespace

std::string JsonEncoder::write(const nlohmann::json& value) const {
  std::string text =
      value.dump(options_.indent, ' ', false, nlohmann::json::error_handler_t::strict);
  return options_.escapesSlashes ? escapeSlashes(text) : text;
}

nlohmann::json JsonDecoder::parse(std::string_view text) {
  try {
    return nlohmann::json::parse(text);
  } catch (const nlohmann::json::exception& error) {  // bad syntax, or a number beyond a double
    throw JsonDecodingError(JsonDecodingError::Kind::kDataCorrupted, "JSON", {},
                            std::string("The given data was not valid JSON. ") + error.what());
  }
}

std::optional<nlohmann::json> JsonHelper::convertToDictionary(std::string_view text) {
  try {
    nlohmann::json value = nlohmann::json::parse(text);
    if (!value.is_object()) return std::nullopt;
    return value;
  } catch (const nlohmann::json::exception& error) {
    std::printf("The data couldn't be read because it isn't in the correct format. (%s)\n",
                error.what());
    return std::nullopt;
  }
}

Error JsonHelper::decodingErrorFor(const JsonDecodingError& error, std::string_view typeName) {
  const std::string type(typeName);
  const std::string tail =
      ": " + error.debugDescription() + ", codingPath: " + error.codingPathDescription();
  switch (error.kind()) {
    case JsonDecodingError::Kind::kKeyNotFound:
      return Error(std::string(kJsonDecodingErrorDomain), kJsonDecodingErrorCode,
                   "Type: " + type + ", Key '" + error.subject() + "' not found" + tail);
    case JsonDecodingError::Kind::kValueNotFound:
      return Error(std::string(kJsonDecodingErrorDomain), kJsonDecodingErrorCode,
                   "Type: " + type + ", Value '" + error.subject() + "' not found" + tail);
    case JsonDecodingError::Kind::kTypeMismatch:
      return Error(std::string(kJsonDecodingErrorDomain), kJsonDecodingErrorCode,
                   "Type: " + type + ", Type '" + error.subject() + "' mismatch" + tail);
    case JsonDecodingError::Kind::kDataCorrupted:
      break;
  }
  return Error("NSCocoaErrorDomain", 4864,
               "The data couldn't be read because it isn't in the correct format.",
               error.debugDescription());
}

void JsonHelper::logEncodingError(const char* configuration, const std::exception& error) {
  debuglog([&] {
    return std::string("[JSON] Error while ") + configuration +
           " encoding object, error: " + error.what();
  });
}

void JsonHelper::logDecodingError(const std::exception& error, std::string_view text,
                                  std::string_view typeName) {
  debuglog([&] {
    return "Error on decoding from json " + std::string(error.what()) +
           ", json: " + std::string(text) + ", target type: " + std::string(typeName);
  });
}

}  // namespace qm
