#include "platform/gtk/web/WebKitView.h"

#include <glibmm/main.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/gtk/web/ContentFilter.h"
#include "platform/gtk/web/ScaleChange.h"
#include "platform/gtk/web/WebKitSession.h"
#include "platform/gtk/web/WebKitValues.h"

namespace quendo::gtk {
namespace {

GObjectPtr<WebKitWebView> makeView(const WebViewConfiguration& configuration, WebKitUserContent& content,
                                   std::optional<RenderingPath> path) {
  const auto settings = adoptReference(webkit_settings_new());
  webkit_settings_set_javascript_can_open_windows_automatically(
      settings.get(), configuration.javaScriptCanOpenWindowsAutomatically);
  if (path) {
    webkit_settings_set_hardware_acceleration_policy(
        settings.get(), *path == RenderingPath::card ? WEBKIT_HARDWARE_ACCELERATION_POLICY_ALWAYS
                                                     : WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  }
  const auto session = makeNetworkSession(configuration.websiteDataStore);
  auto* view =
      WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "user-content-manager", content.manager(),
                                   "network-session", session.get(), "settings", settings.get(), nullptr));
  g_object_ref_sink(view);
  return adoptReference(view);
}

// A web view starts the page's process with the first thing that it is asked to do. Asked for this
// nothing, it starts it now, and the process comes up while the window is being built.
void startPageProcess(WebKitWebView* view) {
  webkit_web_view_evaluate_javascript(view, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);
}

void loadDictionaries(WebKitWebContext* context, const std::vector<std::vector<std::string>>& choices) {
  for (const std::vector<std::string>& languages : choices) {
    std::vector<const char*> names;
    names.reserve(languages.size() + 1);
    for (const std::string& name : languages) names.push_back(name.c_str());
    names.push_back(nullptr);
    webkit_web_context_set_spell_checking_languages(context, names.data());
    // Those for which there is a dictionary.
    if (webkit_web_context_get_spell_checking_languages(context)) break;
  }
  webkit_web_context_set_spell_checking_enabled(context, !choices.empty());
}

EvaluationResult resultFrom(JSCValue* value, GError* error) {
  const auto ownedValue = adoptReference(value);
  const GErrorPtr ownedError(error);
  if (ownedError) return EvaluationResult{{}, std::string(ownedError->message)};
  return EvaluationResult{ownedValue ? valueFromJavaScript(ownedValue.get()) : Value(), std::nullopt};
}

}  // namespace

WebKitView::WebKitView(const WebViewConfiguration& configuration, Rendering& rendering)
    : content_(std::static_pointer_cast<WebKitUserContent>(configuration.userContentController)),
      view_(makeView(configuration, *content_, rendering.path())),
      cardWatch_(view_.get(), rendering),
      queuedKeys_(view_.get()),
      accessibility_(view_.get()) {
  gtk_widget_set_hexpand(widget(), TRUE);
  gtk_widget_set_vexpand(widget(), TRUE);
  connectSignals();
  redrawOnScaleChange(view_.get());
  startPageProcess(view_.get());
}

WebKitView::~WebKitView() {
  content_->themeColor().setHandler({});
  g_signal_handlers_disconnect_by_data(view_.get(), this);
}

void WebKitView::setInspectable(bool inspectable) {
  webkit_settings_set_enable_developer_extras(webkit_web_view_get_settings(view_.get()), inspectable);
}

void WebKitView::loadFile(const std::string& path, const std::string& readAccessPath) {
  const GCharPtr uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  if (filteredRoot_ == readAccessPath) {
    load(uri.get());
    return;
  }
  installFileAccessFilter(
      content_->manager(), readAccessPath,
      [this, alive = std::weak_ptr<int>(alive_), readAccessPath,
       target = std::string(uri.get())](bool installed) {
        if (!alive.lock()) return;
        if (!installed) {
          navigation_->didFailProvisionalNavigation("content filter: no writable directory");
          return;
        }
        filteredRoot_ = readAccessPath;
        load(target);
      });
}

void WebKitView::load(const std::string& uri) {
  webkit_web_view_load_uri(view_.get(), uri.c_str());
}

void WebKitView::evaluateJavaScript(const std::string& script, EvaluationHandler completion) {
  auto* call = completion ? new Call(registerCall(std::move(completion))) : nullptr;
  webkit_web_view_evaluate_javascript(view_.get(), script.data(), static_cast<gssize>(script.size()), nullptr,
                                      nullptr, nullptr, call ? finishEvaluation : nullptr, call);
}

Rect WebKitView::bounds() const {
  return Rect{0, 0, gtk_widget_get_width(widget()), gtk_widget_get_height(widget())};
}

// The web view takes no arrays and no booleans as arguments, so all of them travel as one JSON text.
void WebKitView::callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                                     EvaluationHandler completion) {
  std::string script;
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
  if (!arguments.empty()) {
    std::vector<const std::string*> texts;
    const std::string json = jsonFromDictionary(arguments, texts);
    g_variant_builder_add(&builder, "{sv}", "quendoArguments", g_variant_new_string(json.c_str()));
    std::string names;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const std::string name = "quendoText" + std::to_string(i);
      g_variant_builder_add(&builder, "{sv}", name.c_str(), g_variant_new_string(texts[i]->c_str()));
      names.append(name).append(",");
    }
    for (const auto& [name, value] : arguments) script.append(script.empty() ? "const {" : ", ").append(name);
    script +=
        "} = JSON.parse(quendoArguments, ((texts) => (key, value) => "
        "value?.quendoText === undefined ? value : texts[value.quendoText])([" +
        names + "])); ";
  }
  script += body;
  webkit_web_view_call_async_javascript_function(
      view_.get(), script.data(), static_cast<gssize>(script.size()), g_variant_builder_end(&builder),
      nullptr, nullptr, nullptr, finishAsyncCall, new Call(registerCall(std::move(completion))));
}

WebKitView::Call WebKitView::registerCall(EvaluationHandler completion) {
  return Call{this, alive_, unanswered_.add(std::move(completion))};
}

void WebKitView::finish(const Call& call, EvaluationResult result) {
  if (call.alive.lock()) call.view->unanswered_.answer(call.number, std::move(result));
}

void WebKitView::finishEvaluation(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Call> call(static_cast<Call*>(data));
  GError* error = nullptr;
  JSCValue* value = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, &error);
  finish(*call, resultFrom(value, error));
}

void WebKitView::finishAsyncCall(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Call> call(static_cast<Call*>(data));
  GError* error = nullptr;
  JSCValue* value =
      webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(source), result, &error);
  finish(*call, resultFrom(value, error));
}

void WebKitView::checkSpelling(const std::vector<std::vector<std::string>>& choices) {
  // The main thread loads the dictionaries; whatever is to be drawn goes first.
  const std::shared_ptr<WebKitWebContext> context = addReference(webkit_web_view_get_context(view_.get()));
  Glib::signal_idle().connect_once([choices, context] { loadDictionaries(context.get(), choices); },
                                   Glib::PRIORITY_LOW);
}

void WebKitView::executeEditingCommand(const char* command) {
  webkit_web_view_execute_editing_command(view_.get(), command);
}

}  // namespace quendo::gtk
