#import "platform/cocoa/web/WebKitValues.h"

#include <utility>

#import "platform/cocoa/Text.h"

namespace quendo::cocoa {
namespace {

Value scalarFrom(id object) {
  if (!object || [object isKindOfClass:NSNull.class]) return {};
  if ([object isKindOfClass:NSString.class]) return textOf(object);
  // There are only two boolean objects; all other numbers are numbers.
  if (object == [NSNumber numberWithBool:YES]) return true;
  if (object == [NSNumber numberWithBool:NO]) return false;
  if ([object isKindOfClass:NSNumber.class]) return static_cast<NSNumber*>(object).doubleValue;
  return Value::Opaque{};
}

}  // namespace

Value valueFrom(id object) {
  if (![object isKindOfClass:NSDictionary.class]) return scalarFrom(object);
  NSDictionary* dictionary = object;
  Value::Dictionary members;
  for (NSString* name in dictionary)
    members.emplace(textOf(name), scalarFrom([dictionary objectForKey:name]));
  return members;
}

id objectFrom(const Value& value) {
  if (const bool* boolean = value.boolean()) return [NSNumber numberWithBool:*boolean];
  if (const double* number = value.number()) return [NSNumber numberWithDouble:*number];
  if (const std::string* text = value.string()) return stringFrom(*text);
  if (const Value::Dictionary* members = value.dictionary()) return objectFrom(*members);
  if (const Value::Array* items = value.array()) {
    NSMutableArray* objects = [NSMutableArray arrayWithCapacity:items->size()];
    for (const Value& item : *items) [objects addObject:objectFrom(item)];
    return objects;
  }
  return [NSNull null];
}

NSDictionary<NSString*, id>* objectFrom(const Value::Dictionary& members) {
  NSMutableDictionary<NSString*, id>* objects = [NSMutableDictionary dictionaryWithCapacity:members.size()];
  for (const auto& [name, member] : members) [objects setObject:objectFrom(member) forKey:stringFrom(name)];
  return objects;
}

}  // namespace quendo::cocoa
