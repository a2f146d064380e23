#import "platform/cocoa/sharing/CocoaSharingService.h"

#include <utility>

using quendo::SharingServiceDelegate;
using quendo::cocoa::CocoaSharingService;

@interface QuendoSharingServiceDelegate : NSObject <NSSharingServiceDelegate> {
  CocoaSharingService* service_;
  SharingServiceDelegate* delegate_;
}
@end

@implementation QuendoSharingServiceDelegate

- (instancetype)initWithService:(CocoaSharingService*)service {
  self = [super init];
  if (self) service_ = service;
  return self;
}

- (void)setDelegate:(SharingServiceDelegate*)delegate {
  delegate_ = delegate;
}

- (void)sharingService:(NSSharingService*)sharingService didShareItems:(NSArray*)items {
  if (auto* delegate = std::exchange(delegate_, nullptr)) delegate->didShareItems(*service_);
}

- (void)sharingService:(NSSharingService*)sharingService
    didFailToShareItems:(NSArray*)items
                  error:(NSError*)error {
  if (auto* delegate = std::exchange(delegate_, nullptr)) delegate->didFailToShareItems(*service_);
}

@end

namespace quendo::cocoa {

CocoaSharingService::CocoaSharingService(NSSharingService* service)
    : service_(service), serviceDelegate_([[QuendoSharingServiceDelegate alloc] initWithService:this]) {
  service_.delegate = serviceDelegate_;
}

CocoaSharingService::~CocoaSharingService() {
  service_.delegate = nil;
  [serviceDelegate_ setDelegate:nullptr];
}

void CocoaSharingService::setDelegate(SharingServiceDelegate* delegate) {
  [serviceDelegate_ setDelegate:delegate];
}

}  // namespace quendo::cocoa
