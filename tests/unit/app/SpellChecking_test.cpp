#include "app/SpellChecking.h"

#include <gtest/gtest.h>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

using Names = std::vector<std::string>;
using Choices = std::vector<Names>;

TEST(SpellingLanguages, TakesTheFirstNameOfEachLanguageAndAllNamesOtherwise) {
  EXPECT_EQ(spellingLanguages({"pt_BR"}), (Choices{{"pt_BR"}, {"pt_BR", "pt"}}));
  EXPECT_EQ(spellingLanguages({"pt_BR", "pt"}), (Choices{{"pt_BR"}, {"pt_BR", "pt"}}));
  EXPECT_EQ(spellingLanguages({"pt_BR", "en_GB", "en_US"}),
            (Choices{{"pt_BR", "en_GB"}, {"pt_BR", "pt", "en_GB", "en", "en_US"}}));
}

TEST(SpellingLanguages, NamesNoLanguageTwice) {
  EXPECT_EQ(spellingLanguages({"en_GB", "en", "en_US", "en_GB"}),
            (Choices{{"en_GB"}, {"en_GB", "en", "en_US"}}));
}

TEST(SpellingLanguages, HasOneChoiceWhenNoLanguageHasTwoNames) {
  EXPECT_EQ(spellingLanguages({"eo", "es"}), (Choices{{"eo", "es"}}));
}

TEST(SpellingLanguages, DoesNotTakeALanguageForAnotherThatBeginsAlike) {
  EXPECT_EQ(spellingLanguages({"nds", "nd"}), (Choices{{"nds", "nd"}}));
}

TEST(SpellingLanguages, HasNoChoiceWithoutALanguage) {
  EXPECT_TRUE(spellingLanguages({}).empty());
}

class SpellCheckingTest : public fake::HostTest {};

TEST_F(SpellCheckingTest, StartsOneSecondAfterTheFirstPageIsLoaded) {
  platform_.locale.languages = {"es_ES", "es"};
  launch();
  platform_.mainQueue.advance(10s);
  EXPECT_TRUE(page().spelling.empty()) << "not before there is a page";
  finishLoading();
  platform_.mainQueue.advance(999ms);
  EXPECT_TRUE(page().spelling.empty());
  platform_.mainQueue.advance(1ms);
  EXPECT_EQ(page().spelling, std::vector<Choices>{(Choices{{"es_ES"}, {"es_ES", "es"}})});
}

TEST_F(SpellCheckingTest, IsNotStartedAgainByAPageThatIsLoadedLater) {
  start();
  finishLoading();
  platform_.mainQueue.advance(1min);
  finishLoading();
  platform_.mainQueue.advance(1min);
  EXPECT_EQ(page().spelling.size(), 1U);
}

}  // namespace
}  // namespace quendo
