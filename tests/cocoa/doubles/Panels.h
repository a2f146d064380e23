#pragma once

#import <AppKit/AppKit.h>

namespace quendo::doubles {

/// The open or save panel that was made last.
NSSavePanel* newestPanel();
/// Lets the user confirm a place in it, which need not be a file, or be known at all.
void confirmUrl(NSURL* url);
/// Lets the user select several.
void selectUrls(NSArray* urls);

}  // namespace quendo::doubles
