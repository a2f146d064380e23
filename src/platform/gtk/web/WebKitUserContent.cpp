#include "platform/gtk/web/WebKitUserContent.h"

#include <utility>

#include "platform/gtk/web/WebKitValues.h"

namespace quendo::gtk {
namespace {

// Receives messages from the page's side of the relay and posts them to the real handler. If a body cannot be
// posted, the event is cancelled, which makes the page's side throw the usual DataCloneError. Long strings
// arrive before the body they belong to. Also counts the keys that have reached the page.
constexpr const char* kRelayInHostWorld = R"((() => {
  window.quendoKeyEvents = 0;
  const count = event => { if (event.isTrusted) window.quendoKeyEvents++; };
  window.addEventListener('keydown', count, true);
  window.addEventListener('keyup', count, true);
  const handlers = window.webkit.messageHandlers;
  let texts = [];
  window.addEventListener('quendo-host-text', event => { texts.push(event.detail); });
  window.addEventListener('quendo-host-message', event => {
    try {
      const { name, body, textNames } = event.detail;
      textNames.forEach((textName, index) => Object.defineProperty(body, textName, {
        value: texts[index], configurable: true, enumerable: true, writable: true
      }));
      handlers[name].postMessage(body);
    } catch {
      event.preventDefault();
    } finally {
      texts = [];
    }
  });
})();)";

// Provides `window.webkit.messageHandlers.NAME.postMessage` to the page. Captures the page globals it needs
// before any page script can change them. An event detail that is an object is cloned, with all its strings,
// on its way into another world, but a string is not. Long strings therefore get their own events: without
// that, a 60 MB document took a third longer.
constexpr const char* kRelayInPageWorld = R"((() => {
  const send = window.dispatchEvent.bind(window);
  const Message = CustomEvent;
  const Refusal = DOMException;
  const prototypeOf = Object.getPrototypeOf;
  const plain = Object.prototype;
  const LONG = 10000;
  const isPlain = body => typeof body === 'object' && body !== null && prototypeOf(body) === plain;
  const takeTexts = body => {
    const textNames = [];
    for (const member in body) {
      const text = body[member];
      if (typeof text !== 'string' || text.length < LONG) continue;
      send(new Message('quendo-host-text', { detail: text }));
      textNames[textNames.length] = member;
      delete body[member];
    }
    return textNames;
  };
  const handler = name => Object.freeze({
    postMessage(given) {
      const body = isPlain(given) ? { __proto__: null, ...given } : given;
      const textNames = isPlain(given) ? takeTexts(body) : [];
      if (!send(new Message('quendo-host-message', { detail: { name, body, textNames }, cancelable: true }))) {
        throw new Refusal('The object can not be cloned.', 'DataCloneError');
      }
    }
  });
  const messageHandlers = {};
  for (const name of [NAMES]) messageHandlers[name] = handler(name);
  Object.defineProperty(window, 'webkit', {
    value: Object.freeze({ messageHandlers: Object.freeze(messageHandlers) }),
    enumerable: true
  });
})();)";

struct UserScriptUnref {
  void operator()(WebKitUserScript* script) const { webkit_user_script_unref(script); }
};

void addScript(WebKitUserContentManager* manager, const std::string& source, const char* world) {
  const std::unique_ptr<WebKitUserScript, UserScriptUnref> script(
      world ? webkit_user_script_new_for_world(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, world, nullptr,
                                               nullptr)
            : webkit_user_script_new(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                     WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr));
  webkit_user_content_manager_add_script(manager, script.get());
}

}  // namespace

WebKitUserContent::WebKitUserContent() : manager_(webkit_user_content_manager_new()) {}

WebKitUserContent::~WebKitUserContent() {
  for (const auto& registration : registrations_) {
    g_signal_handlers_disconnect_by_data(manager_.get(), registration.get());
    webkit_user_content_manager_unregister_script_message_handler(manager_.get(), registration->name.c_str(),
                                                                  kHostWorld);
  }
}

void WebKitUserContent::addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                                                const std::string& name) {
  auto registration = std::make_unique<Registration>(Registration{name, std::move(handler)});
  g_signal_connect(manager_.get(), ("script-message-received::" + name).c_str(), G_CALLBACK(onMessage),
                   registration.get());
  webkit_user_content_manager_register_script_message_handler(manager_.get(), name.c_str(), kHostWorld);
  registrations_.push_back(std::move(registration));
}

void WebKitUserContent::removeAllUserScripts() {
  webkit_user_content_manager_remove_all_scripts(manager_.get());
  installRelay();
}

void WebKitUserContent::addUserScript(const std::string& source) {
  addScript(manager_.get(), source, nullptr);
}

void WebKitUserContent::installRelay() {
  std::string names;
  for (const auto& registration : registrations_) {
    if (!names.empty()) names += ", ";
    names += '\'' + registration->name + '\'';
  }
  static const std::string kPlaceholder = "NAMES";
  std::string pageSide = kRelayInPageWorld;
  pageSide.replace(pageSide.find(kPlaceholder), kPlaceholder.size(), names);
  addScript(manager_.get(), kRelayInHostWorld, kHostWorld);
  addScript(manager_.get(), pageSide, nullptr);
}

void WebKitUserContent::onMessage(WebKitUserContentManager* /*manager*/, JSCValue* body,
                                  gpointer registration) {
  const auto* self = static_cast<Registration*>(registration);
  const auto handler = self->handler;
  handler->didReceiveScriptMessage(ScriptMessage{self->name, valueFromJavaScript(body), true});
}

}  // namespace quendo::gtk
