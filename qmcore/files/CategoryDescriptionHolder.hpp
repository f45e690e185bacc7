// An interface for category types (activity kinds, track types, ...) that apps show as a
// title with its abbreviation, such as "Walking[W]".
//
//   struct Walking : qm::CategoryDescriptionHolder {
//     std::string categoryDescription() const override { return "walking"; }
//     std::string title() const override { return "Walking"; }
//     std::string abbreviation() const override { return "W"; }
//   };
//   Walking().titleWithAbbreviation();   // "Walking[W]"
//
// The library has no category of its own; apps implement this.

#ifndef QMCORE_FILES_CATEGORYDESCRIPTIONHOLDER_HPP_
#define QMCORE_FILES_CATEGORYDESCRIPTIONHOLDER_HPP_

#include <string>

namespace qm {

class CategoryDescriptionHolder {
 public:
  virtual ~CategoryDescriptionHolder() = default;

  // A description of the category for the app's own use; the library does not read it.
  virtual std::string categoryDescription() const = 0;
  virtual std::string title() const = 0;
  virtual std::string abbreviation() const = 0;

  // title + "[" + abbreviation + "]", with no space.
  std::string titleWithAbbreviation() const { return title() + "[" + abbreviation() + "]"; }
};

}  // namespace qm

#endif  // QMCORE_FILES_CATEGORYDESCRIPTIONHOLDER_HPP_
