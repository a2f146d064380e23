#pragma once

#include <jsc/jsc.h>

#include <string>
#include <vector>

#include "platform/Value.h"

namespace quendo::gtk {

/// The host's value for a JavaScript value: a scalar, or an object of scalars. Everything else becomes
/// opaque, arrays included: no message or answer has one, and what a hostile page nests, or an array of four
/// billion holes, is never walked.
Value valueFromJavaScript(JSCValue* value);

/// JSON text of a dictionary, for the one direction in which the web view takes no structured arguments. Long
/// texts are left out of it, because the web view takes those as they are in half of the time: each is added
/// to `texts`, and an object {"quendoText": INDEX} stands in its place. What is added points into `members`.
std::string jsonFromDictionary(const Value::Dictionary& members, std::vector<const std::string*>& texts);

}  // namespace quendo::gtk
