#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>
#include <vector>

namespace quendo::cocoa {

// Conversions at the border between the core's UTF-8 and Foundation's UTF-16. Any thread.

/// Ill-formed parts of `utf8` become U+FFFD.
NSString* stringFrom(std::string_view utf8);

/// Nil if `utf8` is ill-formed.
NSString* stringFromValid(std::string_view utf8);

/// The UTF-8 form; empty for nil. A string with a lone surrogate has none and comes out as text that no UTF-8
/// check accepts, so that nothing is altered or truncated unnoticed.
std::string textOf(NSString* string);

/// The local paths of file URLs, in the file system's own encoding. Others are left out.
std::vector<std::string> pathsOf(NSArray<NSURL*>* urls);

/// A URL that the system opens Quendo with. Of a file it has the path, also where the system has only the
/// file's number, as when it is dragged.
std::string openedUrl(NSURL* url);

/// The file URL of a path in the file system's own encoding.
NSURL* fileUrl(const std::string& path);

}  // namespace quendo::cocoa
