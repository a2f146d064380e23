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

/// Everything that the host runs in the page, with its exact spelling. Main thread.
///
/// `evaluate` is for commands and is gated: it does nothing while the page cannot be driven. Every other
/// call is direct: it needs only a web view, and without one it is dropped. No call reads the result of
/// a script except those that take a handler.
class PageCalls {
 public:
  PageCalls(const HostState& state, const Surface& surface, const Localization& localization)
      : state_(state), surface_(surface), localization_(localization) {}

  /// Runs a command's script if the page is ready and no quit is pending. An error in it shows a toast.
  void evaluate(const std::string& script);
  void setLanguage(std::string_view code);

  void nativeSaveDidFinish(bool success, std::int64_t revision);
  void nativeExportDidFinish(bool success, std::string_view message);
  void nativeSaveAsDidFinish(bool success, std::string_view noteId, std::string_view fileName,
                             std::string_view message);
  void nativeClipboardDidFinish(bool success, std::string_view message, std::string_view requestId);
  void nativeShareDidFinish(bool success, std::string_view attemptId);
  void showToast(std::string_view message);

  /// Calls `then` once the keys pressed before have reached the page; see `WebView`. Never without a web
  /// view.
  void afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then);
  /// Asks for the final state. `completion` is called once; never without a web view.
  void prepareForTermination(EvaluationHandler completion);
  void terminationDidCancel();
  /// The two calls that await the page's answer. `completion` is called once; without a web view never.
  void openNativeFiles(Value::Array files, EvaluationHandler completion);
  void copyCurrentNoteForWhatsApp(EvaluationHandler completion);

 private:
  void runDirect(const std::string& script, EvaluationHandler completion = {});

  const HostState& state_;
  const Surface& surface_;
  const Localization& localization_;
  Lifetime lifetime_;
};

}  // namespace quendo
