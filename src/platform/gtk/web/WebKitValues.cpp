#include "platform/gtk/web/WebKitValues.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>

#include "bridge/JavaScriptLiteral.h"
#include "platform/gtk/GObjectPtr.h"
#include "text/Utf8.h"

namespace quendo::gtk {
namespace {

struct BytesUnref {
  void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};

std::size_t utf16Length(std::string_view utf8) {
  std::size_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += static_cast<std::size_t>((byte & 0xC0) != 0x80) + static_cast<std::size_t>(byte >= 0xF0);
  }
  return units;
}

// WebKit's conversion to UTF-8 silently stops at a lone surrogate. The length reveals it; appending a
// surrogate's bytes then makes every later encoding reject the text.
std::string textFromJavaScript(JSCValue* value) {
  const std::unique_ptr<GBytes, BytesUnref> bytes(jsc_value_to_string_as_bytes(value));
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
  std::string text(data ? data : "", size);
  const auto length = adoptReference(jsc_value_object_get_property(value, "length"));
  if (static_cast<std::size_t>(jsc_value_to_double(length.get())) != utf16Length(text))
    text += "\xED\xA0\x80";
  return text;
}

Value scalarFromJavaScript(JSCValue* value) {
  if (jsc_value_is_undefined(value) || jsc_value_is_null(value)) return {};
  if (jsc_value_is_boolean(value)) return static_cast<bool>(jsc_value_to_boolean(value));
  if (jsc_value_is_number(value)) return jsc_value_to_double(value);
  if (jsc_value_is_string(value)) return textFromJavaScript(value);
  return Value::Opaque{};
}

/// Whether a string is passed separately from the JSON: it is long, and WebKit passes it intact.
bool isPassedSeparately(const std::string& text) {
  constexpr std::size_t kLong = 1000;
  return text.size() >= kLong && text.find('\0') == std::string::npos && isValidUtf8(text);
}

std::string jsonNumber(double number) {
  if (!std::isfinite(number)) return "null";
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", number);
  return text;
}

std::string jsonFromValue(const Value& value, std::vector<const std::string*>& texts) {
  if (const bool* boolean = value.boolean()) return *boolean ? "true" : "false";
  if (const double* number = value.number()) return jsonNumber(*number);
  if (const std::string* text = value.string()) {
    if (!isPassedSeparately(*text)) return javascriptLiteral(*text);
    texts.push_back(text);
    return "{\"quendoText\":" + std::to_string(texts.size() - 1) + "}";
  }
  if (const Value::Dictionary* members = value.dictionary()) return jsonFromDictionary(*members, texts);
  if (const Value::Array* items = value.array()) {
    std::string json;
    for (const Value& item : *items) json.append(json.empty() ? "[" : ",").append(jsonFromValue(item, texts));
    return json.empty() ? "[]" : json + "]";
  }
  return "null";
}

}  // namespace

Value valueFromJavaScript(JSCValue* value) {
  if (!jsc_value_is_object(value) || jsc_value_is_array(value) || jsc_value_is_function(value))
    return scalarFromJavaScript(value);
  Value::Dictionary members;
  gchar** names = jsc_value_object_enumerate_properties(value);
  for (gchar** name = names; name && *name; ++name) {
    const auto member = adoptReference(jsc_value_object_get_property(value, *name));
    members.emplace(*name, scalarFromJavaScript(member.get()));
  }
  g_strfreev(names);
  return members;
}

std::string jsonFromDictionary(const Value::Dictionary& members, std::vector<const std::string*>& texts) {
  std::string json;
  for (const auto& [name, member] : members) {
    json.append(json.empty() ? "{" : ",").append(javascriptLiteral(name)).append(":");
    json.append(jsonFromValue(member, texts));
  }
  return json.empty() ? "{}" : json + "}";
}

}  // namespace quendo::gtk
