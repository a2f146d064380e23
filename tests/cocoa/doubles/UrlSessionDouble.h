#pragma once

#import <Foundation/Foundation.h>

#include <string>

// What the network does to the newest exchange, even to one that the program has cancelled.

namespace quendo::doubles {

/// Redirects it. True if the program follows.
bool followsRedirectTo(const std::string& url);
void respond(NSURLResponse* response);
void receive(const std::string& bytes);
/// With an error, or nil.
void endExchange(NSError* error);
/// Whether the program has ended the session.
bool isInvalidated();

}  // namespace quendo::doubles
