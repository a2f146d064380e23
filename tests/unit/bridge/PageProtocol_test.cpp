#include "bridge/PageProtocol.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "menu/MenuTable.h"

// docs/page-protocol.md contains the host's tables, each between two markers. On a mismatch the test prints
// the correct table; QUENDO_UPDATE_DOCS=1 in the environment writes it.
namespace quendo {
namespace {

const std::string kDocument = std::string(QUENDO_SOURCE_DIR) + "/docs/page-protocol.md";

std::string code(std::string_view text) {
  return text.empty() ? "" : "`" + std::string(text) + "`";
}

std::string cell(std::string_view text) {
  return " " + std::string(text) + (text.empty() ? "|" : " |");
}

std::string row(std::initializer_list<std::string> cells) {
  std::string line = "|";
  for (const std::string& one : cells) line += cell(one);
  return line + "\n";
}

std::string head(std::initializer_list<std::string> cells) {
  std::string rule = "|";
  for (std::size_t i = 0; i < cells.size(); ++i) rule += "---|";
  return row(cells) + rule + "\n";
}

std::string grouped(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, ",");
  return digits;
}

std::string messagesTable() {
  std::string table = head({"Message", "A body that is a string", "Answered by"});
  for (const protocol::Message& message : protocol::kMessages)
    table += row({code(message.name), std::string(message.stringForm), code(message.answer)});
  return table;
}

std::string missingText(const protocol::Field& field) {
  const std::string text(field.fallback);
  return field.type == protocol::FieldType::string ? "\"" + text + "\"" : text;
}

std::string fieldsTable() {
  std::string table = head({"Message", "Field", "Type", "Required", "At most, in bytes", "When missing"});
  for (const protocol::Message& message : protocol::kMessages) {
    for (const protocol::Field& field : message.fields) {
      table += row({code(message.name), code(field.name),
                    field.type == protocol::FieldType::string ? "string" : "number",
                    field.required ? "yes" : "no", field.maximumBytes == 0 ? "" : grouped(field.maximumBytes),
                    field.required ? "" : missingText(field)});
    }
  }
  return table;
}

std::string functionsTable() {
  std::string table = head({"Called as", "Arguments"});
  for (const protocol::Function& function : protocol::kFunctions) {
    std::string call = std::string(function.call) + "(";
    std::string arguments;
    for (std::size_t i = 0; i < function.arguments.size(); ++i) {
      const std::string_view argument = function.arguments[i];
      call += (i > 0 ? std::string(function.separator) : "") +
              std::string(argument.substr(0, argument.find(':')));
      arguments += (i > 0 ? ", " : "") + std::string(argument);
    }
    table += row({code(call + ")"), arguments});
  }
  return table;
}

std::string asyncCallsTable() {
  std::string table = head({"Function body", "Argument", "What its value means"});
  for (const protocol::AsyncCall& call : protocol::kAsyncCalls)
    table += row({code(call.body), std::string(call.argument), std::string(call.result)});
  return table;
}

std::string globalsTable() {
  std::string table = head({"Global", "Value"});
  for (const protocol::Global& global : protocol::kGlobals)
    table += row({code("window." + std::string(global.name)), std::string(global.value)});
  return table;
}

std::string keyText(const MenuRow& item) {
  if (item.key.empty()) return "";
  std::string text = "Command+";
  if (item.modifiers & kModifierOption) text += "Option+";
  if (item.modifiers & kModifierShift) text += "Shift+";
  return text + std::string(item.key);
}

std::string menuTable() {
  std::string table = head({"Action", "Title", "Key", "Script"});
  const auto append = [&table](std::span<const MenuRow> rows) {
    for (const MenuRow& item : rows) {
      if (item.action.empty()) continue;
      table += row({code(item.action), std::string(item.title), code(keyText(item)), code(item.script)});
    }
  };
  for (const MenuSection& section : menuSections()) append(section.rows);
  append(menuCommandsWithoutItem());
  return table;
}

std::string readDocument() {
  std::ostringstream text;
  text << std::ifstream(kDocument, std::ios::binary).rdbuf();
  return text.str();
}

void expectTable(const std::string& name, const std::string& table) {
  const std::string begin = "<!-- " + name + " -->\n";
  const std::string end = "<!-- end of " + name + " -->";
  std::string document = readDocument();
  const std::size_t from = document.find(begin);
  const std::size_t to = document.find(end);
  ASSERT_NE(from, std::string::npos) << kDocument << " has no table " << name;
  ASSERT_NE(to, std::string::npos) << kDocument << " has no end of " << name;
  const std::size_t start = from + begin.size();
  if (const char* update = std::getenv("QUENDO_UPDATE_DOCS"); update && std::string_view(update) == "1") {
    document.replace(start, to - start, table);
    std::ofstream(kDocument, std::ios::binary) << document;
    return;
  }
  EXPECT_EQ(document.substr(start, to - start), table);
}

TEST(PageProtocol, IsDocumentedAsTheHostHasIt) {
  expectTable("messages", messagesTable());
  expectTable("fields", fieldsTable());
  expectTable("functions", functionsTable());
  expectTable("async calls", asyncCallsTable());
  expectTable("globals", globalsTable());
  expectTable("menu", menuTable());
}

TEST(PageProtocol, NamesTheSixMessagesInTheirOrder) {
  std::vector<std::string_view> names;
  for (const protocol::Message& message : protocol::kMessages) names.push_back(message.name);
  EXPECT_EQ(names, (std::vector<std::string_view>{"quendoState", "quendoExport", "quendoSaveAs",
                                                  "quendoClipboard", "quendoShare", "quendoLanguage"}));
}

}  // namespace
}  // namespace quendo
