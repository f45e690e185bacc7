#include "qmcore/persistence/UserDefaultsBacked.hpp"

#include "qmcore/persistence/ColorPersistance.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm {

Color UserDefaultsBackedColor::internalGetValue() const {
  if (!storage().store->hasKey(key())) return defaultValue();
  // The text comes from the standard store, whichever store holds the key.
  const std::optional<std::string> text = storage().standardStore->stringForKey(key());
  if (!text || text->empty()) return defaultValue();
  std::optional<Color> color = parseColorString(*text);
  if (!color)
    fatalError("UserDefaultsBackedColor: the stored colour '" + *text + "' of key '" + key() +
               "' cannot be read");
  return std::move(*color);
}

void UserDefaultsBackedColor::setValue(const Color& value) {
  storage().store->setObject(key(), SettingsValue(stringFromColor(value)));
}

}  // namespace qm
