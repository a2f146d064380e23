// A double of the system's share picker and its services.

#import <AppKit/AppKit.h>

#import "Stage.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct PickerState {
  std::shared_ptr<fake::FakeSharingPicker> picker;
  id delegate = nil;
  std::unique_ptr<SharingServicePickerDelegate> adaptor;
};

struct ServiceState {
  std::shared_ptr<fake::FakeSharingService> service;
  id delegate = nil;
  std::unique_ptr<SharingServiceDelegate> adaptor;
};

class PickerAdaptor final : public SharingServicePickerDelegate {
 public:
  explicit PickerAdaptor(NSSharingServicePicker* picker) : picker_(picker) {}
  void didChooseSharingService(std::shared_ptr<SharingService> service) override {
    const Turn turn;
    NSSharingService* chosen = nil;
    if (service) {
      chosen = [[NSSharingService alloc] init];
      stateOf<ServiceState>(chosen).service = std::static_pointer_cast<fake::FakeSharingService>(service);
    }
    [stateOf<PickerState>(picker_).delegate sharingServicePicker:picker_ didChooseSharingService:chosen];
  }

 private:
  NSSharingServicePicker* picker_;
};

class ServiceAdaptor final : public SharingServiceDelegate {
 public:
  explicit ServiceAdaptor(NSSharingService* service) : service_(service) {}
  void didShareItems(SharingService&) override {
    const Turn turn;
    [stateOf<ServiceState>(service_).delegate sharingService:service_ didShareItems:@[]];
  }
  void didFailToShareItems(SharingService&) override {
    const Turn turn;
    NSError* error = [NSError errorWithDomain:@"double" code:1 userInfo:nil];
    [stateOf<ServiceState>(service_).delegate sharingService:service_ didFailToShareItems:@[] error:error];
  }

 private:
  NSSharingService* service_;
};

SharedItem sharedItemOf(id item) {
  if ([item isKindOfClass:[NSString class]]) return {SharedItem::Kind::text, textFrom(item)};
  if ([item isFileURL]) return {SharedItem::Kind::file, textFrom([item path])};
  return {SharedItem::Kind::link, textFrom([item absoluteString])};
}

/// The system has its own entries.
class NoOffers final : public SharingOffers {
 public:
  std::vector<SharingSection> sections(const std::vector<SharingProgram>&) const override { return {}; }
  std::optional<std::string> copyForAnotherProgram(const std::string&) override { return std::nullopt; }
};

RectEdge edgeOf(NSRectEdge edge) {
  switch (edge) {
    case NSRectEdgeMinX:
      return RectEdge::minX;
    case NSRectEdgeMinY:
      return RectEdge::minY;
    case NSRectEdgeMaxX:
      return RectEdge::maxX;
    default:
      return RectEdge::maxY;
  }
}

int closedPickers = 0;

}  // namespace

namespace quendo::doubles {

int closedPickerCount() {
  return closedPickers;
}

}  // namespace quendo::doubles

@implementation NSSharingServicePicker
- (instancetype)initWithItems:(NSArray*)items {
  self = [super init];
  SharedItems shared;
  for (id item in items) shared.items.push_back(sharedItemOf(item));
  shared.offersWithoutSystemPicker = std::make_shared<NoOffers>();
  stateOf<PickerState>(self).picker = std::static_pointer_cast<fake::FakeSharingPicker>(
      facilities().toolkit.makeSharingServicePicker(std::move(shared)));
  return self;
}
- (id<NSSharingServicePickerDelegate>)delegate {
  return stateOf<PickerState>(self).delegate;
}
- (void)setDelegate:(id<NSSharingServicePickerDelegate>)delegate {
  PickerState& state = stateOf<PickerState>(self);
  state.delegate = delegate;
  // The old one may be on the stack.
  if (delegate) state.adaptor = std::make_unique<PickerAdaptor>(self);
  state.picker->setDelegate(delegate ? state.adaptor.get() : nullptr);
}
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)preferredEdge {
  stateOf<PickerState>(self).picker->showRelativeTo(
      Rect{static_cast<int>(rect.origin.x), static_cast<int>(rect.origin.y),
           static_cast<int>(rect.size.width), static_cast<int>(rect.size.height)},
      *facilities().toolkit.webView, edgeOf(preferredEdge));
}
- (void)close {
  ++closedPickers;
}
@end

@implementation NSSharingService
- (id<NSSharingServiceDelegate>)delegate {
  return stateOf<ServiceState>(self).delegate;
}
- (void)setDelegate:(id<NSSharingServiceDelegate>)delegate {
  ServiceState& state = stateOf<ServiceState>(self);
  state.delegate = delegate;
  if (delegate) state.adaptor = std::make_unique<ServiceAdaptor>(self);
  state.service->setDelegate(delegate ? state.adaptor.get() : nullptr);
}
@end
