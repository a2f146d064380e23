#import "platform/cocoa/Text.h"

#include "files/Url.h"
#include "text/Utf8.h"

namespace quendo::cocoa {

NSString* stringFromValid(std::string_view utf8) {
  // A byte order mark at the beginning would be left out; here it is text.
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  NSUInteger marks = 0;
  for (; utf8.starts_with(kMark); ++marks) utf8.remove_prefix(kMark.size());
  NSString* string = [[NSString alloc] initWithBytes:utf8.data()
                                              length:utf8.size()
                                            encoding:NSUTF8StringEncoding];
  for (; string && marks > 0; --marks) string = [@"\uFEFF" stringByAppendingString:string];
  return string;
}

NSString* stringFrom(std::string_view utf8) {
  NSString* string = stringFromValid(utf8);
  return string ? string : stringFrom(repairedUtf8(utf8));
}

std::string textOf(NSString* string) {
  if (!string) return {};
  NSData* bytes = [string dataUsingEncoding:NSUTF8StringEncoding];
  if (bytes) return std::string(static_cast<const char*>(bytes.bytes), bytes.length);
  NSData* lossy = [string dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  return std::string(static_cast<const char*>(lossy.bytes), lossy.length) + "\xED\xA0\x80";
}

std::vector<std::string> pathsOf(NSArray<NSURL*>* urls) {
  std::vector<std::string> paths;
  for (NSURL* url in urls) {
    if (url.isFileURL) paths.emplace_back(url.path.fileSystemRepresentation);
  }
  return paths;
}

std::string openedUrl(NSURL* url) {
  NSString* path = url.isFileURL ? url.filePathURL.path : nil;
  return path.length > 0 ? fileUrlOfPath(path.fileSystemRepresentation) : textOf(url.absoluteString);
}

NSURL* fileUrl(const std::string& path) {
  NSString* name = [NSFileManager.defaultManager stringWithFileSystemRepresentation:path.data()
                                                                             length:path.size()];
  return [NSURL fileURLWithPath:name];
}

}  // namespace quendo::cocoa
