#include "export/OffersWithoutSystemPicker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fake/FakePlatform.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;
using Kind = SharedItem::Kind;
using Titles = std::vector<std::vector<std::string>>;

const SharedItem kFile{Kind::file, "/tmp/folder/note.md"};
const SharedItem kLink{Kind::link, "https://quendo.example/n/1"};
const SharedItem kText{Kind::text, "Title\n\ncontent"};

class OffersWithoutSystemPickerTest : public ::testing::Test {
 protected:
  OffersWithoutSystemPicker offersFor(const std::vector<SharedItem>& items,
                                      const std::string& title = "Title") {
    return {items, title, "content", localization_, copies_};
  }
  std::vector<SharingSection> sectionsFor(const std::vector<SharedItem>& items,
                                          const std::vector<SharingProgram>& programs = {}) {
    return offersFor(items).sections(programs);
  }
  static Titles titles(const std::vector<SharingSection>& sections) {
    Titles all;
    for (const SharingSection& section : sections) {
      all.emplace_back();
      for (const SharingOffer& offer : section) all.back().push_back(offer.title);
    }
    return all;
  }
  ShareByMail mailFor(const std::vector<SharedItem>& items, const std::string& title = "Title") {
    return std::get<ShareByMail>(offersFor(items, title).sections({}).front().front().action);
  }

  fake::FakePlatform platform_;
  Localization localization_{platform_.defaults, platform_.locale};
  std::shared_ptr<SharedCopies> copies_ =
      std::make_shared<SharedCopies>(platform_.files, platform_.clock, platform_.uuids);
};

TEST_F(OffersWithoutSystemPickerTest, AMailThenProgramsThenCopyingInTheInterfaceLanguage) {
  const std::vector<std::pair<const char*, Titles>> expected = {
      {"pt",
       {{"Enviar por e-mail"}, {"Abrir com Editor"}, {"Copiar arquivo", "Copiar texto", "Copiar link"}}},
      {"en", {{"Send by E-mail"}, {"Open with Editor"}, {"Copy File", "Copy Text", "Copy Link"}}},
      {"es",
       {{"Enviar por correo"}, {"Abrir con Editor"}, {"Copiar archivo", "Copiar texto", "Copiar enlace"}}}};
  for (const auto& [language, sections] : expected) {
    platform_.defaults.strings["QuendoLanguage"] = language;
    EXPECT_EQ(titles(sectionsFor({kFile, kLink}, {{.name = "Editor"}})), sections);
  }
}

TEST_F(OffersWithoutSystemPickerTest, WithoutAFileNoProgramAndNoCopyOfIt) {
  platform_.locale.code = "en";
  EXPECT_EQ(titles(sectionsFor({kLink, kText}, {{.name = "Editor"}})),
            (Titles{{"Send by E-mail"}, {"Copy Text", "Copy Link"}}));
}

TEST_F(OffersWithoutSystemPickerTest, ASectionWithoutEntriesIsLeftOut) {
  EXPECT_EQ(sectionsFor({kFile}).size(), 2U);
}

TEST_F(OffersWithoutSystemPickerTest, WhatIsCopiedIsTheFileItsTextAndTheLink) {
  const SharingSection copies = sectionsFor({kFile, kLink}).back();
  ASSERT_EQ(copies.size(), 3U);
  EXPECT_EQ(std::get<CopySharedFile>(copies[0].action), CopySharedFile{kFile.value});
  EXPECT_EQ(std::get<CopySharedText>(copies[1].action), CopySharedText{"content"});
  EXPECT_EQ(std::get<CopySharedText>(copies[2].action), CopySharedText{kLink.value});
  EXPECT_EQ(std::get<CopySharedText>(sectionsFor({kText}).back()[0].action), CopySharedText{kText.value});
}

TEST_F(OffersWithoutSystemPickerTest, AtMostEightProgramsInTheirOrderAndNeverQuendoItself) {
  std::vector<SharingProgram> programs = {{"Quendo", true}};
  for (char letter = 'a'; letter <= 'j'; ++letter) programs.push_back({std::string(1, letter), false});
  const SharingSection section = sectionsFor({kFile}, programs)[1];
  ASSERT_EQ(section.size(), 8U);
  EXPECT_EQ(section.front().title, "Abrir com a");
  EXPECT_EQ(section.back().title, "Abrir com h");
  EXPECT_EQ(std::get<ShareWithProgram>(section.front().action), (ShareWithProgram{1, kFile.value, 2000ms}));
  EXPECT_EQ(std::get<ShareWithProgram>(section.back().action).program, 8U);
}

TEST_F(OffersWithoutSystemPickerTest, AMailHasTheFileAttachedAndTheLinkForABody) {
  EXPECT_EQ(mailFor({kFile, kLink}), (ShareByMail{"Title", kLink.value, kFile.value}));
  EXPECT_EQ(mailFor({kFile}), (ShareByMail{"Title", "", kFile.value}));
}

TEST_F(OffersWithoutSystemPickerTest, AMailWithoutAFileHasTheTextAndBelowItTheLink) {
  EXPECT_EQ(mailFor({kText}), (ShareByMail{"Title", "Title\n\ncontent", std::nullopt}));
  EXPECT_EQ(mailFor({kLink, kText}),
            (ShareByMail{"Title", "Title\n\ncontent\n\nhttps://quendo.example/n/1", std::nullopt}));
}

TEST_F(OffersWithoutSystemPickerTest, ASubjectIsOneLine) {
  EXPECT_EQ(mailFor({kFile}, std::string("a\r\nBcc: b\tc\x7F") + '\0' + "\u00E9").subject,
            "a  Bcc: b c  \u00E9");
}

TEST_F(OffersWithoutSystemPickerTest, NothingOfABodyIsLostBehindANul) {
  const SharedItem text{Kind::text, std::string("before") + '\0' + "after"};
  EXPECT_EQ(mailFor({text}).body, "before\uFFFDafter");
}

TEST_F(OffersWithoutSystemPickerTest, CopiesForProgramsComeFromTheCopiesWhileThoseLive) {
  platform_.files.setFile(kFile.value, "content");
  OffersWithoutSystemPicker offers = offersFor({kFile});
  const auto copy = offers.copyForAnotherProgram(kFile.value);
  ASSERT_TRUE(copy);
  EXPECT_EQ(platform_.files.file(*copy), "content");
  copies_.reset();
  EXPECT_EQ(offers.copyForAnotherProgram(kFile.value), std::nullopt);
}

}  // namespace
}  // namespace quendo
