// The part of AppKit with alerts, panels and sharing. Included by AppKit.
#pragma once

#pragma clang assume_nonnull begin

// Alerts and panels.

typedef enum NSAlertStyle : NSUInteger {
  NSAlertStyleWarning = 0,
  NSAlertStyleInformational = 1,
  NSAlertStyleCritical = 2,
} NSAlertStyle;

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property NSAlertStyle alertStyle;
@property(nullable, strong) NSView* accessoryView;
@property(readonly, strong) NSWindow* window;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
- (void)beginSheetModalForWindow:(NSWindow*)sheetWindow
               completionHandler:(void (^_Nullable)(NSModalResponse returnCode))handler;
@end

@protocol NSOpenSavePanelDelegate <NSObject>
- (BOOL)panel:(id)sender validateURL:(NSURL*)url error:(NSError* _Nullable* _Nullable)outError;
@end

@interface NSSavePanel : NSPanel
+ (NSSavePanel*)savePanel;
@property(nullable, readonly, copy) NSURL* URL;
@property(copy) NSArray<UTType*>* allowedContentTypes;
@property BOOL allowsOtherFileTypes;
@property(nullable, strong) NSView* accessoryView;
@property(getter=isExtensionHidden) BOOL extensionHidden;
@property BOOL canCreateDirectories;
@property(null_resettable, copy) NSString* prompt;
@property(copy) NSString* nameFieldStringValue;
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^)(NSModalResponse result))handler;
@end

@interface NSSavePanel (Delegate)
@property(nullable, weak) id<NSOpenSavePanelDelegate> delegate;
@end

@interface NSOpenPanel : NSSavePanel
+ (NSOpenPanel*)openPanel;
@property(readonly, copy) NSArray<NSURL*>* URLs;
@property BOOL canChooseDirectories;
@property BOOL canChooseFiles;
@property BOOL allowsMultipleSelection;
@end

// Sharing.

@class NSSharingService, NSSharingServicePicker;

@protocol NSSharingServiceDelegate <NSObject>
- (void)sharingService:(NSSharingService*)sharingService didShareItems:(NSArray*)items;
- (void)sharingService:(NSSharingService*)sharingService
    didFailToShareItems:(NSArray*)items
                  error:(NSError*)error;
@end

@interface NSSharingService : NSObject
@property(nullable, weak) id<NSSharingServiceDelegate> delegate;
@end

@protocol NSSharingServicePickerDelegate <NSObject>
- (void)sharingServicePicker:(NSSharingServicePicker*)sharingServicePicker
     didChooseSharingService:(nullable NSSharingService*)service;
@end

@interface NSSharingServicePicker : NSObject
- (instancetype)initWithItems:(NSArray*)items;
@property(nullable, weak) id<NSSharingServicePickerDelegate> delegate;
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)preferredEdge;
- (void)close API_AVAILABLE_MACOS(13.0);
@end

#pragma clang assume_nonnull end
