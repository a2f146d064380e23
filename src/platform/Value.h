#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quendo {

/// A value exchanged between the host and the page's JavaScript. Copyable; no thread affinity.
///
/// Strings are UTF-8. A JavaScript string with a lone surrogate has no UTF-8 form and is held as WTF-8 (the
/// surrogate as three bytes). Every UTF-8 check rejects that, which makes encoding it fail rather than
/// silently truncate or alter it.
class Value {
 public:
  /// A value from the page of a kind that no message or reply uses: functions, arrays, nested objects.
  struct Opaque {
    bool operator==(const Opaque&) const = default;
  };
  /// Only sent to the page, never received.
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

  /// A pointer to the value, or null if it has another type. A boolean is not a number.
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
