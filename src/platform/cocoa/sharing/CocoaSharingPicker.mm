#import "platform/cocoa/sharing/CocoaSharingPicker.h"

#include <utility>

#import "platform/cocoa/Geometry.h"
#import "platform/cocoa/Text.h"
#import "platform/cocoa/sharing/CocoaSharingService.h"
#import "platform/cocoa/web/WebKitView.h"

@interface QuendoSharingPickerDelegate : NSObject <NSSharingServicePickerDelegate> {
  quendo::SharingServicePickerDelegate* delegate_;
  BOOL hasEnded_;
}
@property(nonatomic, readonly) BOOL hasEnded;
@end

@implementation QuendoSharingPickerDelegate

@synthesize hasEnded = hasEnded_;

- (void)setDelegate:(quendo::SharingServicePickerDelegate*)delegate {
  delegate_ = delegate;
}

- (void)sharingServicePicker:(NSSharingServicePicker*)picker
     didChooseSharingService:(NSSharingService*)service {
  hasEnded_ = YES;
  auto* delegate = std::exchange(delegate_, nullptr);
  if (!delegate) return;
  delegate->didChooseSharingService(service ? std::make_shared<quendo::cocoa::CocoaSharingService>(service)
                                            : nullptr);
}

@end

namespace quendo::cocoa {
namespace {

NSArray* itemsOf(const std::vector<SharedItem>& items) {
  NSMutableArray* made = [NSMutableArray array];
  for (const SharedItem& item : items) {
    switch (item.kind) {
      case SharedItem::Kind::file:
        [made addObject:fileUrl(item.value)];
        break;
      case SharedItem::Kind::link:
        if (NSURL* url = [NSURL URLWithString:stringFrom(item.value)]) [made addObject:url];
        break;
      case SharedItem::Kind::text:
        [made addObject:stringFrom(item.value)];
        break;
    }
  }
  return made;
}

NSRectEdge edgeOf(RectEdge edge) {
  switch (edge) {
    case RectEdge::minX:
      return NSRectEdgeMinX;
    case RectEdge::minY:
      return NSRectEdgeMinY;
    case RectEdge::maxX:
      return NSRectEdgeMaxX;
    case RectEdge::maxY:
      return NSRectEdgeMaxY;
  }
  return NSRectEdgeMinY;
}

}  // namespace

CocoaSharingPicker::CocoaSharingPicker(const std::vector<SharedItem>& items)
    : picker_([[NSSharingServicePicker alloc] initWithItems:itemsOf(items)]),
      pickerDelegate_([[QuendoSharingPickerDelegate alloc] init]) {
  picker_.delegate = pickerDelegate_;
}

CocoaSharingPicker::~CocoaSharingPicker() {
  picker_.delegate = nil;
  // The service that was chosen may be showing a window of its own by now.
  if (!pickerDelegate_.hasEnded) [picker_ close];
}

void CocoaSharingPicker::setDelegate(SharingServicePickerDelegate* delegate) {
  [pickerDelegate_ setDelegate:delegate];
}

void CocoaSharingPicker::showRelativeTo(const Rect& rect, WebView& webView, RectEdge preferredEdge) {
  [picker_ showRelativeToRect:rectFrom(rect)
                       ofView:dynamic_cast<WebKitView&>(webView).view()
                preferredEdge:edgeOf(preferredEdge)];
}

}  // namespace quendo::cocoa
