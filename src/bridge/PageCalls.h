#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "bridge/HostState.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/Lifetime.h"
#include "platform/WebView.h"

namespace quendo {

/// Every script the host runs in the page, spelled exactly. Main thread.
///
/// `evaluate` is for commands and is gated: it is a no-op while the page cannot accept calls. Commands keep
/// their place among the keys, so that what was typed before them goes where it was typed. All other calls
/// are direct: they need only a web view and are dropped without one. Script results are ignored except by
/// calls that take a handler.
class PageCalls {
 public:
  PageCalls(const HostState& state, const Surface& surface, const Localization& localization)
      : state_(state), surface_(surface), localization_(localization) {}

  /// Runs a command's script if the page is ready and no quit is pending. If it throws, a toast is shown.
  void evaluate(const std::string& script);
  void setLanguage(std::string_view code);

  void nativeSaveDidFinish(bool success, std::int64_t revision);
  void nativeExportDidFinish(bool success, std::string_view message);
  void nativeSaveAsDidFinish(bool success, std::string_view noteId, std::string_view fileName,
                             std::string_view message);
  void nativeClipboardDidFinish(bool success, std::string_view message, std::string_view requestId);
  void nativeShareDidFinish(bool success, std::string_view attemptId);
  void showToast(std::string_view message);

  /// Calls `then` once all keys pressed so far have reached the page; see `WebView`. Never without a web
  /// view.
  void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then);
  /// Requests the final state. `completion` is called once, or never without a web view.
  void prepareForTermination(EvaluationHandler completion);
  void terminationDidCancel();
  /// The two calls that await a reply from the page. `completion` is called once, or never without a web
  /// view.
  void openNativeFiles(Value::Array files, EvaluationHandler completion);
  void copyCurrentNoteForWhatsApp(EvaluationHandler completion);

 private:
  void inKeyOrder(std::function<void()> call);
  void runDirect(const std::string& script, EvaluationHandler completion = {});

  const HostState& state_;
  const Surface& surface_;
  const Localization& localization_;
  Lifetime lifetime_;
};

}  // namespace quendo
