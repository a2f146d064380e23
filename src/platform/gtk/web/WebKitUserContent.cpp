#include "platform/gtk/web/WebKitUserContent.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "bridge/MessageFields.h"
#include "platform/gtk/web/WebKitValues.h"

namespace quendo::gtk {
namespace {

// Receives messages from the page's side of the relay and posts them to the real handler. If a body cannot be
// posted, the event is cancelled, which makes the page's side throw the usual DataCloneError. Long strings
// arrive before the body they belong to, and go to the host ahead of it, part by part: a message is copied
// several times on its way, which for a whole document would be most of the program's memory. The page itself
// may hand over the parts of one text, with keys and frames in between. Also counts the keys that have
// reached the page.
constexpr const char* kRelayInHostWorld = R"((() => {
  window.quendoKeyEvents = 0;
  const count = event => { if (event.isTrusted) window.quendoKeyEvents++; };
  window.addEventListener('keydown', count, true);
  window.addEventListener('keyup', count, true);
  const handlers = window.webkit.messageHandlers;
  const PART = 1000000;
  const isLead = unit => (unit & 0xfc00) === 0xd800;
  window.addEventListener('quendo-host-text', ({ detail: text }) => {
    if (typeof text !== 'string') return;
    for (let from = 0, to; from < text.length; from = to) {
      to = Math.min(from + PART, text.length);
      if (isLead(text.charCodeAt(to - 1))) to++;
      handlers.quendoTextPart.postMessage({ length: from === 0 ? text.length : 0, part: text.slice(from, to) });
    }
  });
  const takeParts = (event, ahead) => {
    try {
      if (typeof event.detail === 'string') handlers.quendoTextPart.postMessage({ ahead, part: event.detail });
    } catch {
      event.preventDefault();
    }
  };
  window.addEventListener('quendo-host-first-part', event => takeParts(event, 'first'));
  window.addEventListener('quendo-host-part', event => takeParts(event, 'more'));
  window.addEventListener('quendo-host-message', event => {
    try {
      const { name, body, textNames, partsName } = event.detail;
      handlers[name].postMessage({ body, textNames, partsName });
    } catch {
      event.preventDefault();
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
  const relay = (event, detail) => {
    if (!send(new Message(event, { detail, cancelable: true }))) {
      throw new Refusal('The object can not be cloned.', 'DataCloneError');
    }
  };
  const handler = name => Object.freeze({
    postMessage(given) {
      const body = isPlain(given) ? { __proto__: null, ...given } : given;
      const textNames = isPlain(given) ? takeTexts(body) : [];
      relay('quendo-host-message', { name, body, textNames });
    },
    postPart(part, isFirst) {
      relay(isFirst ? 'quendo-host-first-part' : 'quendo-host-part', `${part}`);
    },
    postMessageWithParts(body, member) {
      relay('quendo-host-message', { name, body, textNames: [], partsName: `${member}` });
    }
  });
  const messageHandlers = {};
  for (const name of [NAMES]) messageHandlers[name] = handler(name);
  Object.defineProperty(window, 'webkit', {
    value: Object.freeze({ messageHandlers: Object.freeze(messageHandlers) }),
    enumerable: true
  });
})();)";

constexpr std::size_t kLongestTextAhead = 150'000'000;

// Only in the host's world, for the relay.
constexpr const char* kTextPart = "quendoTextPart";

// The engine's Uint8Array.from collects all characters of a string in a list, with eight bytes for each,
// before it makes the array. The page's saved state comes through it, and would take half a gigabyte and a
// second.
constexpr const char* kLeanBytesOfString = R"((() => {
  const from = Uint8Array.from;
  Uint8Array.from = function (source, map) {
    if (typeof source !== 'string' || !map) return from.apply(this, arguments);
    const bytes = new Uint8Array(source.length);
    for (let i = 0; i < source.length; i++) bytes[i] = map(source[i]);
    return bytes;
  };
})();)";
constexpr const char* kEnginesBytesOfString = "Reflect.deleteProperty(Uint8Array, 'from');";

WebKitUserContent::Script makeScript(const char* source, const char* world) {
  return WebKitUserContent::Script(
      world ? webkit_user_script_new_for_world(source, WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, world, nullptr,
                                               nullptr)
            : webkit_user_script_new(source, WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                     WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr));
}

void addScript(WebKitUserContentManager* manager, const std::string& source, const char* world) {
  webkit_user_content_manager_add_script(manager, makeScript(source.c_str(), world).get());
}

GObjectPtr<JSCValue> member(JSCValue* object, const char* name) {
  return adoptReference(jsc_value_object_get_property(object, name));
}

}  // namespace

WebKitUserContent::WebKitUserContent()
    : manager_(webkit_user_content_manager_new()), themeColor_(manager_.get()) {
  g_signal_connect(manager_.get(), "script-message-received::quendoTextPart", G_CALLBACK(onTextPart), this);
  webkit_user_content_manager_register_script_message_handler(manager_.get(), kTextPart, kHostWorld);
}

WebKitUserContent::~WebKitUserContent() {
  g_signal_handlers_disconnect_by_data(manager_.get(), this);
  webkit_user_content_manager_unregister_script_message_handler(manager_.get(), kTextPart, kHostWorld);
  for (const auto& registration : registrations_) {
    g_signal_handlers_disconnect_by_data(manager_.get(), registration.get());
    webkit_user_content_manager_unregister_script_message_handler(manager_.get(), registration->name.c_str(),
                                                                  kHostWorld);
  }
}

void WebKitUserContent::addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                                                const std::string& name) {
  auto registration = std::make_unique<Registration>(Registration{name, std::move(handler), this});
  g_signal_connect(manager_.get(), ("script-message-received::" + name).c_str(), G_CALLBACK(onMessage),
                   registration.get());
  webkit_user_content_manager_register_script_message_handler(manager_.get(), name.c_str(), kHostWorld);
  registrations_.push_back(std::move(registration));
}

void WebKitUserContent::removeAllUserScripts() {
  scripts_.clear();
  scriptsAreInstalled_ = true;
  webkit_user_content_manager_remove_all_scripts(manager_.get());
  installRelay();
}

void WebKitUserContent::addUserScript(const std::string& source) {
  documentWillLoad();
  for (const char* script : {kLeanBytesOfString, source.c_str(), kEnginesBytesOfString}) {
    scripts_.push_back(makeScript(script, nullptr));
    webkit_user_content_manager_add_script(manager_.get(), scripts_.back().get());
  }
}

void WebKitUserContent::documentWillLoad() {
  documentIsComing_ = true;
  if (std::exchange(scriptsAreInstalled_, true)) return;
  for (const Script& script : scripts_) webkit_user_content_manager_add_script(manager_.get(), script.get());
}

void WebKitUserContent::documentDidCommit() {
  documentIsComing_ = false;
}

void WebKitUserContent::documentDidLoad() {
  if (documentIsComing_ || !std::exchange(scriptsAreInstalled_, false)) return;
  for (const Script& script : scripts_)
    webkit_user_content_manager_remove_script(manager_.get(), script.get());
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
  addScript(manager_.get(), ThemeColorWatch::script(), kHostWorld);
  addScript(manager_.get(), pageSide, nullptr);
}

void WebKitUserContent::onMessage(WebKitUserContentManager* /*manager*/, JSCValue* posted,
                                  gpointer registration) {
  const auto* self = static_cast<Registration*>(registration);
  const auto handler = self->handler;
  handler->didReceiveScriptMessage(ScriptMessage{self->name, self->content->takeMessage(posted), true});
}

void WebKitUserContent::onTextPart(WebKitUserContentManager* /*manager*/, JSCValue* posted,
                                   gpointer content) {
  auto* self = static_cast<WebKitUserContent*>(content);
  auto& texts = self->texts_;
  Value message = valueFromJavaScript(posted);
  const std::string* part = stringField(message, "part");
  if (const std::string* ahead = stringField(message, "ahead")) {
    if (*ahead == "first") self->textAhead_ = {};
    // What is longer is refused in any case; it need not fill the memory.
    if (part && self->textAhead_.size() <= kLongestTextAhead) self->textAhead_ += *part;
    return;
  }
  const std::int64_t length = integerField(message, "length");
  // The first part says how long the whole text is, so that it need not be moved as it grows: few characters
  // take more than a byte.
  if (length > 0) texts.emplace_back().reserve(static_cast<std::size_t>(length + length / 4));
  if (part && !texts.empty()) texts.back() += *part;
}

Value WebKitUserContent::takeMessage(JSCValue* posted) {
  // Texts of a message that could not be posted, or whose page died before that, belong to none.
  std::vector<std::string> texts = std::exchange(texts_, {});
  Value body = valueFromJavaScript(member(posted, "body").get());
  const auto names = member(posted, "textNames");
  Value::Dictionary* members = body.dictionary();
  const auto partsName = member(posted, "partsName");
  if (members && jsc_value_is_string(partsName.get())) {
    const GCharPtr name(jsc_value_to_string(partsName.get()));
    if (name) members->insert_or_assign(name.get(), std::exchange(textAhead_, {}));
  }
  // A page that imitates the relay may post anything.
  if (!members || !jsc_value_is_array(names.get())) return body;
  const std::int64_t count = integerValue(jsc_value_to_double(member(names.get(), "length").get()));
  if (static_cast<std::uint64_t>(count) > texts.size()) return body;
  const std::size_t first = texts.size() - static_cast<std::size_t>(count);
  for (std::size_t index = first; index < texts.size(); ++index) {
    const auto name = adoptReference(
        jsc_value_object_get_property_at_index(names.get(), static_cast<guint>(index - first)));
    const GCharPtr text(jsc_value_to_string(name.get()));
    if (text) members->insert_or_assign(text.get(), std::move(texts[index]));
  }
  return body;
}

}  // namespace quendo::gtk
