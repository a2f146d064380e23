#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#import "CocoaTest.h"

namespace quendo::cocoa {
namespace {

using namespace std::string_literals;

class CocoaServicesTest : public CocoaTest {};

TEST_F(CocoaServicesTest, AnExtensionHasTheTypeThatSomebodyRegistered) {
  EXPECT_EQ(ports_.contentTypes.typeForExtension("md"), "type.markdown");
}

TEST_F(CocoaServicesTest, AnExtensionThatNobodyRegisteredHasTheTypeThatTheSystemMakesUp) {
  const auto type = ports_.contentTypes.typeForExtension("unheard");
  ASSERT_TRUE(type);
  EXPECT_TRUE(type->starts_with("dyn.")) << *type;
}

TEST_F(CocoaServicesTest, TextAndDataHaveTheSystemsTypes) {
  EXPECT_EQ(ports_.contentTypes.plainText(), "public.plain-text");
  EXPECT_EQ(ports_.contentTypes.data(), "public.data");
}

TEST_F(CocoaServicesTest, AccessToAFileIsAskedForAndGivenBackByItsUrl) {
  auto& files = ports_.documentFiles;
  EXPECT_FALSE(files.startAccessingSecurityScopedResource("file:///notes/a%20b.md"));
  platform_.documents.grantsAccess = true;
  EXPECT_TRUE(files.startAccessingSecurityScopedResource("file:///notes/a%20b.md"));
  files.stopAccessingSecurityScopedResource("file:///notes/a%20b.md");
  EXPECT_TRUE(platform_.documents.openAccesses.empty());
  EXPECT_EQ(platform_.documents.log,
            (std::vector{"start file:///notes/a%20b.md"s, "start file:///notes/a%20b.md"s,
                         "stop file:///notes/a%20b.md"s}));
}

TEST_F(CocoaServicesTest, TheFilesThemselvesAreReadByTheirPath) {
  platform_.documents.setFile("/notes/a.md", "abc");
  EXPECT_EQ(ports_.documentFiles.contents("/notes/a.md", 10), "abc");
  EXPECT_EQ(ports_.documentFiles.resourceValues("/notes/a.md")->fileSize, 3);
}

TEST_F(CocoaServicesTest, ThePasteboardTakesNoIllFormedText) {
  EXPECT_TRUE(ports_.pasteboard.setString("a\0ção"s));
  EXPECT_EQ(platform_.pasteboard.contents, "a\0ção"s);
  ports_.pasteboard.clearContents();
  EXPECT_FALSE(ports_.pasteboard.setString("cut\xC3"));
  EXPECT_EQ(platform_.pasteboard.contents, std::nullopt);
}

TEST_F(CocoaServicesTest, ThePasteboardTellsWhenItRefuses) {
  platform_.pasteboard.refuses = true;
  EXPECT_FALSE(ports_.pasteboard.setString("text"));
}

TEST_F(CocoaServicesTest, OpensAddressesOutsideButNothingThatIsNone) {
  ports_.workspace.openUrl("https://quendo.example/a");
  EXPECT_EQ(platform_.workspace.opened, std::vector{"https://quendo.example/a"s});
  ports_.workspace.openUrl("http://a b");
  EXPECT_EQ(platform_.workspace.opened.size(), 1U);
}

}  // namespace
}  // namespace quendo::cocoa
