#pragma once

#import <Foundation/Foundation.h>

#include "platform/Value.h"

namespace quendo::cocoa {

/// The value of what the page sent: a script message's body or the result of a script.
Value valueFrom(id object);

/// The form in which a value is handed to the page.
id objectFrom(const Value& value);
NSDictionary<NSString*, id>* objectFrom(const Value::Dictionary& members);

}  // namespace quendo::cocoa
