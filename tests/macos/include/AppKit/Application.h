#pragma once

#import <AppKit/Menus.h>
#import <Foundation/Foundation.h>

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
  NSWindowStyleMaskTitled = 1 << 0,
  NSWindowStyleMaskClosable = 1 << 1,
};

typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
  NSWindowCollectionBehaviorMoveToActiveSpace = 1 << 1,
};

typedef NS_ENUM(NSUInteger, NSBackingStoreType) {
  NSBackingStoreBuffered = 2,
};

@interface NSWindow : NSResponder {
  NSRect frame_;
  NSWindowStyleMask styleMask_;
  NSString* title_;
  NSView* contentView_;
  BOOL releasedWhenClosed_;
  BOOL visible_;
  NSWindowCollectionBehavior collectionBehavior_;
}
@property(copy) NSString* title;
@property(readonly) NSRect frame;
@property NSWindowStyleMask styleMask;
@property(retain) NSView* contentView;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(getter=isVisible, readonly) BOOL visible;
@property NSWindowCollectionBehavior collectionBehavior;
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag;
- (void)center;
- (void)close;
- (void)performClose:(id)sender;
- (void)makeKeyAndOrderFront:(id)sender;
- (void)orderFrontRegardless;
@end

typedef NSInteger NSModalResponse;
static const NSModalResponse NSAlertFirstButtonReturn = 1000;

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
  NSAlertStyleWarning = 0,
  NSAlertStyleInformational = 1,
  NSAlertStyleCritical = 2
};

@interface NSAlert : NSObject {
  NSString* messageText_;
  NSString* informativeText_;
  NSImage* icon_;
  NSMutableArray* buttons_;
  NSAlertStyle alertStyle_;
  BOOL styleWasSet_;
}
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property(retain) NSImage* icon;
@property(readonly, copy) NSArray* buttons;
@property NSAlertStyle alertStyle;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@end

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
  NSApplicationActivationPolicyRegular,
  NSApplicationActivationPolicyAccessory,
  NSApplicationActivationPolicyProhibited
};

@class NSApplication;

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app;
@end

@interface NSApplication : NSResponder {
  id<NSApplicationDelegate> delegate_;
  NSMenu* mainMenu_;
  NSApplicationActivationPolicy activationPolicy_;
}
@property(assign) id<NSApplicationDelegate> delegate;
@property(retain) NSMenu* mainMenu;
+ (NSApplication*)sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (void)run;
- (void)terminate:(id)sender;
@end

@interface NSWorkspace : NSObject
+ (NSWorkspace*)sharedWorkspace;
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
- (BOOL)openURL:(NSURL*)url;
@end
