#include "unit/update/UpdateFixture.h"

namespace quendo {
namespace {

class UpdateOfferTest : public UpdateTest {
 protected:
  /// The text below the title for a manifest with these notes, in JSON.
  std::string bodyWithNotes(const std::string& notes) {
    checkManually(manifest("1.6.0", 4, ",\"release_notes\":" + notes));
    return lastOffer().informativeText;
  }
  static std::string quoted(const std::string& text) { return "\"" + text + "\""; }

  const std::string body_ =
      "Você está usando a versão 1.5.0. Atualize para receber as melhorias mais recentes.";
};

TEST_F(UpdateOfferTest, IsASheetWithTwoButtons) {
  checkManually(newer());
  ASSERT_EQ(offers(), 1U);
  EXPECT_EQ(lastOffer().style, AlertStyle::informational);
  EXPECT_EQ(lastOffer().messageText, "Quendo 1.6.0 está disponível");
  EXPECT_EQ(lastOffer().informativeText, body_);
  EXPECT_EQ(lastOffer().buttons, (std::vector<std::string>{"Baixar atualização", "Lembrar depois"}));
  EXPECT_FALSE(lastOffer().accessory);
  EXPECT_TRUE(messages().empty());
}

TEST_F(UpdateOfferTest, IsInTheLanguage) {
  platform_.defaults.setString(kLanguageDefaultsKey, "en");
  checkManually(newer());
  EXPECT_EQ(lastOffer().messageText, "Quendo 1.6.0 is available");
  EXPECT_EQ(lastOffer().informativeText,
            "You are using version 1.5.0. Update to get the latest improvements.");
  EXPECT_EQ(lastOffer().buttons, (std::vector<std::string>{"Download Update", "Remind Me Later"}));
  platform_.defaults.setString(kLanguageDefaultsKey, "es");
  checkManually(newer());
  EXPECT_EQ(lastOffer().messageText, "Quendo 1.6.0 está disponible");
  EXPECT_EQ(lastOffer().informativeText,
            "Estás usando la versión 1.5.0. Actualiza para recibir las mejoras más recientes.");
  EXPECT_EQ(lastOffer().buttons, (std::vector<std::string>{"Descargar actualización", "Recordar más tarde"}));
}

TEST_F(UpdateOfferTest, OpensTheAddressUnchangedOnItsFirstButtonOnly) {
  const std::string url = "HTTPS://user@WWW." + std::string(kSiteDomain) + ":443/A%20b.DMG?x=1#y";
  checkManually(manifest("1.6.0", 4, "", url));
  EXPECT_TRUE(platform_.workspace.opened.empty());
  chooseInLastOffer(0);
  EXPECT_EQ(platform_.workspace.opened, std::vector<std::string>{url});
  for (const int ending : {1, -1}) {
    checkManually(newer());
    chooseInLastOffer(ending);
    EXPECT_EQ(platform_.workspace.opened.size(), 1U) << ending;
  }
}

TEST_F(UpdateOfferTest, OpensNothingAfterTheEndOfItsOwner) {
  checkManually(newer());
  checks_.reset();
  chooseInLastOffer(0);
  EXPECT_TRUE(platform_.workspace.opened.empty());
}

TEST_F(UpdateOfferTest, ShowsTheNotesAfterABlankLine) {
  EXPECT_EQ(bodyWithNotes(quoted("Faster.\\n\\nBetter.")), body_ + "\n\nFaster.\n\nBetter.");
  EXPECT_EQ(bodyWithNotes(quoted(" \\t\\r\\n\\u00a0\\u2029 Faster. \\n\\n ")), body_ + "\n\nFaster.");
}

TEST_F(UpdateOfferTest, AddsNothingForNotesThatAreMissingOrBlank) {
  for (const char* notes : {"null", "\"\"", "\" \"", R"("\n\n")", R"(" \t\r\n\u00a0\u2028\u2029\u3000")"}) {
    EXPECT_EQ(bodyWithNotes(notes), body_) << notes;
  }
}

TEST_F(UpdateOfferTest, CutsTheNotesAfter1200CharactersWithoutAMark) {
  EXPECT_EQ(bodyWithNotes(quoted(std::string(5000, 'n'))), body_ + "\n\n" + std::string(1200, 'n'));
  EXPECT_EQ(bodyWithNotes(quoted(std::string(1200, 'n'))), body_ + "\n\n" + std::string(1200, 'n'));
  EXPECT_EQ(bodyWithNotes(quoted(std::string(1201, 'n'))), body_ + "\n\n" + std::string(1200, 'n'));
}

TEST_F(UpdateOfferTest, CountsCharactersAsAReaderDoes) {
  const std::string family = "👩‍👩‍👧‍👦";
  std::string notes;
  std::string expected;
  for (int i = 0; i < 1300; ++i) {
    notes += i % 2 == 0 ? family : "e\u0301";
    if (i == 1199) expected = notes;
  }
  EXPECT_EQ(bodyWithNotes(quoted(notes)), body_ + "\n\n" + expected);
}

TEST_F(UpdateOfferTest, TrimsBeforeItCuts) {
  EXPECT_EQ(bodyWithNotes(quoted(std::string(2000, ' ') + std::string(1300, 'n'))),
            body_ + "\n\n" + std::string(1200, 'n'));
  EXPECT_EQ(bodyWithNotes(quoted(std::string(1199, 'n') + " more")),
            body_ + "\n\n" + std::string(1199, 'n') + " ")
      << "what the cut leaves at the end stays";
}

TEST_F(UpdateOfferTest, IsRecordedBeforeItIsAnswered) {
  const auto asked = now();
  checks_->checkForUpdates();
  pass(5s);
  answer(newer());
  EXPECT_EQ(storedText(kPromptedVersion), "1.6.0");
  EXPECT_EQ(storedDate(kPromptDate), asked) << "the time at which the check began";
}

TEST_F(UpdateOfferTest, IsMadeByAnAutomaticCheckOnceInADay) {
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 1U);
  for (int check = 0; check < 3; ++check) {
    pass(6h);
    checkAutomatically(newer());
    EXPECT_EQ(offers(), 1U);
  }
  pass(6h - 1ms);
  platform_.defaults.dates.erase(kLastCheck);
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 1U) << "a millisecond before the day is over";
  EXPECT_EQ(storedDate(kPromptDate), now() - 24h + 1ms) << "an offer that was not made is not recorded";
  pass(1ms);
  platform_.defaults.dates.erase(kLastCheck);
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 2U);
  EXPECT_EQ(storedDate(kPromptDate), now());
}

TEST_F(UpdateOfferTest, IsMadeAgainByAManualCheckAndThatIsRecorded) {
  checkAutomatically(newer());
  pass(1h);
  checkManually(newer());
  EXPECT_EQ(offers(), 2U);
  EXPECT_EQ(storedDate(kPromptDate), now());
  pass(23h + 59min);
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 2U) << "the day counts from the manual offer";
}

TEST_F(UpdateOfferTest, IsMadeAtOnceForAnotherVersion) {
  checkAutomatically(newer());
  pass(6h);
  checkAutomatically(manifest("1.6.0.0", 4));
  EXPECT_EQ(offers(), 2U) << "the same number in another spelling is another text";
  pass(6h);
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 3U) << "only the last one is remembered";
}

TEST_F(UpdateOfferTest, IsMadeWhenWhatWasRecordedIsMissingOrOfAnotherType) {
  const auto check = [this] {
    platform_.defaults.dates.erase(kLastCheck);
    checkAutomatically(newer());
    return offers();
  };
  platform_.defaults.setString(kPromptedVersion, "1.6.0");
  EXPECT_EQ(check(), 1U) << "no date";
  platform_.defaults.setString(kPromptDate, "2030-01-31T00:00:00Z");
  EXPECT_EQ(check(), 2U) << "a text instead of a date";
  platform_.defaults.setDate(kPromptedVersion, now());
  EXPECT_EQ(check(), 3U) << "a date instead of a version";
  EXPECT_EQ(check(), 3U) << "both are right again";
}

TEST_F(UpdateOfferTest, IsHeldBackByADateInTheFuture) {
  platform_.defaults.setString(kPromptedVersion, "1.6.0");
  platform_.defaults.setDate(kPromptDate, now() + 100h);
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 0U);
  checkManually(newer());
  EXPECT_EQ(offers(), 1U);
}

TEST_F(UpdateOfferTest, IsLeftOutWithoutAWordWhileTheWindowHasASheet) {
  window_.sheetAttached = true;
  checkManually(newer());
  checkAutomatically(newer());
  EXPECT_TRUE(isSilent());
  EXPECT_TRUE(noOfferRecorded());
  window_.sheetAttached = false;
  pass(6h);
  checkAutomatically(newer());
  EXPECT_EQ(offers(), 1U);
}

TEST_F(UpdateOfferTest, NeedsAWindow) {
  surface_.window = nullptr;
  checkManually(manifest("1.5.0", 3));
  EXPECT_DEATH(checkManually(newer()), "without a window");
}

}  // namespace
}  // namespace quendo
