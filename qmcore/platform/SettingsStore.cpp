#include "qmcore/platform/SettingsStore.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <mutex>
#include <system_error>
#include <utility>

#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/SqliteSettingsStore.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSettingsFileName = "settings.sqlite";
constexpr std::string_view kStoreFileExtension = ".sqlite";

// A string read as a number: its value, and the exact integer when it is an integer text.
struct NumberText {
  double value;
  std::optional<std::int64_t> integer;
};

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool equalsIgnoringCase(std::string_view text, std::string_view lowercase) {
  if (text.size() != lowercase.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != lowercase[i]) return false;
  }
  return true;
}

std::optional<NumberText> parseNumberText(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  if (equalsIgnoringCase(text, "yes") || equalsIgnoringCase(text, "true")) return NumberText{1, 1};
  if (equalsIgnoringCase(text, "no") || equalsIgnoringCase(text, "false")) return NumberText{0, 0};

  // from_chars takes a '-' but no '+', and also "inf" and "nan", which are not number texts.
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const std::size_t first = !text.empty() && text.front() == '-' ? 1 : 0;
  if (text.size() <= first || !(isDigit(text[first]) || text[first] == '.')) return std::nullopt;

  const char* const end = text.data() + text.size();
  std::int64_t integer = 0;
  if (const auto [ptr, ec] = std::from_chars(text.data(), end, integer);
      ec == std::errc() && ptr == end) {
    return NumberText{static_cast<double>(integer), integer};
  }
  double value = 0;
  if (const auto [ptr, ec] = std::from_chars(text.data(), end, value);
      ec == std::errc() && ptr == end) {
    return NumberText{value, std::nullopt};
  }
  return std::nullopt;
}

std::int64_t truncatedToInteger(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  if (std::isnan(value)) return 0;
  if (value >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (value < -kLimit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

std::string doubleText(double value) {
  if (std::isnan(value)) return "nan";
  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return std::string(buffer.data(), result.ptr);
}

bool isPlainFileNameByte(unsigned char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(static_cast<char>(c)) ||
         c == '-' || c == '_' || c == '.' || c >= 0x80;
}

std::string fileNameForSuite(std::string_view suiteName) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string name;
  for (std::size_t i = 0; i < suiteName.size(); ++i) {
    const auto c = static_cast<unsigned char>(suiteName[i]);
    if (isPlainFileNameByte(c) && !(i == 0 && c == '.')) {
      name += static_cast<char>(c);
    } else {
      name += '%';
      name += kHex[c >> 4];
      name += kHex[c & 0xf];
    }
  }
  return name;
}

// The same file reached through different spellings must give the same store.
std::string registryKey(const std::string& path) {
  std::error_code error;
  fs::path absolute = fs::absolute(path, error);
  if (error) return path;
  fs::path canonical = fs::weakly_canonical(absolute, error);
  return error ? absolute.lexically_normal().string() : canonical.string();
}

}  // namespace

bool SettingsStore::hasKey(std::string_view key) const {
  bool found = false;
  readValue(key, [&](const SettingsValue* value) { found = value != nullptr; });
  return found;
}

void SettingsStore::readValue(std::string_view key,
                              const std::function<void(const SettingsValue*)>& reader) const {
  const std::optional<SettingsValue> value = objectForKey(key);
  reader(value ? &*value : nullptr);
}

bool SettingsStore::boolForKey(std::string_view key) const {
  bool result = false;
  readValue(key, [&](const SettingsValue* value) {
    if (value == nullptr) return;
    if (const auto* v = value->get<bool>()) {
      result = *v;
    } else if (const auto* v = value->get<std::int64_t>()) {
      result = *v != 0;
    } else if (const auto* v = value->get<double>()) {
      result = *v != 0 && !std::isnan(*v);
    } else if (const auto* v = value->get<std::string>()) {
      const auto number = parseNumberText(*v);
      result = number && number->value != 0 && !std::isnan(number->value);
    }
  });
  return result;
}

std::int64_t SettingsStore::integerForKey(std::string_view key) const {
  std::int64_t result = 0;
  readValue(key, [&](const SettingsValue* value) {
    if (value == nullptr) return;
    if (const auto* v = value->get<std::int64_t>()) {
      result = *v;
    } else if (const auto* v = value->get<bool>()) {
      result = *v ? 1 : 0;
    } else if (const auto* v = value->get<double>()) {
      result = truncatedToInteger(*v);
    } else if (const auto* v = value->get<std::string>()) {
      if (const auto number = parseNumberText(*v)) {
        result = number->integer ? *number->integer : truncatedToInteger(number->value);
      }
    }
  });
  return result;
}

double SettingsStore::doubleForKey(std::string_view key) const {
  double result = 0;
  readValue(key, [&](const SettingsValue* value) {
    if (value == nullptr) return;
    if (const auto* v = value->get<double>()) {
      result = *v;
    } else if (const auto* v = value->get<std::int64_t>()) {
      result = static_cast<double>(*v);
    } else if (const auto* v = value->get<bool>()) {
      result = *v ? 1.0 : 0.0;
    } else if (const auto* v = value->get<std::string>()) {
      if (const auto number = parseNumberText(*v)) result = number->value;
    }
  });
  return result;
}

std::optional<std::string> SettingsStore::stringForKey(std::string_view key) const {
  std::optional<std::string> result;
  readValue(key, [&](const SettingsValue* value) {
    if (value == nullptr) return;
    if (const auto* v = value->get<std::string>()) {
      result = *v;
    } else if (const auto* v = value->get<std::int64_t>()) {
      result = std::to_string(*v);
    } else if (const auto* v = value->get<double>()) {
      result = doubleText(*v);
    } else if (const auto* v = value->get<bool>()) {
      result = std::string(1, *v ? '1' : '0');
    }
  });
  return result;
}

std::string SettingsStore::standardFilePath() {
  if (const char* path = std::getenv("QM_SETTINGS_PATH"); path != nullptr && *path != '\0') {
    return path;
  }
  // The XDG rules ignore a relative XDG_CONFIG_HOME.
  if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config == '/') {
    return (fs::path(config) / "qmcore" / kSettingsFileName).string();
  }
  return (Env::Default().homeDirectory() / ".config" / "qmcore" / kSettingsFileName).string();
}

std::string SettingsStore::namedFilePath(std::string_view suiteName) {
  const std::string standardPath = standardFilePath();
  if (suiteName.empty()) return standardPath;
  std::string fileName = fileNameForSuite(suiteName);
  fileName += kStoreFileExtension;
  return (fs::path(standardPath).parent_path() / fileName).string();
}

std::shared_ptr<SettingsStore> SettingsStore::openFile(const std::string& path) {
  if (path.empty()) return inMemory();
  static std::mutex mutex;
  static std::map<std::string, std::weak_ptr<SettingsStore>> stores;

  const std::string key = registryKey(path);
  const std::lock_guard lock(mutex);
  if (const auto it = stores.find(key); it != stores.end()) {
    if (auto existing = it->second.lock()) return existing;
  }
  std::erase_if(stores, [](const auto& entry) { return entry.second.expired(); });
  auto store = std::make_shared<SqliteSettingsStore>(path);
  stores[key] = store;
  return store;
}

std::shared_ptr<SettingsStore> SettingsStore::standard() {
  static const std::shared_ptr<SettingsStore> store = openFile(standardFilePath());
  return store;
}

std::shared_ptr<SettingsStore> SettingsStore::named(std::string_view suiteName) {
  if (suiteName.empty()) return standard();
  return openFile(namedFilePath(suiteName));
}

std::shared_ptr<SettingsStore> SettingsStore::inMemory() {
  return std::make_shared<SqliteSettingsStore>();
}

}  // namespace qm
