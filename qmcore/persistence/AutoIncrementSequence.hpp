// A persistent counter identified by a code, for numbers such as 001, 002, 003. Each code has
// one record in the standard settings store, kept as JSON text under
// "QMSequenceStorageBaseKey_" + code (the code verbatim, spaces and slashes included).
//
//   qm::AutoIncrementSequence s = qm::AutoIncrementSequence::sequenceForCode(env, "invoice");
//   s.value += s.step;                                  // callers advance it themselves
//   qm::AutoIncrementSequence::saveSequence(env, s);
//   s.formattedValue();                                 // "002" with leadingZeroes 3
//
// Read, change and save are separate steps without a lock: use one code from one thread at a
// time.

#ifndef QMCORE_PERSISTENCE_AUTOINCREMENTSEQUENCE_HPP_
#define QMCORE_PERSISTENCE_AUTOINCREMENTSEQUENCE_HPP_

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <string_view>

#include "qmcore/persistence/JsonCoding.hpp"
#include "qmcore/platform/Env.hpp"

namespace qm {

struct AutoIncrementSequence {
  static constexpr std::string_view kStorageBaseKey = "QMSequenceStorageBaseKey_";

  std::int64_t start = 1;          // the value a reset returns to
  std::int64_t step = 1;           // the increment callers apply
  std::int64_t leadingZeroes = 0;  // minimum number of integer digits when formatted
  std::string code;                // names the sequence and its storage key
  std::int64_t value = 1;          // the current number

  bool operator==(const AutoIncrementSequence&) const = default;

  // Start 1, step 1, no leading zeroes, value 1; nothing is read or written.
  static AutoIncrementSequence defaultSequence(std::string_view code);
  static std::string storageKeyForSequenceCode(std::string_view code);

  // The stored record (with the code it was stored with), or the default one, which is not
  // stored, when nothing is stored or the text does not decode (one log line).
  static AutoIncrementSequence sequenceForCode(Env& env, std::string_view code);
  // Stores the record under the key of its own code, without synchronising.
  static void saveSequence(Env& env, const AutoIncrementSequence& sequence);
  // Sets a stored record's value back to its start and stores it; does nothing (and so creates
  // nothing) when no readable record is stored for the code.
  static void resetSequenceWithCode(Env& env, std::string_view code);

  // `value` with at least `leadingZeroes` integer digits and no grouping, in the current
  // locale's digits: value 7 with 3 gives "007", 12345 with 0 gives "12345".
  std::string formattedValue() const;
  // "Value: 007 (start: 1, step: 1)", the three words from the library's string table.
  std::string localizedDescription() const;
};

template <>
struct JsonTypeName<AutoIncrementSequence> {
  static constexpr std::string_view value = "AutoIncrementSequence";
};

// Keys "start", "step", "leadingZeroes", "code", "value"; all five required.
void to_json(nlohmann::json& j, const AutoIncrementSequence& sequence);
void from_json(const nlohmann::json& j, AutoIncrementSequence& sequence);

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_AUTOINCREMENTSEQUENCE_HPP_
