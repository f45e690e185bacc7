// The texts of a few fixed keys in the current locale, looked up again only when the locale
// changes: for texts drawn many times a second, such as the compass letters of a bearing.
//
// The string tables are fixed, so a text changes only with the locale. Not thread-safe: keep
// one cache per thread.
//
//   constexpr std::array<std::string_view, 2> kKeys = {"N", "S"};
//   thread_local qm::LocalizedTextCache letters(kKeys);
//   const std::string& north = letters.texts()[0];  // "N"; valid until the next texts()

#ifndef QMCORE_STRINGS_LOCALIZEDTEXTCACHE_HPP_
#define QMCORE_STRINGS_LOCALIZEDTEXTCACHE_HPP_

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

class LocalizedTextCache {
 public:
  // `keys` must outlive the cache (a constant array, as a rule).
  explicit LocalizedTextCache(std::span<const std::string_view> keys);

  LocalizedTextCache(const LocalizedTextCache&) = delete;
  LocalizedTextCache& operator=(const LocalizedTextCache&) = delete;

  // The texts of the keys, in the order of the keys, in the current locale. Valid until the
  // next call.
  std::span<const std::string> texts();

 private:
  const std::span<const std::string_view> keys_;
  std::string locale_;  // empty until filled: no current locale is empty
  std::vector<std::string> texts_;
};

}  // namespace qm

#endif  // QMCORE_STRINGS_LOCALIZEDTEXTCACHE_HPP_
