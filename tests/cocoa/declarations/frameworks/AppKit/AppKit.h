// AppKit, as far as Quendo uses it: classes, methods and constants of the platform's public documentation.
// Methods of delegates are required here, so that a misspelled one does not compile. Options are integers and
// enumerations are types of their own, as they are on macOS in C++.
#pragma once

#import <Foundation/Foundation.h>

#include <AppKit/Appearance.h>

#pragma clang assume_nonnull begin

@class NSApplication, NSEvent, NSGraphicsContext, NSLayoutXAxisAnchor, NSLayoutYAxisAnchor, NSMenu,
    NSPasteboard, NSView, NSWindow, UTType;

extern "C" void NSBeep(void);

// Application.

typedef enum NSApplicationActivationPolicy : NSInteger {
  NSApplicationActivationPolicyRegular = 0,
} NSApplicationActivationPolicy;

typedef enum NSApplicationTerminateReply : NSUInteger {
  NSTerminateCancel = 0,
  NSTerminateNow = 1,
  NSTerminateLater = 2,
} NSApplicationTerminateReply;

typedef enum NSApplicationDelegateReply : NSUInteger {
  NSApplicationDelegateReplySuccess = 0,
  NSApplicationDelegateReplyCancel = 1,
  NSApplicationDelegateReplyFailure = 2,
} NSApplicationDelegateReply;

@protocol NSApplicationDelegate <NSObject>
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
- (void)application:(NSApplication*)sender openFiles:(NSArray<NSString*>*)filenames;
- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)urls;
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender;
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (void)applicationWillTerminate:(NSNotification*)notification;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application;
@end

@interface NSResponder : NSObject
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, strong) NSMenu* mainMenu;
@property(nullable, strong) NSMenu* windowsMenu;
@property(nullable, readonly, strong) NSWindow* modalWindow;
@property(nullable, readonly, strong) NSEvent* currentEvent;
@property(readonly, strong) NSAppearance* effectiveAppearance;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoringOtherApps;
- (void)run;
- (void)terminate:(nullable id)sender;
- (void)replyToApplicationShouldTerminate:(BOOL)shouldTerminate;
- (void)replyToOpenOrPrint:(NSApplicationDelegateReply)reply;
- (void)stopModalWithCode:(NSInteger)returnCode;
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart;
@end

typedef unsigned long long NSEventMask;
enum : NSEventMask {
  NSEventMaskKeyDown = 1ull << 10,
  NSEventMaskKeyUp = 1ull << 11,
};

typedef enum NSEventType : NSUInteger {
  NSEventTypeApplicationDefined = 15,
} NSEventType;
typedef NSUInteger NSEventModifierFlags;

@interface NSEvent : NSObject
+ (nullable NSEvent*)otherEventWithType:(NSEventType)type
                               location:(NSPoint)location
                          modifierFlags:(NSEventModifierFlags)flags
                              timestamp:(NSTimeInterval)time
                           windowNumber:(NSInteger)windowNumber
                                context:(nullable NSGraphicsContext*)unusedPassNil
                                subtype:(short)subtype
                                  data1:(NSInteger)d1
                                  data2:(NSInteger)d2;
@property(readonly) NSEventType type;
@property(readonly) NSTimeInterval timestamp;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent*))block;
+ (void)removeMonitor:(id)monitor;
@end

// Menus.

typedef NSInteger NSControlStateValue;
enum : NSControlStateValue { NSControlStateValueOff = 0, NSControlStateValueOn = 1 };
typedef NSString* NSUserInterfaceItemIdentifier;

@interface NSMenuItem : NSObject
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)keyEquivalent;
@property(copy) NSString* title;
@property(nullable) SEL action;
@property(nullable, weak) id target;
@property(copy) NSString* keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property NSControlStateValue state;
@property(nullable, strong) id representedObject;
@property(nullable, strong) NSMenu* submenu;
@property(nullable, copy) NSUserInterfaceItemIdentifier identifier;
@property(readonly, getter=isSeparatorItem) BOOL separatorItem;
@end

@protocol NSMenuItemValidation <NSObject>
- (BOOL)validateMenuItem:(NSMenuItem*)menuItem;
@end

@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString*)title;
@property(copy) NSString* title;
@property(copy) NSArray<NSMenuItem*>* itemArray;
- (void)addItem:(NSMenuItem*)item;
- (void)insertItem:(NSMenuItem*)newItem atIndex:(NSInteger)index;
- (void)removeItem:(NSMenuItem*)item;
- (NSInteger)indexOfItem:(NSMenuItem*)item;
- (BOOL)performKeyEquivalent:(NSEvent*)event;
- (void)update;
@end

// Pasteboard, workspace.

typedef NSString* NSPasteboardType;
typedef NSString* NSPasteboardReadingOptionKey;
extern "C" NSPasteboardType const NSPasteboardTypeString;
extern "C" NSPasteboardReadingOptionKey const NSPasteboardURLReadingFileURLsOnlyKey;

@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard* generalPasteboard;
- (NSInteger)clearContents;
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)dataType;
- (nullable NSArray*)readObjectsForClasses:(NSArray<Class>*)classArray
                                   options:(nullable NSDictionary<NSPasteboardReadingOptionKey, id>*)options;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
- (BOOL)openURL:(NSURL*)url;
@end

// Views.

@interface NSLayoutConstraint : NSObject
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints;
@end

@interface NSLayoutAnchor<AnchorType> : NSObject
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor;
@end
@interface NSLayoutXAxisAnchor : NSLayoutAnchor <NSLayoutXAxisAnchor*>
@end
@interface NSLayoutYAxisAnchor : NSLayoutAnchor <NSLayoutYAxisAnchor*>
@end

typedef NSUInteger NSAutoresizingMaskOptions;
enum : NSAutoresizingMaskOptions {
  NSViewWidthSizable = 2,
  NSViewHeightSizable = 16,
};

typedef NSUInteger NSDragOperation;
enum : NSDragOperation {
  NSDragOperationNone = 0,
  NSDragOperationCopy = 1,
};

@protocol NSDraggingInfo <NSObject>
@property(readonly, strong) NSPasteboard* draggingPasteboard;
@property(nullable, readonly, strong) id draggingSource;
@end

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame;
@property(readonly) NSRect bounds;
@property(nullable, strong) NSAppearance* appearance;
@property NSAutoresizingMaskOptions autoresizingMask;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property(nullable, readonly, unsafe_unretained) NSWindow* window;
@property(readonly) NSSize fittingSize;
@property(readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
- (void)addSubview:(NSView*)view;
- (void)setFrameSize:(NSSize)size;
- (void)willOpenMenu:(NSMenu*)menu withEvent:(NSEvent*)event;
- (BOOL)performKeyEquivalent:(NSEvent*)event;
- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender;
- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender;
- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender;
@end

@interface NSControl : NSView
@property(copy) NSString* stringValue;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@end

@interface NSTextField : NSControl
+ (instancetype)labelWithString:(NSString*)string;
@end

@interface NSButton : NSControl
@property(copy) NSString* keyEquivalent;
@end

@interface NSPopUpButton : NSButton
- (instancetype)initWithFrame:(NSRect)frame pullsDown:(BOOL)pullsDown;
- (void)addItemWithTitle:(NSString*)title;
- (void)selectItemAtIndex:(NSInteger)index;
@property(readonly) NSInteger indexOfSelectedItem;
@end

typedef enum NSUserInterfaceLayoutOrientation : NSInteger {
  NSUserInterfaceLayoutOrientationHorizontal = 0,
} NSUserInterfaceLayoutOrientation;
typedef enum NSLayoutAttribute : NSInteger {
  NSLayoutAttributeCenterY = 10,
} NSLayoutAttribute;

@interface NSStackView : NSView
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views;
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property CGFloat spacing;
@property NSEdgeInsets edgeInsets;
@end

// Windows.

typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask {
  NSWindowStyleMaskTitled = 1 << 0,
  NSWindowStyleMaskClosable = 1 << 1,
  NSWindowStyleMaskMiniaturizable = 1 << 2,
  NSWindowStyleMaskResizable = 1 << 3,
};
typedef enum NSBackingStoreType : NSUInteger {
  NSBackingStoreBuffered = 2,
} NSBackingStoreType;
typedef NSUInteger NSWindowCollectionBehavior;
enum : NSWindowCollectionBehavior {
  NSWindowCollectionBehaviorFullScreenPrimary = 1 << 7,
};
typedef NSInteger NSModalResponse;
enum : NSModalResponse {
  NSModalResponseOK = 1,
  NSModalResponseCancel = 0,
  NSModalResponseAbort = -1001,
  NSAlertFirstButtonReturn = 1000,
};

@protocol NSWindowDelegate <NSObject>
- (BOOL)windowShouldClose:(NSWindow*)sender;
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer;
@property(copy) NSString* title;
@property(nullable, strong) NSAppearance* appearance;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property NSSize minSize;
@property(nullable, strong) NSView* contentView;
@property(nullable, weak) NSView* initialFirstResponder;
@property(nullable, readonly, strong) NSWindow* attachedSheet;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(getter=isRestorable) BOOL restorable;
@property BOOL preventsApplicationTerminationWhenModal;
@property(class) BOOL allowsAutomaticWindowTabbing;
@property NSWindowCollectionBehavior collectionBehavior;
- (void)center;
- (void)close;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)endSheet:(NSWindow*)sheetWindow returnCode:(NSModalResponse)returnCode;
@end

@interface NSPanel : NSWindow
@end

#pragma clang assume_nonnull end

#include <AppKit/Panels.h>
