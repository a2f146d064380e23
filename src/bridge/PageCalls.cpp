#include "bridge/PageCalls.h"

#include <utility>

#include "bridge/JavaScriptLiteral.h"

namespace quendo {
namespace {

std::string booleanText(bool value) {
  return value ? "true" : "false";
}

}  // namespace

void PageCalls::evaluate(const std::string& script) {
  if (!state_.webReady || state_.terminationPending) return;
  runDirect(script, lifetime_.guard([this](const EvaluationResult& result) {
    if (result.error) showToast(localization_.tr("A ação não pôde ser concluída"));
  }));
}

void PageCalls::setLanguage(std::string_view code) {
  evaluate("window.quendoSetLanguage?.(" + javascriptLiteral(code) + ")");
}

// The one callback whose arguments are separated by a comma alone; pages rely on neither form, but the
// text of the call is part of the contract.
void PageCalls::nativeSaveDidFinish(bool success, std::int64_t revision) {
  runDirect("window.quendoNativeSaveDidFinish?.(" + booleanText(success) + "," + std::to_string(revision) +
            ")");
}

void PageCalls::nativeExportDidFinish(bool success, std::string_view message) {
  runCallback("window.quendoNativeExportDidFinish?.(", {booleanText(success), javascriptLiteral(message)});
}

void PageCalls::nativeSaveAsDidFinish(bool success, std::string_view noteId, std::string_view fileName,
                                      std::string_view message) {
  runCallback("window.quendoNativeSaveAsDidFinish?.(",
              {booleanText(success), javascriptLiteral(noteId), javascriptLiteral(fileName),
               javascriptLiteral(message)});
}

void PageCalls::nativeClipboardDidFinish(bool success, std::string_view message, std::string_view requestId) {
  runCallback("window.quendoNativeClipboardDidFinish?.(",
              {booleanText(success), javascriptLiteral(message), javascriptLiteral(requestId)});
}

void PageCalls::nativeShareDidFinish(bool success, std::string_view attemptId) {
  runCallback("window.quendoNativeShareDidFinish?.(", {booleanText(success), javascriptLiteral(attemptId)});
}

void PageCalls::showToast(std::string_view message) {
  runCallback("showToast(", {javascriptLiteral(message)});
}

void PageCalls::prepareForTermination(EvaluationHandler completion) {
  if (!surface_.webView) return;
  surface_.webView->afterQueuedKeys(lifetime_.guard([this, completion = std::move(completion)] {
    // A quit that was cancelled meanwhile must not put the page into its closing state any more.
    if (state_.terminationPending) runDirect("window.quendoPrepareForTermination?.()", completion);
  }));
}

void PageCalls::terminationDidCancel() {
  runDirect("window.quendoTerminationDidCancel?.()");
}

void PageCalls::openNativeFiles(Value::Array files, EvaluationHandler completion) {
  if (!surface_.webView) return;
  surface_.webView->callAsyncJavaScript("return window.quendoOpenNativeFiles?.(files) ?? 0;",
                                        {{"files", Value(std::move(files))}}, std::move(completion));
}

void PageCalls::copyCurrentNoteForWhatsApp(EvaluationHandler completion) {
  if (!surface_.webView) return;
  surface_.webView->callAsyncJavaScript("return await window.quendoCopyCurrentNoteForWhatsApp?.() ?? false;",
                                        {}, std::move(completion));
}

void PageCalls::runDirect(const std::string& script, EvaluationHandler completion) {
  if (surface_.webView) surface_.webView->evaluateJavaScript(script, std::move(completion));
}

void PageCalls::runCallback(std::string_view prefix, std::initializer_list<std::string> arguments) {
  std::string script(prefix);
  std::string_view separator;
  for (const std::string& argument : arguments) {
    script.append(separator).append(argument);
    separator = ", ";
  }
  runDirect(script + ")");
}

}  // namespace quendo
