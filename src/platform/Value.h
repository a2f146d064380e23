#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quendo {

/// A value that crossed, or is to cross, the border between the host and the page's JavaScript.
///
/// Text is held as UTF-8. A JavaScript string with a lone surrogate has no UTF-8 form; such a string is
/// held in the generalised form (WTF-8: the surrogate as three bytes), which every UTF-8 check refuses,
/// so that it fails where it is encoded instead of being shortened or changed on the way.
class Value {
 public:
  /// A value from the page of a kind that no message or answer uses: functions, arrays, nested objects.
  struct Opaque {
    bool operator==(const Opaque&) const = default;
  };
  /// Only on the way to the page.
  using Array = std::vector<Value>;
  using Dictionary = std::map<std::string, Value, std::less<>>;

  Value() = default;
  Value(bool value) : storage_(value) {}
  Value(double value) : storage_(value) {}
  Value(std::string value) : storage_(std::move(value)) {}
  Value(const char* value) : storage_(std::string(value)) {}
  Value(Array value) : storage_(std::move(value)) {}
  Value(Dictionary value) : storage_(std::move(value)) {}
  Value(Opaque value) : storage_(value) {}
  static Value integer(std::int64_t value) { return Value(static_cast<double>(value)); }

  bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }

  /// Pointers to the value in its own type, or null when it has another. A boolean is not a number.
  const bool* boolean() const { return std::get_if<bool>(&storage_); }
  const double* number() const { return std::get_if<double>(&storage_); }
  const std::string* string() const { return std::get_if<std::string>(&storage_); }
  std::string* string() { return std::get_if<std::string>(&storage_); }
  const Array* array() const { return std::get_if<Array>(&storage_); }
  const Dictionary* dictionary() const { return std::get_if<Dictionary>(&storage_); }
  Dictionary* dictionary() { return std::get_if<Dictionary>(&storage_); }

  bool operator==(const Value&) const = default;

 private:
  std::variant<std::monostate, bool, double, std::string, Array, Dictionary, Opaque> storage_;
};

}  // namespace quendo
