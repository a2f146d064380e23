#pragma once

#include <jsc/jsc.h>

#include <string>
#include <vector>

#include "platform/Value.h"

namespace quendo::gtk {

/// Converts a JavaScript value: a scalar, or an object of scalars. Everything else becomes opaque, including
/// arrays: no message or reply uses one, and a hostile page's nested objects or arrays of four billion holes
/// are never traversed.
Value valueFromJavaScript(JSCValue* value);

/// JSON of a dictionary, for the direction in which the web view takes no structured arguments. Long strings
/// are left out, because the web view takes them raw in half the time: each is appended to `texts`, with an
/// object {"quendoText": INDEX} as its placeholder. `texts` points into `members`.
std::string jsonFromDictionary(const Value::Dictionary& members, std::vector<const std::string*>& texts);

}  // namespace quendo::gtk
