// A page that requests panels endlessly: each request is answered once, and the queue stays small.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

constexpr std::size_t kMaximumPanels = 8;
constexpr const char* kExportFailed =
    R"(window.quendoNativeExportDidFinish?.(false, "Não foi possível exportar o arquivo"))";
constexpr const char* kExportCancelled =
    R"(window.quendoNativeExportDidFinish?.(false, "Exportação cancelada"))";

std::string saveAsFailed(const std::string& noteId) {
  return "window.quendoNativeSaveAsDidFinish?.(false, \"" + noteId +
         "\", \"\", \"Não foi possível salvar o arquivo\")";
}

class ExportFloodTest : public fake::HostTest {
 protected:
  ExportFloodTest() {
    platform_.files.setDirectory("/home/user");
    start();
  }
  void exportNote(const std::string& content, const std::string& filename = "nota.md") {
    post("quendoExport", Value::Dictionary{{"filename", filename}, {"content", content}});
  }
  void saveAs(const std::string& noteId, const std::string& content) {
    post("quendoSaveAs",
         Value::Dictionary{{"noteId", noteId}, {"filename", "nota.md"}, {"content", content}});
  }
  std::size_t panels() { return window().savePanels.size(); }
};

TEST_F(ExportFloodTest, AnswersOfMoreRequestsThanPanelsMayWaitEachOnce) {
  for (int i = 0; i < 500; ++i) {
    exportNote("text");
    saveAs(std::to_string(i), "text");
  }
  EXPECT_EQ(panels(), kMaximumPanels);
  std::vector<std::string> refused;
  for (int i = 4; i < 500; ++i) {
    refused.emplace_back(kExportFailed);
    refused.push_back(saveAsFailed(std::to_string(i)));
  }
  EXPECT_EQ(scripts(), refused);

  page().scripts.clear();
  for (const auto& panel : window().savePanels) panel->cancel();
  EXPECT_EQ(scripts().size(), kMaximumPanels);
}

TEST_F(ExportFloodTest, HoldsTwoOfTheLargestTextsAndNoMore) {
  const std::string largest(20'000'000, 'x');
  exportNote(largest);
  saveAs("second", largest);
  EXPECT_EQ(panels(), 2U);
  EXPECT_TRUE(scripts().empty());
  saveAs("third", largest);
  exportNote(largest);
  EXPECT_EQ(panels(), 2U);
  EXPECT_EQ(scripts(), (std::vector<std::string>{saveAsFailed("third"), kExportFailed}));
  exportNote("small");
  EXPECT_EQ(panels(), 3U) << "what is small still fits";
}

TEST_F(ExportFloodTest, CountsNamesToo) {
  // One user-perceived character with a million combining marks.
  std::string name = "a";
  for (int i = 0; i < 1'000'000; ++i) name += "\xCC\x81";
  exportNote("text", name);
  EXPECT_EQ(panels(), 1U);
  for (int i = 0; i < 3; ++i) exportNote(std::string(20'000'000, 'x'), name);
  EXPECT_EQ(panels(), 3U);
  EXPECT_EQ(scripts(), std::vector<std::string>{kExportFailed});
}

TEST_F(ExportFloodTest, HasRoomAgainWhenPanelsHaveEnded) {
  for (int round = 0; round < 3; ++round) {
    window().savePanels.clear();
    page().scripts.clear();
    for (std::size_t i = 0; i < kMaximumPanels; ++i) exportNote("text");
    ASSERT_EQ(panels(), kMaximumPanels) << round;
    exportNote("text");
    EXPECT_EQ(scripts(), std::vector<std::string>{kExportFailed});
    window().savePanels[0]->confirm("/home/user");
    exportNote("text");
    EXPECT_EQ(panels(), kMaximumPanels + 1);
    for (std::size_t i = 1; i <= kMaximumPanels; ++i) window().savePanels[i]->cancel();
    EXPECT_EQ(scripts().back(), kExportCancelled);
  }
}

}  // namespace
}  // namespace quendo
