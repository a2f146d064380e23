#include "bridge/PageCalls.h"

#include <initializer_list>
#include <utility>

#include "bridge/JavaScriptLiteral.h"
#include "bridge/PageProtocol.h"

namespace quendo {

using namespace protocol;

namespace {

/// For how long an unresponsive page may hold back keys, which are those of the menu as well.
constexpr std::chrono::milliseconds kHeldKeysLimit{3000};

std::string booleanText(bool value) {
  return value ? "true" : "false";
}

/// A call of a page function with encoded arguments.
std::string scriptOf(const protocol::Function& function, std::initializer_list<std::string> arguments) {
  std::string script = std::string(function.call) + "(";
  std::string_view separator;
  for (const std::string& argument : arguments) {
    script.append(separator).append(argument);
    separator = function.separator;
  }
  return script + ")";
}

}  // namespace

void PageCalls::evaluate(const std::string& script) {
  if (!state_.webReady || state_.terminationPending) return;
  inKeyOrder([this, script] {
    runDirect(script, lifetime_.guard([this](const EvaluationResult& result) {
      if (result.error) showToast(localization_.tr("A ação não pôde ser concluída"));
    }));
  });
}

void PageCalls::setLanguage(std::string_view code) {
  evaluate(scriptOf(kSetLanguage, {javascriptLiteral(code)}));
}

void PageCalls::nativeSaveDidFinish(bool success, std::int64_t revision) {
  runDirect(scriptOf(kSaveDidFinish, {booleanText(success), std::to_string(revision)}));
}

void PageCalls::nativeExportDidFinish(bool success, std::string_view message) {
  runDirect(scriptOf(kExportDidFinish, {booleanText(success), javascriptLiteral(message)}));
}

void PageCalls::nativeSaveAsDidFinish(bool success, std::string_view noteId, std::string_view fileName,
                                      std::string_view message) {
  runDirect(scriptOf(kSaveAsDidFinish, {booleanText(success), javascriptLiteral(noteId),
                                        javascriptLiteral(fileName), javascriptLiteral(message)}));
}

void PageCalls::nativeClipboardDidFinish(bool success, std::string_view message, std::string_view requestId) {
  runDirect(scriptOf(kClipboardDidFinish,
                     {booleanText(success), javascriptLiteral(message), javascriptLiteral(requestId)}));
}

void PageCalls::nativeShareDidFinish(bool success, std::string_view attemptId) {
  runDirect(scriptOf(kShareDidFinish, {booleanText(success), javascriptLiteral(attemptId)}));
}

void PageCalls::showToast(std::string_view message) {
  runDirect(scriptOf(kShowToast, {javascriptLiteral(message)}));
}

void PageCalls::afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) {
  if (surface_.webView) surface_.webView->afterQueuedKeys(limit, std::move(then));
}

void PageCalls::prepareForTermination(EvaluationHandler completion) {
  runDirect(scriptOf(kPrepareForTermination, {}), std::move(completion));
}

void PageCalls::terminationDidCancel() {
  runDirect(scriptOf(kTerminationDidCancel, {}));
}

void PageCalls::openNativeFiles(Value::Array files, EvaluationHandler completion) {
  if (!surface_.webView) return;
  surface_.webView->callAsyncJavaScript(std::string(kOpenNativeFiles.body),
                                        {{"files", Value(std::move(files))}}, std::move(completion));
}

void PageCalls::copyCurrentNoteForWhatsApp(EvaluationHandler completion) {
  inKeyOrder([this, completion = std::move(completion)]() mutable {
    surface_.webView->callAsyncJavaScript(std::string(kCopyForWhatsApp.body), {}, std::move(completion));
  });
}

void PageCalls::inKeyOrder(std::function<void()> call) {
  if (surface_.webView) surface_.webView->inKeyOrder(kHeldKeysLimit, lifetime_.guard(std::move(call)));
}

void PageCalls::runDirect(const std::string& script, EvaluationHandler completion) {
  if (surface_.webView) surface_.webView->evaluateJavaScript(script, std::move(completion));
}

}  // namespace quendo
