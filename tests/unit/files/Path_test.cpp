#include "files/Path.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

TEST(LastPathComponent, LeavesSlashesAtTheEndAside) {
  EXPECT_EQ(lastPathComponent("/a/b.txt"), "b.txt");
  EXPECT_EQ(lastPathComponent("/a/b//"), "b");
  EXPECT_EQ(lastPathComponent("b"), "b");
  EXPECT_EQ(lastPathComponent("/"), "/");
  EXPECT_EQ(lastPathComponent("//"), "/");
  EXPECT_EQ(lastPathComponent(""), "");
}

TEST(PathExtension, IsWhatFollowsTheLastDotOfTheName) {
  EXPECT_EQ(pathExtension("/a/b.txt"), "txt");
  EXPECT_EQ(pathExtension("/a/b.tar.GZ"), "GZ");
  EXPECT_EQ(pathExtension("/a.d/b"), "");
  EXPECT_EQ(pathExtension("/a/.md"), "") << "a hidden file without an extension";
  EXPECT_EQ(pathExtension("/a/.b.md"), "md");
  EXPECT_EQ(pathExtension("/a/b."), "");
  EXPECT_EQ(pathExtension("/a/b.md/"), "md");
  EXPECT_EQ(pathExtension(""), "");
}

TEST(StandardizedPath, ResolvesDotsAndSlashesByTheTextAlone) {
  EXPECT_EQ(standardizedPath("/a/./b//c/"), "/a/b/c");
  EXPECT_EQ(standardizedPath("/a/../../b"), "/b");
  EXPECT_EQ(standardizedPath("/"), "/");
  EXPECT_EQ(standardizedPath("/.../..a"), "/.../..a");
}

TEST(DeletingPathExtension, TakesTheLastDotAndWhatFollows) {
  EXPECT_EQ(deletingPathExtension("rascunho.md"), "rascunho");
  EXPECT_EQ(deletingPathExtension("a.tar.gz"), "a.tar");
  EXPECT_EQ(deletingPathExtension(".md"), "");
  EXPECT_EQ(deletingPathExtension("plain"), "plain");
  EXPECT_EQ(deletingPathExtension("dot."), "dot");
}

TEST(DeletingPathExtension, LooksAtTheLastComponentOnly) {
  EXPECT_EQ(deletingPathExtension("/x/v1.2/notes"), "/x/v1.2/notes");
  EXPECT_EQ(deletingPathExtension("/x/v1.2/notes.md"), "/x/v1.2/notes");
  EXPECT_EQ(deletingPathExtension("v1.2/.md"), "v1.2/");
  EXPECT_EQ(deletingPathExtension("../notes"), "../notes");
  EXPECT_EQ(deletingPathExtension("/x/v1.2/"), "/x/v1.2/");
}

TEST(DeletingLastPathComponent, LeavesTheFolder) {
  EXPECT_EQ(deletingLastPathComponent("/a/b.txt"), "/a");
  EXPECT_EQ(deletingLastPathComponent("/a/b//"), "/a");
  EXPECT_EQ(deletingLastPathComponent("/a//b"), "/a");
  EXPECT_EQ(deletingLastPathComponent("/a"), "/");
  EXPECT_EQ(deletingLastPathComponent("//a"), "/");
  EXPECT_EQ(deletingLastPathComponent("/"), "/");
  EXPECT_EQ(deletingLastPathComponent("a/b"), "a");
  EXPECT_EQ(deletingLastPathComponent("b"), "");
  EXPECT_EQ(deletingLastPathComponent(""), "");
}

}  // namespace
}  // namespace quendo
