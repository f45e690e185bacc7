#include "qmcore/strings/LocalizedTextCache.hpp"

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {

LocalizedTextCache::LocalizedTextCache(std::span<const std::string_view> keys)
    : keys_(keys), texts_(keys.size()) {}

std::span<const std::string> LocalizedTextCache::texts() {
  std::string locale = currentLocaleIdentifier();
  if (locale != locale_) {
    for (size_t i = 0; i < keys_.size(); ++i) texts_[i] = CoreStrings::CLSTRING(keys_[i], locale);
    locale_ = std::move(locale);
  }
  return texts_;
}

}  // namespace qm
