#include "bridge/MessageFields.h"

#include <cmath>
#include <limits>

namespace quendo {

std::string* stringField(Value& body, std::string_view key) {
  Value::Dictionary* fields = body.dictionary();
  if (!fields) return nullptr;
  const auto field = fields->find(key);
  return field == fields->end() ? nullptr : field->second.string();
}

std::int64_t integerField(const Value& body, std::string_view key) {
  const Value::Dictionary* fields = body.dictionary();
  if (!fields) return 0;
  const auto field = fields->find(key);
  if (field == fields->end() || !field->second.number()) return 0;
  return integerValue(*field->second.number());
}

std::int64_t integerValue(double number) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (std::isnan(number)) return 0;
  if (number >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (number < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(number);
}

}  // namespace quendo
