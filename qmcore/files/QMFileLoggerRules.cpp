#include "qmcore/files/QMFileLoggerRules.hpp"

#include <cstddef>
#include <vector>

#include "qmcore/platform/UnicodeText.hpp"

namespace qm {

bool QMFileLoggerRules::isRotationDue(std::optional<std::uint64_t> size,
                                      std::optional<Date> creation, Date now) {
  if (!size || *size > kMaximumLogSize) return true;
  const Date created = creation.value_or(Date::fromUnixSeconds(0.0));
  return now.timeIntervalSince1970() - created.timeIntervalSince1970() > kMaximumLogAge;
}

std::string QMFileLoggerRules::clientPart(std::optional<std::string_view> clientID) {
  if (!clientID) return std::string(kAbsentPart);
  const std::vector<std::string> characters = graphemeClusters(*clientID);
  const std::size_t count = characters.size();
  const std::size_t head = count < 3 ? count : 3;
  std::string part;
  for (std::size_t i = 0; i < head; ++i) part += characters[i];
  for (std::size_t i = count - head; i < count; ++i) part += characters[i];
  return part;
}

std::string QMFileLoggerRules::archiveName(std::string_view logName,
                                           const std::optional<std::string>& modificationText,
                                           const std::optional<std::string>& creationText,
                                           std::optional<std::string_view> nick,
                                           std::optional<std::string_view> clientID) {
  std::string name = "MD-";
  name += modificationText.value_or(std::string(kAbsentPart));
  name += "-CD-";
  name += creationText.value_or(std::string(kAbsentPart));
  name += "-";
  name += logName;
  name += "-NICK-";
  name += nick.value_or(kAbsentPart);
  name += "-CLIENT-";
  name += clientPart(clientID);
  return name;
}

bool QMFileLoggerRules::isShippable(std::string_view absolutePath) {
  return !absolutePath.starts_with("shipping");
}

}  // namespace qm
