#include "bridge/JavaScriptLiteral.h"

#include "text/Utf8.h"

namespace quendo {
namespace {

void appendEscaped(std::string& literal, char c) {
  static constexpr char kHex[] = "0123456789abcdef";
  switch (c) {
    case '"':
      literal += "\\\"";
      return;
    case '\\':
      literal += "\\\\";
      return;
    case '/':
      literal += "\\/";
      return;
    case '\b':
      literal += "\\b";
      return;
    case '\f':
      literal += "\\f";
      return;
    case '\n':
      literal += "\\n";
      return;
    case '\r':
      literal += "\\r";
      return;
    case '\t':
      literal += "\\t";
      return;
    default:
      break;
  }
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0x20) {
    literal += "\\u00";
    literal += kHex[byte >> 4];
    literal += kHex[byte & 15];
  } else {
    literal += c;
  }
}

}  // namespace

std::string javascriptLiteral(std::string_view text) {
  if (!isValidUtf8(text)) return "''";
  std::string literal;
  literal.reserve(text.size() + 2);
  literal += '"';
  for (const char c : text) appendEscaped(literal, c);
  literal += '"';
  return literal;
}

}  // namespace quendo
