// Feeds arbitrary messages to the dispatcher: whatever the page posts, no handler gets anything beyond its
// limits, and no message is answered twice.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "bridge/MessageDispatcher.h"
#include "fake/FakePlatform.h"
#include "fuzz/Check.h"
#include "text/Utf8.h"

namespace {

using namespace quendo;
using fuzz::check;

struct CheckingExporter final : ExportHandler {
  void presentExportPanel(std::string /*filename*/, std::string content, std::string /*format*/) override {
    check(content.size() <= 20'000'000, "an export is not too large");
    ++calls;
  }
  void presentSaveAsPanel(std::string noteId, std::string /*filename*/, std::string content) override {
    check(noteId.size() <= 200 && content.size() <= 20'000'000, "a save is not too large");
    ++calls;
  }
  int calls = 0;
};

struct CheckingSharing final : ShareHandler {
  bool shareIsUnderWay() const override { return busy; }
  void presentSharePicker(std::string attemptId, std::string title, std::string filename, std::string content,
                          std::string /*urlString*/) override {
    check(!busy, "one share at a time");
    check(!attemptId.empty() && attemptId.size() <= 200, "an attempt can be answered");
    check(title.size() <= 2'000 && filename.size() <= 1'000 && content.size() <= 2'000'000,
          "a share is not too large");
    ++calls;
  }
  bool busy = false;
  int calls = 0;
};

struct CountingLanguage final : LanguageHandler {
  void changeLanguageFromPage(const Value& /*body*/) override { ++calls; }
  int calls = 0;
};

/// Arbitrary short texts, and long ones near the limits, which a fuzzer would not generate itself.
std::string anyText(FuzzedDataProvider& bytes) {
  static constexpr std::size_t limits[] = {200, 500, 1'000, 2'000, 200, 500, 1'000, 2'000, 2'000'000};
  if (bytes.ConsumeIntegralInRange(0, 7) != 0) return bytes.ConsumeRandomLengthString(64);
  const std::size_t length =
      bytes.PickValueInArray(limits) + bytes.ConsumeIntegralInRange<std::size_t>(0, 2) - 1;
  return std::string(length, bytes.ConsumeBool() ? 'a' : '\xC3');
}

Value anyValue(FuzzedDataProvider& bytes, int depth) {
  static constexpr const char* names[] = {
      "serialized",     "revision",  "filename",  "content", "format", "noteId",  "text",
      "successMessage", "requestId", "attemptId", "title",   "url",    "language"};
  switch (bytes.ConsumeIntegralInRange(0, depth > 0 ? 7 : 4)) {
    case 0:
      return Value();
    case 1:
      return Value(bytes.ConsumeBool());
    case 2:
      return Value(bytes.ConsumeFloatingPoint<double>());
    case 3:
      return Value(Value::Opaque{});
    case 5: {
      Value::Array items;
      for (int count = bytes.ConsumeIntegralInRange(0, 4); count > 0; --count) {
        items.push_back(anyValue(bytes, depth - 1));
      }
      return Value(std::move(items));
    }
    case 6:
    case 7: {
      Value::Dictionary fields;
      for (int count = bytes.ConsumeIntegralInRange(0, 7); count > 0; --count) {
        std::string name =
            bytes.ConsumeBool() ? bytes.PickValueInArray(names) : bytes.ConsumeRandomLengthString(8);
        fields[std::move(name)] = anyValue(bytes, depth - 1);
      }
      return Value(std::move(fields));
    }
    default:
      return Value(anyText(bytes));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr const char* names[] = {"quendoState",     "quendoExport", "quendoSaveAs",
                                          "quendoClipboard", "quendoShare",  "quendoLanguage"};
  FuzzedDataProvider bytes(data, size);
  fake::FakePlatform platform;
  const Localization localization(platform.defaults, platform.locale);
  const HostState state;
  fake::FakeWebView page(platform.log);
  const Surface surface{&page, nullptr};
  PageCalls calls(state, surface, localization);
  StateStore store(platform.files, platform.storeQueue, platform.mainQueue, false);
  CheckingExporter exporter;
  CheckingSharing sharing;
  CountingLanguage language;
  MessageDispatcher dispatcher(store, platform.pasteboard, calls,
                               MessageHandlers{exporter, sharing, language});

  for (int message = 0; message < 4 && bytes.remaining_bytes() > 0; ++message) {
    const bool isMainFrame = bytes.ConsumeIntegralInRange(0, 7) != 0;
    const std::string name = bytes.ConsumeIntegralInRange(0, 7) != 0 ? bytes.PickValueInArray(names)
                                                                     : bytes.ConsumeRandomLengthString(20);
    sharing.busy = bytes.ConsumeBool();
    const std::size_t scriptsBefore = page.scripts.size();
    const int callsBefore = exporter.calls + sharing.calls + language.calls;
    dispatcher.handleScriptMessage(ScriptMessage{name, anyValue(bytes, 3), isMainFrame});
    platform.settle();
    const std::size_t answers = page.scripts.size() - scriptsBefore;
    const int handedOver = exporter.calls + sharing.calls + language.calls - callsBefore;
    check(answers <= 1 && handedOver <= 1, "one message, one answer");
    check(isMainFrame || (answers == 0 && handedOver == 0), "only the main frame is served");
    check(page.asyncCalls.empty(), "no message makes a call that waits");
    for (const std::string& script : page.scripts) check(isValidUtf8(script), "scripts are UTF-8");
    const auto& copied = platform.pasteboard.contents;
    check(!copied || (copied->size() <= 2'000'000 && isValidUtf8(*copied)),
          "what is copied is text, not too long");
  }
  return 0;
}
