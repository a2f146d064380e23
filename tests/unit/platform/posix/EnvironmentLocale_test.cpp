#include "platform/posix/EnvironmentLocale.h"

#include <gtest/gtest.h>

namespace quendo::gtk {
namespace {

TEST(EnvironmentLocale, TakesTheLanguagePartOfALocaleName) {
  EXPECT_EQ(languageOfLocaleName("pt_BR.UTF-8"), "pt");
  EXPECT_EQ(languageOfLocaleName("en"), "en");
  EXPECT_EQ(languageOfLocaleName("es.UTF-8"), "es");
  EXPECT_EQ(languageOfLocaleName("ca@valencia"), "ca");
}

TEST(EnvironmentLocale, FindsNoLanguageInTheStandardLocales) {
  for (const char* name : {"C", "POSIX", "", "C.UTF-8", "_BR"})
    EXPECT_FALSE(languageOfLocaleName(name)) << name;
}

TEST(EnvironmentLocale, AsksTheVariablesInTheSystemsOrderAndPassesOverEmptyOnes) {
  EXPECT_EQ(messagesLocaleName("en_US", "es_ES", "pt_BR"), "en_US");
  EXPECT_EQ(messagesLocaleName(nullptr, "es_ES", "pt_BR"), "es_ES");
  EXPECT_EQ(messagesLocaleName("", nullptr, "pt_BR"), "pt_BR");
  EXPECT_EQ(messagesLocaleName("C", "es_ES", "pt_BR"), "C");
  EXPECT_EQ(messagesLocaleName(nullptr, nullptr, nullptr), "");
}

TEST(EnvironmentLocale, NamesEachLanguageWithItsCountryAndThenWithoutIt) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(languagesOfLocaleNames("pt_BR.UTF-8"), Names{"pt_BR"});
  EXPECT_EQ(languagesOfLocaleNames("pt_BR.UTF-8:en_GB:en"), (Names{"pt_BR", "en_GB", "en"}));
  EXPECT_EQ(languagesOfLocaleNames("ca_ES@valencia"), Names{"ca_ES"});
  EXPECT_EQ(languagesOfLocaleNames("es"), Names{"es"});
}

TEST(EnvironmentLocale, NamesNoLanguageForStandardLocalesAndEmptyNames) {
  for (const char* names : {"", "C", "C.UTF-8", "POSIX", ":", "C:POSIX::"}) {
    EXPECT_TRUE(languagesOfLocaleNames(names).empty()) << names;
  }
}

}  // namespace
}  // namespace quendo::gtk
