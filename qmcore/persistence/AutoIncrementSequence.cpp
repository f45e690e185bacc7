#include "qmcore/persistence/AutoIncrementSequence.hpp"

#include <algorithm>
#include <optional>

#include "qmcore/persistence/JsonHelper.hpp"
#include "qmcore/platform/NumberFormatter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/platform/UnicodeText.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {
namespace {

// The record stored for the code, decoded; absent when nothing is stored or it does not decode
// (logged).
std::optional<AutoIncrementSequence> storedSequence(Env& env, std::string_view code) {
  // The store's string reading, as for any stored text: a number reads as its text (and then
  // fails to decode, with the log line); other kinds read as nothing stored.
  const std::optional<std::string> text =
      env.standardSettings()->stringForKey(AutoIncrementSequence::storageKeyForSequenceCode(code));
  if (!text) return std::nullopt;
  return JsonHelper::objectFromJsonString<AutoIncrementSequence>(*text);
}

}  // namespace

AutoIncrementSequence AutoIncrementSequence::defaultSequence(std::string_view code) {
  AutoIncrementSequence sequence;
  sequence.code = std::string(code);
  return sequence;
}

std::string AutoIncrementSequence::storageKeyForSequenceCode(std::string_view code) {
  return std::string(kStorageBaseKey) + std::string(code);
}

AutoIncrementSequence AutoIncrementSequence::sequenceForCode(Env& env, std::string_view code) {
  return storedSequence(env, code).value_or(defaultSequence(code));
}

void AutoIncrementSequence::saveSequence(Env& env, const AutoIncrementSequence& sequence) {
  if (std::optional<std::string> text = JsonHelper::jsonStringFromObject(sequence)) {
    env.standardSettings()->setObject(storageKeyForSequenceCode(sequence.code),
                                      SettingsValue(std::move(*text)));
  }
}

void AutoIncrementSequence::resetSequenceWithCode(Env& env, std::string_view code) {
  std::optional<AutoIncrementSequence> sequence = storedSequence(env, code);
  if (!sequence) return;
  sequence->value = sequence->start;
  saveSequence(env, *sequence);
}

std::string AutoIncrementSequence::formattedValue() const {
  // ICU takes at most 999 integer digits; a negative count means none.
  const int digits = static_cast<int>(std::clamp<std::int64_t>(leadingZeroes, 0, 999));
  return NumberFormatter(NumberFormatOptions{.minimumIntegerDigits = digits, .usesGrouping = false})
      .format(value);
}

std::string AutoIncrementSequence::localizedDescription() const {
  return capitalizedString(CoreStrings::CLSTRING("value")) + ": " + formattedValue() + " (" +
         CoreStrings::CLSTRING("start") + ": " + std::to_string(start) + ", " +
         CoreStrings::CLSTRING("step") + ": " + std::to_string(step) + ")";
}

void to_json(nlohmann::json& j, const AutoIncrementSequence& sequence) {
  j = {{"start", sequence.start},
       {"step", sequence.step},
       {"leadingZeroes", sequence.leadingZeroes},
       {"code", sequence.code},
       {"value", sequence.value}};
}

void from_json(const nlohmann::json& j, AutoIncrementSequence& sequence) {
  decodeField(j, "start", sequence.start);
  decodeField(j, "step", sequence.step);
  decodeField(j, "leadingZeroes", sequence.leadingZeroes);
  decodeField(j, "code", sequence.code);
  decodeField(j, "value", sequence.value);
}

}  // namespace qm
