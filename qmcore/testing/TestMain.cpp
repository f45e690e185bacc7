// The main of every test program: the same locale and time zone on every machine, whatever
// the environment says, so that expected texts do not depend on where the tests run.

#include <gtest/gtest.h>

#include "qmcore/platform/Locale.hpp"

int main(int argc, char** argv) {
  qm::setCurrentLocaleIdentifier("en_US");
  qm::setCurrentTimeZoneIdentifier("UTC");
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
