#import "platform/cocoa/panels/CocoaSavePanel.h"

#import "CocoaTest.h"
#import "Panels.h"

namespace quendo::cocoa {
namespace {

class CocoaPanelsTest : public CocoaTest {
 protected:
  using Paths = std::optional<std::vector<std::string>>;

  void open(const OpenPanel& panel) {
    window_->beginSheet(panel, [this](Paths paths) { chosen_.push_back(std::move(paths)); });
  }
  void save() {
    shown_ = window_->beginSheet(
        configuration_, [this](SavePanel&, const SavePanelResult& result) { results_.push_back(result); });
  }
  fake::FakeSavePanel& seen() { return *platform_.toolkit.window->savePanels.back(); }
  /// The user confirms a place; true if the panel is content with it.
  static bool accepts(NSURL* url) {
    NSSavePanel* panel = doubles::newestPanel();
    return [panel.delegate panel:panel validateURL:url error:nullptr];
  }
  void addExtension() {
    configuration_.pathToWrite = [](const SavePanel&, const std::string& path) {
      return path.ends_with(".md") ? path : path + ".md";
    };
  }

  std::unique_ptr<Window> window_ = ports_.toolkit.makeWindow({0, 0, 800, 600}, 0);
  std::vector<Paths> chosen_;
  SavePanelConfiguration configuration_{.title = "Export",
                                        .prompt = "Save",
                                        .cancel = "",
                                        .nameFieldStringValue = "Note.md",
                                        .startingFolder = {},
                                        .allowedContentType = "public.plain-text",
                                        .accessory = {},
                                        .pathToWrite = {}};
  std::shared_ptr<SavePanel> shown_;
  std::vector<SavePanelResult> results_;
};

TEST_F(CocoaPanelsTest, AnOpenPanelIsAsTheCoreWantsIt) {
  open({"Import", "Open", "/home/user/Documents/a b", true, true});
  const OpenPanel& panel = platform_.toolkit.window->openPanels.back().panel;
  EXPECT_EQ(panel.title, "Import");
  EXPECT_EQ(panel.prompt, "Open");
  EXPECT_TRUE(panel.allowsMultipleSelection);
  EXPECT_TRUE(panel.canChooseDirectories);
}

TEST_F(CocoaPanelsTest, AnOpenPanelOffersNoDirectoriesUnlessTheCoreWantsThem) {
  open({"Import", "Open", "", false, false});
  EXPECT_FALSE(platform_.toolkit.window->openPanels.back().panel.canChooseDirectories);
}

TEST_F(CocoaPanelsTest, NoPanelKeepsAnybodyFromQuitting) {
  open({});
  save();
  ASSERT_EQ(doubles::modalWindows().size(), 2U);
  for (NSWindow* window : doubles::modalWindows())
    EXPECT_FALSE(window.preventsApplicationTerminationWhenModal);
  seen().cancel();
  platform_.toolkit.window->openPanels.back().completion(std::nullopt);
  EXPECT_TRUE(doubles::modalWindows().empty());
}

TEST_F(CocoaPanelsTest, AnOpenPanelGivesThePathsOfFilesAlone) {
  open({});
  doubles::selectUrls(
      @[ [NSURL fileURLWithPath:@"/notes/a b.md"], [NSURL URLWithString:@"https://quendo.example/"] ]);
  EXPECT_EQ(chosen_, std::vector<Paths>{std::vector<std::string>{"/notes/a b.md"}});
}

TEST_F(CocoaPanelsTest, ACancelledOpenPanelGivesNothing) {
  open({});
  platform_.toolkit.window->openPanels.back().completion(std::nullopt);
  EXPECT_EQ(chosen_, std::vector<Paths>{std::nullopt});
}

TEST_F(CocoaPanelsTest, ASavePanelGivesThePathOfItsFile) {
  save();
  seen().confirm("/notes/Ação %");
  ASSERT_EQ(results_.size(), 1U);
  EXPECT_TRUE(results_[0].confirmed);
  EXPECT_EQ(results_[0].path, "/notes/Ação %/Note.md");
}

TEST_F(CocoaPanelsTest, APlaceWithoutAPathIsConfirmedWithoutOne) {
  for (NSURL* url : {(NSURL*)nil, [NSURL URLWithString:@"https://elsewhere.example/Note.md"]}) {
    save();
    doubles::confirmUrl(url);
    EXPECT_TRUE(results_.back().confirmed);
    EXPECT_EQ(results_.back().path, std::nullopt);
  }
}

TEST_F(CocoaPanelsTest, ACancelledSavePanelHasNoPath) {
  save();
  seen().cancel();
  ASSERT_EQ(results_.size(), 1U);
  EXPECT_FALSE(results_[0].confirmed);
  EXPECT_EQ(results_[0].path, std::nullopt);
}

TEST_F(CocoaPanelsTest, ASavePanelIsAnsweredOnce) {
  save();
  seen().cancel();
  doubles::confirmUrl([NSURL fileURLWithPath:@"/notes/Note.md"]);
  EXPECT_EQ(results_.size(), 1U);
}

TEST_F(CocoaPanelsTest, ASavePanelShowsAndTellsItsName) {
  save();
  EXPECT_EQ(shown_->nameFieldStringValue(), "Note.md");
  shown_->setNameFieldStringValue("Ação.txt");
  EXPECT_EQ(seen().name, "Ação.txt");
  EXPECT_EQ(shown_->nameFieldStringValue(), "Ação.txt");
  EXPECT_EQ(shown_->indexOfSelectedItem(), 0U);
}

TEST_F(CocoaPanelsTest, AnotherNameIsShownBeforeTheSystemAsksAboutReplacing) {
  addExtension();
  save();
  EXPECT_FALSE(accepts([NSURL fileURLWithPath:@"/notes/a b/100% Ação"]));
  EXPECT_EQ(seen().name, "100% Ação.md");
  EXPECT_TRUE(accepts([NSURL fileURLWithPath:@"/notes/a b/100% Ação.md"]));
}

TEST_F(CocoaPanelsTest, ANameThatIsConfirmedTwiceIsTaken) {
  addExtension();
  save();
  EXPECT_FALSE(accepts([NSURL fileURLWithPath:@"/notes/Other"]));
  EXPECT_FALSE(accepts([NSURL fileURLWithPath:@"/notes/Third"]));
  EXPECT_FALSE(accepts([NSURL fileURLWithPath:@"/notes/Other"]));
  EXPECT_TRUE(accepts([NSURL fileURLWithPath:@"/notes/Other"]));
}

TEST_F(CocoaPanelsTest, APlaceThatIsToBeWrittenIsAcceptedAtOnce) {
  save();
  EXPECT_TRUE(accepts([NSURL fileURLWithPath:@"/notes/Other"])) << "nothing maps it";
  addExtension();
  save();
  EXPECT_TRUE(accepts([NSURL fileURLWithPath:@"/notes/Other.md"]));
  EXPECT_TRUE(accepts([NSURL URLWithString:@"https://elsewhere.example/Other"]));
  EXPECT_EQ(seen().name, "Note.md");
}

TEST_F(CocoaPanelsTest, WhatIsWrittenIsWhatTheUserConfirmed) {
  addExtension();
  save();
  doubles::confirmUrl([NSURL fileURLWithPath:@"/notes/Other"]);
  EXPECT_EQ(results_.at(0).path, "/notes/Other") << "nobody was asked about replacing another file";
}

TEST_F(CocoaPanelsTest, ASavePanelThatIsGoneIsNobodysDelegate) {
  id delegate = nil;
  NSSavePanel* panel = nil;
  {
    configuration_.accessory = {.label = "Type", .items = {"Markdown"}, .selected = 0, .didChange = {}};
    addExtension();
    const CocoaSavePanel neverShown(configuration_, {});
    panel = doubles::newestPanel();
    delegate = panel.delegate;
    ASSERT_NE(delegate, nil);
  }
  EXPECT_EQ(panel.delegate, nil);
  EXPECT_TRUE([delegate panel:panel validateURL:[NSURL fileURLWithPath:@"/notes/Note"] error:nullptr]);
  [delegate performSelector:@selector(saveAsExtensionDidChange:) withObject:nil];
}

TEST_F(CocoaPanelsTest, TheAccessoryRowTellsWhatIsSelectedInIt) {
  std::vector<std::size_t> selected;
  configuration_.accessory = {
      .label = "Type", .items = {"Markdown", "Text"}, .selected = 1, .didChange = [&](SavePanel& panel) {
        selected.push_back(panel.indexOfSelectedItem());
      }};
  save();
  EXPECT_EQ(seen().configuration.accessory->label, "Type");
  EXPECT_EQ(seen().configuration.accessory->items, (std::vector<std::string>{"Markdown", "Text"}));
  EXPECT_EQ(shown_->indexOfSelectedItem(), 1U);
  seen().select(0);
  EXPECT_EQ(selected, std::vector<std::size_t>{0});
}

}  // namespace
}  // namespace quendo::cocoa
