#include "export/SaveNames.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

TEST(WithExtension, AddsItToANameThatHasNone) {
  EXPECT_EQ(withExtension("list", "txt"), "list.txt");
  EXPECT_EQ(withExtension(".profile", "txt"), ".profile.txt");
  EXPECT_EQ(withExtension("Makefile", ""), "Makefile");
}

TEST(WithExtension, KeepsTheFolderAndIgnoresTheDotsInIt) {
  EXPECT_EQ(withExtension("/typed/list", "txt"), "/typed/list.txt");
  EXPECT_EQ(withExtension("~/x", "md"), "~/x.md");
  EXPECT_EQ(withExtension("sub/x", "md"), "sub/x.md");
  EXPECT_EQ(withExtension("/x/v1.2/notes", "md"), "/x/v1.2/notes.md");
}

TEST(WithExtension, KeepsAnyExtensionThatWasTyped) {
  EXPECT_EQ(withExtension("list.md", "txt"), "list.md");
  EXPECT_EQ(withExtension("/a/list.unheard-of", "txt"), "/a/list.unheard-of");
}

TEST(WithExtension, ChangesNothingWhenAppliedAgain) {
  for (const char* path : {"/a/list", "/a/..", "/a/b.", "/a/.x"}) {
    const std::string once = withExtension(path, "md");
    EXPECT_EQ(withExtension(once, "md"), once);
  }
}

TEST(WithExtension, LeavesANameAloneThatNoPanelCouldShow) {
  EXPECT_EQ(withExtension("/a/caf\xE9", "md"), "/a/caf\xE9");
  EXPECT_EQ(withExtension("/caf\xE9/list", "md"), "/caf\xE9/list.md");
}

TEST(ReplacingExtension, PutsTheNewOneInThePlaceOfTheLast) {
  EXPECT_EQ(replacingExtension("rascunho.md", "json"), "rascunho.json");
  EXPECT_EQ(replacingExtension("a.tar.gz", "cpp"), "a.tar.cpp");
  EXPECT_EQ(replacingExtension("nota", "cs"), "nota.cs");
}

TEST(ReplacingExtension, KeepsTheFolderAndIgnoresTheDotsInIt) {
  EXPECT_EQ(replacingExtension("/x/v1.2/notes", "json"), "/x/v1.2/notes.json");
  EXPECT_EQ(replacingExtension("~/v1.2/notes.md", "json"), "~/v1.2/notes.json");
  EXPECT_EQ(replacingExtension("../notes", "json"), "../notes.json");
}

TEST(ReplacingExtension, NamesWhatHasNothingElse) {
  EXPECT_EQ(replacingExtension(".md", "json"), "nota.json");
  EXPECT_EQ(replacingExtension("", "json"), "nota.json");
  EXPECT_EQ(replacingExtension("/x/.md", "json"), "/x/nota.json");
  EXPECT_EQ(replacingExtension("/x/v1.2/", "json"), "/x/v1.2/nota.json");
}

}  // namespace
}  // namespace quendo
