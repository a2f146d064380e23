#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "export/SaveAsExtensions.h"
#include "fake/HostFixture.h"

namespace quendo {
namespace {

class ExportPanelsTest : public fake::HostTest {
 protected:
  ExportPanelsTest() { platform_.files.setDirectory("/home/user"); }

  fake::FakeSavePanel& exportNote(const std::string& filename, const std::string& format = "markdown",
                                  const std::string& content = "text") {
    post("quendoExport", Value::Dictionary{{"filename", filename}, {"content", content}, {"format", format}});
    return *window().savePanels.back();
  }
  fake::FakeSavePanel& saveAs(const std::string& filename, const std::string& content = "text",
                              const std::string& noteId = "n1") {
    post("quendoSaveAs", Value::Dictionary{{"noteId", noteId}, {"filename", filename}, {"content", content}});
    return *window().savePanels.back();
  }
  void useLanguage(const char* language) { platform_.defaults.strings["QuendoLanguage"] = language; }
  std::string lastScript() { return scripts().empty() ? "" : scripts().back(); }
};

TEST_F(ExportPanelsTest, AMarkdownExportShowsItsPanel) {
  start();
  const auto& panel = exportNote("Minha nota.md").configuration;
  EXPECT_EQ(panel.title, "Exportar nota em Markdown");
  EXPECT_EQ(panel.prompt, "Exportar");
  EXPECT_EQ(panel.nameFieldStringValue, "Minha nota.md");
  EXPECT_EQ(panel.allowedContentType, "type.markdown");
  EXPECT_TRUE(panel.canCreateDirectories);
  EXPECT_FALSE(panel.allowsOtherFileTypes);
  EXPECT_FALSE(panel.accessory);
}

TEST_F(ExportPanelsTest, APlainExportShowsItsPanelInTheInterfaceLanguage) {
  start();
  useLanguage("en");
  const auto& panel = exportNote("x.txt", "plain").configuration;
  EXPECT_EQ(panel.title, "Export Text File");
  EXPECT_EQ(panel.prompt, "Export");
  EXPECT_EQ(panel.cancel, "Cancel");
  EXPECT_EQ(panel.allowedContentType, "type.txt");
}

TEST_F(ExportPanelsTest, TheAllowedTypeIsTheOneOfTheExtensionElseTheFormats) {
  start();
  EXPECT_EQ(exportNote("x.txt", "plain").configuration.allowedContentType, "type.txt");
  EXPECT_EQ(exportNote("x.unknown", "plain").configuration.allowedContentType, "public.plain-text");
  EXPECT_EQ(exportNote("x", "plain").configuration.allowedContentType, "public.plain-text");
  EXPECT_EQ(exportNote("x", "markdown").configuration.allowedContentType, "type.markdown");
  EXPECT_EQ(exportNote("x", "anything").configuration.allowedContentType, "type.markdown");
  platform_.contentTypes.types.clear();
  EXPECT_EQ(exportNote("x.md", "markdown").configuration.allowedContentType, "public.plain-text");
}

TEST_F(ExportPanelsTest, AnUnsafeNameIsMadeSafeInBothPanels) {
  start();
  EXPECT_EQ(exportNote("a/b:c\\d").name, "a-b-c-d");
  EXPECT_EQ(exportNote("   ", "plain").name, "nota.md");
  EXPECT_EQ(exportNote(std::string(200, 'x')).name, std::string(180, 'x'));
  EXPECT_EQ(saveAs("").name, "nota.md");
}

TEST_F(ExportPanelsTest, AConfirmedExportWritesTheTextAndSaysSo) {
  start();
  exportNote("nota.md", "markdown", "# Olá\n").confirm("/home/user");
  EXPECT_EQ(platform_.files.file("/home/user/nota.md"), "# Olá\n");
  EXPECT_EQ(lastScript(), "window.quendoNativeExportDidFinish?.(true, \"Markdown exportado\")");
  useLanguage("es");
  exportNote("nota.txt", "plain").confirm("/home/user");
  EXPECT_EQ(lastScript(), "window.quendoNativeExportDidFinish?.(true, \"Archivo exportado\")");
}

TEST_F(ExportPanelsTest, AnExportUnderANameWithoutExtensionGetsTheAllowedOne) {
  start();
  auto& panel = exportNote("nota.txt", "plain");
  panel.name = "outra";
  panel.confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/outra.txt"));
  exportNote("nota").confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/nota.md"));
}

TEST_F(ExportPanelsTest, AnExtensionThatNoTypeHasIsKeptWhereItIsTypedAndGivenToNothingElse) {
  start();
  exportNote("nota.xyz").confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/nota.xyz"));
  auto& retyped = exportNote("nota.xyz");
  retyped.name = "outra.abc";
  retyped.confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/outra.abc"));
  // The panel allows Markdown or plain text; xyz is an unknown type.
  auto& markdown = exportNote("nota.xyz");
  markdown.name = "outra";
  markdown.confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/outra.md"));
  auto& plain = exportNote("nota.xyz", "plain");
  plain.name = "outra";
  plain.confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/outra.txt"));
}

TEST_F(ExportPanelsTest, ACancelledExportAnswersFalse) {
  start();
  exportNote("nota.md").cancel();
  EXPECT_EQ(lastScript(), "window.quendoNativeExportDidFinish?.(false, \"Exportação cancelada\")");
  EXPECT_TRUE(platform_.files.filePaths().empty());
}

TEST_F(ExportPanelsTest, AnExportThatTheDiskRefusesAnswersFalseAndLeavesTheOldFile) {
  start();
  useLanguage("en");
  platform_.files.setFile("/home/user/nota.md", "old");
  auto& panel = exportNote("nota.md");
  platform_.files.failCallsIf([](const std::string& call) { return call.starts_with("write"); });
  panel.confirm("/home/user");
  EXPECT_EQ(lastScript(), "window.quendoNativeExportDidFinish?.(false, \"Could not export the file\")");
  EXPECT_EQ(platform_.files.file("/home/user/nota.md"), "old");
}

TEST_F(ExportPanelsTest, APlaceWithoutAPathIsAFailureAndNoCancel) {
  start();
  exportNote("nota.md").confirmPlaceWithoutPath();
  EXPECT_EQ(lastScript(),
            "window.quendoNativeExportDidFinish?.(false, \"Não foi possível exportar o arquivo\")");
  saveAs("nota.md").confirmPlaceWithoutPath();
  EXPECT_EQ(
      lastScript(),
      "window.quendoNativeSaveAsDidFinish?.(false, \"n1\", \"\", \"Não foi possível salvar o arquivo\")");
}

TEST_F(ExportPanelsTest, PanelsStartAmongTheDocumentsAndThenWhereTheLastOneWasConfirmed) {
  start();
  auto& first = exportNote("nota.md");
  EXPECT_EQ(first.configuration.startingFolder(), "/home/user/Documents");
  platform_.workspace.documents.reset();
  EXPECT_EQ(first.configuration.startingFolder(), "/home/user");
  auto& waiting = saveAs("nota.md");
  first.confirm("/home/user/v1.2");
  EXPECT_EQ(waiting.configuration.startingFolder(), "/home/user/v1.2") << "asked for when it is shown";
  waiting.cancel();
  auto& last = saveAs("nota.md");
  EXPECT_EQ(last.configuration.startingFolder(), "/home/user/v1.2");
  last.confirm("");
  EXPECT_EQ(exportNote("nota.md").configuration.startingFolder(), "/");
}

TEST_F(ExportPanelsTest, TextThatHasNoUtf8FormIsNotWrittenAndAnsweredFalse) {
  start();
  exportNote("nota.md", "markdown", "cut \xED\xA0\xBD").confirm("/home/user");
  EXPECT_EQ(lastScript(),
            "window.quendoNativeExportDidFinish?.(false, \"Não foi possível exportar o arquivo\")");
  saveAs("nota.md", "cut \xED\xA0\xBD").confirm("/home/user");
  EXPECT_EQ(
      lastScript(),
      "window.quendoNativeSaveAsDidFinish?.(false, \"n1\", \"\", \"Não foi possível salvar o arquivo\")");
  EXPECT_TRUE(platform_.files.filePaths().empty());
}

TEST_F(ExportPanelsTest, SaveAsShowsItsPanelWithARowOf23TypesAndTheCustomItem) {
  start();
  useLanguage("en");
  const auto& panel = saveAs("nota.md").configuration;
  EXPECT_EQ(panel.title, "Save Note As");
  EXPECT_EQ(panel.prompt, "Save");
  EXPECT_TRUE(panel.allowsOtherFileTypes);
  EXPECT_TRUE(panel.canCreateDirectories);
  EXPECT_EQ(panel.allowedContentType, "public.data");
  ASSERT_TRUE(panel.accessory);
  EXPECT_EQ(panel.accessory->label, "Extension:");
  const std::vector<std::string> items = {
      "Markdown (.md)", "Texto (.txt)", "CSV (.csv)",       "JSON (.json)",
      "HTML (.html)",   "CSS (.css)",   "JavaScript (.js)", "TypeScript (.ts)",
      "Python (.py)",   "SQL (.sql)",   "YAML (.yaml)",     "XML (.xml)",
      "Shell (.sh)",    "C (.c)",       "C++ (.cpp)",       "C# (.cs)",
      "Java (.java)",   "Go (.go)",     "Rust (.rs)",       "Swift (.swift)",
      "Kotlin (.kt)",   "PHP (.php)",   "Ruby (.rb)",       "Custom (type it in the name)"};
  EXPECT_EQ(panel.accessory->items, items);
}

TEST_F(ExportPanelsTest, SaveAsSelectsTheTypeOfTheNameWhateverItsCase) {
  start();
  EXPECT_EQ(saveAs("nota.PY").selected, 8U);
  EXPECT_EQ(saveAs("nota.md").selected, 0U);
  EXPECT_EQ(saveAs("nota").selected, kCustomExtension);
  EXPECT_EQ(saveAs("nota.xyz").selected, kCustomExtension);
}

TEST_F(ExportPanelsTest, ChoosingATypeChangesTheNameAtOnce) {
  start();
  auto& panel = saveAs("rascunho.md");
  panel.select(3);
  EXPECT_EQ(panel.name, "rascunho.json");
  panel.name = ".md";
  panel.select(3);
  EXPECT_EQ(panel.name, "nota.json");
  panel.name = "a.tar.gz";
  panel.select(14);
  EXPECT_EQ(panel.name, "a.tar.cpp");
  panel.name = "/x/v1.2/notes";
  panel.select(3);
  EXPECT_EQ(panel.name, "/x/v1.2/notes.json");
}

TEST_F(ExportPanelsTest, ChoosingTheCustomItemLeavesTheName) {
  start();
  auto& panel = saveAs("rascunho.md");
  panel.select(kCustomExtension);
  EXPECT_EQ(panel.name, "rascunho.md");
}

TEST_F(ExportPanelsTest, ANameWithoutExtensionGetsTheOneOfTheSelectedItem) {
  start();
  auto& panel = saveAs("nota.txt", "abc");
  panel.name = "lista";
  panel.confirm("/home/user");
  EXPECT_EQ(platform_.files.file("/home/user/lista.txt"), "abc");
  EXPECT_EQ(lastScript(),
            "window.quendoNativeSaveAsDidFinish?.(true, \"n1\", \"lista.txt\", \"Salvo como lista.txt\")");
}

TEST_F(ExportPanelsTest, UnderTheCustomItemTheNameIsWrittenAsTyped) {
  start();
  auto& panel = saveAs("nota");
  panel.name = "Makefile";
  panel.confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/Makefile"));
  auto& other = saveAs("nota");
  other.name = "nota.xyz";
  other.confirm("/home/user");
  EXPECT_TRUE(platform_.files.file("/home/user/nota.xyz"));
}

TEST_F(ExportPanelsTest, TheAnswersOfSaveAsArePortugueseInEveryLanguage) {
  start();
  useLanguage("en");
  saveAs("nota.md").confirm("/home/user");
  EXPECT_EQ(lastScript(),
            "window.quendoNativeSaveAsDidFinish?.(true, \"n1\", \"nota.md\", \"Salvo como nota.md\")");
  saveAs("nota.md", "x", "n\"2").cancel();
  EXPECT_EQ(lastScript(),
            "window.quendoNativeSaveAsDidFinish?.(false, \"n\\\"2\", \"\", \"Salvamento cancelado\")");
  saveAs("nota.md").confirm("/nowhere");
  EXPECT_EQ(
      lastScript(),
      "window.quendoNativeSaveAsDidFinish?.(false, \"n1\", \"\", \"Não foi possível salvar o arquivo\")");
}

TEST_F(ExportPanelsTest, RequestsThatOverlapAreAnsweredOnceEach) {
  start();
  auto& first = saveAs("one.md", "1", "a");
  auto& second = saveAs("two.md", "2", "b");
  first.confirm("/home/user");
  EXPECT_EQ(scripts().size(), 1U);
  // The accessory of the panel still open keeps working.
  second.select(1);
  EXPECT_EQ(second.name, "two.txt");
  second.cancel();
  EXPECT_EQ(scripts(),
            (std::vector<std::string>{
                "window.quendoNativeSaveAsDidFinish?.(true, \"a\", \"one.md\", \"Salvo como one.md\")",
                "window.quendoNativeSaveAsDidFinish?.(false, \"b\", \"\", \"Salvamento cancelado\")"}));
}

TEST_F(ExportPanelsTest, APageThatWasReloadedMeanwhileGetsTheOneAnswer) {
  start();
  auto& panel = exportNote("nota.md");
  page().navigation->webContentProcessDidTerminate();
  finishLoading();
  page().scripts.clear();
  panel.confirm("/home/user");
  EXPECT_EQ(scripts(),
            std::vector<std::string>{"window.quendoNativeExportDidFinish?.(true, \"Markdown exportado\")"});
}

}  // namespace
}  // namespace quendo
