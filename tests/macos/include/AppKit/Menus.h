#pragma once

#import <AppKit/Views.h>
#import <Foundation/Foundation.h>

@class NSMenu, NSMenuItem;

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuNeedsUpdate:(NSMenu*)menu;
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@interface NSMenu : NSObject {
  NSMutableArray* items_;
  BOOL autoenablesItems_;
  id<NSMenuDelegate> delegate_;
 @public
  NSMenuItem* owner_;  // whose submenu it is; not retained
  BOOL isTracked_;
  BOOL reportsClosing_;
}
@property BOOL autoenablesItems;
@property(assign) id<NSMenuDelegate> delegate;
@property(copy) NSArray* itemArray;
@property(readonly) NSInteger numberOfItems;
- (NSMenuItem*)itemAtIndex:(NSInteger)index;
- (void)addItem:(NSMenuItem*)newItem;
- (NSMenuItem*)addItemWithTitle:(NSString*)string
                         action:(SEL)selector
                  keyEquivalent:(NSString*)charCode;
- (void)removeAllItems;
- (void)cancelTracking;
@end

@interface NSMenuItem : NSObject <NSAccessibility> {
  BOOL separatorItem_;
  BOOL enabled_;
  NSString* title_;
  NSString* keyEquivalent_;
  NSString* toolTip_;
  NSImage* image_;
  NSMenu* submenu_;
  NSView* view_;
  id target_;
  SEL action_;
  NSInteger tag_;
  id representedObject_;
  NSString* accessibilityLabel_;
 @public
  NSMenu* menu_;  // that it stands in; not retained
}
@property(getter=isSeparatorItem, readonly) BOOL separatorItem;
@property(getter=isEnabled) BOOL enabled;
@property(copy) NSString* title;
@property(copy) NSString* keyEquivalent;
@property(copy) NSString* toolTip;
@property(retain) NSImage* image;
@property(retain) NSMenu* submenu;
@property(readonly, assign) NSMenu* menu;
@property(retain) NSView* view;
@property(assign) id target;
@property SEL action;
@property NSInteger tag;
@property(retain) id representedObject;
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)string
                       action:(SEL)selector
                keyEquivalent:(NSString*)charCode;
@end

static const CGFloat NSVariableStatusItemLength = -1.0;

@interface NSStatusBarButton : NSButton
@end

@interface NSStatusItem : NSObject {
  CGFloat length_;
  NSMenu* menu_;
  NSStatusBarButton* button_;
  BOOL isGone_;
}
@property CGFloat length;
@property(retain) NSMenu* menu;
@property(readonly, retain) NSStatusBarButton* button;
@end

@interface NSStatusBar : NSObject
+ (NSStatusBar*)systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end
