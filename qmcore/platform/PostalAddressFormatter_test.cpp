#include "qmcore/platform/PostalAddressFormatter.hpp"

#include <gtest/gtest.h>

#include <string>

namespace qm {
namespace {

CNPostalAddress springfield(std::string code) {
  CNPostalAddress a;
  a.street = "Main St 12";
  a.city = "Springfield";
  a.state = "IL";
  a.postalCode = "62701";
  a.ISOCountryCode = std::move(code);
  return a;
}

TEST(PostalAddressFormatterTest, LaysOutEachCountryAsItsPostExpects) {
  const struct {
    const char* code;
    const char* expected;
  } cases[] = {
      {"us", "Main St 12\nSpringfield IL 62701"},
      {"BR", "Main St 12\nSpringfield - IL\n62701"},
      {"JP", "〒62701\nILSpringfield\nMain St 12"},
      {"ZZ", "Main St 12\nSpringfield IL 62701"},
  };
  const CNPostalAddressFormatter formatter;
  for (const auto& c : cases) {
    EXPECT_EQ(formatter.stringFromPostalAddress(springfield(c.code)), c.expected) << c.code;
  }
}

TEST(PostalAddressFormatterTest, LeavesOutEmptyFieldsTheirSeparatorsAndEmptyLines) {
  const CNPostalAddressFormatter formatter;
  const struct {
    const char* what;
    CNPostalAddress address;
    const char* expected;
  } cases[] = {
      {"nothing", {}, ""},
      {"country only", {.country = "Germany", .ISOCountryCode = "DE"}, "Germany"},
      {"no state: no double space",
       {.city = "Springfield", .postalCode = "62701", .ISOCountryCode = "US"},
       "Springfield 62701"},
      {"no city: the separator before the state goes too",
       {.state = "SP", .ISOCountryCode = "BR"},
       "SP"},
      {"no postcode: no prefix mark", {.city = "Tokyo", .ISOCountryCode = "JP"}, "Tokyo"},
      {"sub-locality on its own line",
       {.street = "1 High St", .subLocality = "Soho", .city = "London", .ISOCountryCode = "GB"},
       "1 High St\nSoho\nLondon"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(formatter.stringFromPostalAddress(c.address), c.expected) << c.what;
  }
}

TEST(PostalAddressFormatterTest, StreetLinePutsTheNumberWhereTheCountryDoes) {
  const struct {
    const char* street;
    const char* number;
    const char* code;
    const char* expected;
  } cases[] = {
      {"Main St", "12", "US", "12 Main St"},
      {"Hauptstraße", "12", "DE", "Hauptstraße 12"},
      {"中山路", "12号", "CN", "中山路12号"},
      {"Main St", "", "DE", "Main St"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CNPostalAddressFormatter::streetLine(c.street, c.number, c.code), c.expected)
        << c.code << " " << c.street;
  }
}

TEST(PostalAddressFormatterTest, CountryDisplayNames) {
  EXPECT_EQ(countryDisplayName("de", "de_DE"), "Deutschland");
  EXPECT_EQ(countryDisplayName("1$", "en_US"), "1$");
  EXPECT_EQ(countryDisplayName("", "en_US"), "");
}

}  // namespace
}  // namespace qm
