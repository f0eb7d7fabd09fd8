// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// Declares what Burnwick calls, to compile its backend for macOS where the system's headers are not at hand.
// ../known-names.py compares it with the description of these frameworks, line by line. Never shipped.
#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef double CGFloat;
typedef struct { CGFloat x, y; } NSPoint;
typedef struct { CGFloat width, height; } NSSize;
typedef struct { NSPoint origin; NSSize size; } NSRect;
static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { return {x, y}; }
static inline NSSize NSMakeSize(CGFloat w, CGFloat h) { return {w, h}; }
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) { return {{x, y}, {w, h}}; }
static inline CGFloat NSMinY(NSRect rect) { return rect.origin.y; }
static inline CGFloat NSHeight(NSRect rect) { return rect.size.height; }

typedef NSString *NSAppearanceName;
typedef NSString *NSAttributedStringKey;
typedef NSString *NSToolbarItemIdentifier;
typedef CGFloat NSFontWeight;
extern "C" {
extern const NSFontWeight NSFontWeightRegular;
extern const NSFontWeight NSFontWeightSemibold;
extern const NSFontWeight NSFontWeightHeavy;
extern NSAttributedStringKey const NSFontAttributeName;
extern NSAttributedStringKey const NSForegroundColorAttributeName;
extern const CGFloat NSVariableStatusItemLength;
extern NSAppearanceName const NSAppearanceNameAqua;
extern NSAppearanceName const NSAppearanceNameDarkAqua;
extern NSNotificationName const NSApplicationDidBecomeActiveNotification;
extern NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;
extern NSNotificationName const NSWindowDidResizeNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
extern NSToolbarItemIdentifier const NSToolbarFlexibleSpaceItemIdentifier;
}
typedef NS_ENUM(NSUInteger, NSCellImagePosition) { NSImageOnly = 1, NSImageLeft = 2 };
typedef NS_ENUM(NSUInteger, NSImageScaling) { NSImageScaleProportionallyDown = 0 };
typedef NS_ENUM(NSUInteger, NSBezelStyle) { NSBezelStyleTexturedRounded = 11 };
typedef NS_ENUM(NSUInteger, NSWindowButton) { NSWindowCloseButton = 0, NSWindowMiniaturizeButton = 1, NSWindowZoomButton = 2 };
typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) { NSWindowTitleHidden = 1 };
typedef NS_ENUM(NSInteger, NSWindowToolbarStyle) { NSWindowToolbarStyleUnified = 3 };
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) { NSApplicationActivationPolicyRegular = 0 };
typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) { NSWindowStyleMaskTitled = 1, NSWindowStyleMaskClosable = 2, NSWindowStyleMaskResizable = 8, NSWindowStyleMaskFullSizeContentView = 32768 };
typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) { NSWindowCollectionBehaviorFullScreenPrimary = 128, NSWindowCollectionBehaviorFullScreenNone = 512 };

@interface NSFont : NSObject
+ (NSFont *)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end
@interface NSColor : NSObject
@property(class, readonly, strong) NSColor *controlTextColor;
+ (NSColor *)colorWithSRGBRed:(CGFloat)r green:(CGFloat)g blue:(CGFloat)b alpha:(CGFloat)a;
- (NSColor *)colorWithAlphaComponent:(CGFloat)alpha;
@end
@interface NSImage : NSObject
+ (nullable NSImage *)imageNamed:(NSString *)name;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString *)name accessibilityDescription:(nullable NSString *)text;
@property NSSize size;
- (void)setTemplate:(BOOL)isTemplate;
@end
@class NSWindow;
@interface NSView : NSObject
- (instancetype)initWithFrame:(NSRect)frame;
@property(nullable, readonly, unsafe_unretained) NSWindow *window;
@property NSRect frame;
- (void)setFrameOrigin:(NSPoint)origin;
@end
@interface NSButton : NSView
@property(copy) NSString *title;
@property(nullable, strong) NSImage *image;
@property NSCellImagePosition imagePosition;
@property NSImageScaling imageScaling;
@property NSBezelStyle bezelStyle;
@property(getter=isBordered) BOOL bordered;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(copy) NSAttributedString *attributedTitle;
@end
@interface NSStatusBarButton : NSButton
@end
@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton *button;
@end
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar *systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end
@interface NSAppearance : NSObject
+ (nullable NSAppearance *)appearanceNamed:(NSAppearanceName)name;
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)names;
@end
@class NSApplication;
@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldHandleReopen:(NSApplication *)application hasVisibleWindows:(BOOL)visible;
@end
@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication *sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, strong) NSAppearance *appearance;
@property(readonly, strong) NSAppearance *effectiveAppearance;
- (void)activateIgnoringOtherApps:(BOOL)ignoring;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
@end
extern "C" NSApplication *NSApp;
@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication *currentApplication;
+ (NSArray<NSRunningApplication *> *)runningApplicationsWithBundleIdentifier:(NSString *)identifier;
@end
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
@property(readonly, strong) NSNotificationCenter *notificationCenter;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
- (BOOL)openURL:(NSURL *)url;
@end
@class NSToolbar;
@interface NSToolbarItem : NSObject
- (instancetype)initWithItemIdentifier:(NSToolbarItemIdentifier)identifier;
@property(nullable, strong) NSView *view;
@property(copy) NSString *label;
@property(nullable, copy) NSString *toolTip;
@end
@protocol NSToolbarDelegate <NSObject>
@optional
- (nullable NSToolbarItem *)toolbar:(NSToolbar *)toolbar itemForItemIdentifier:(NSToolbarItemIdentifier)identifier willBeInsertedIntoToolbar:(BOOL)inserted;
- (NSArray<NSToolbarItemIdentifier> *)toolbarDefaultItemIdentifiers:(NSToolbar *)toolbar;
- (NSArray<NSToolbarItemIdentifier> *)toolbarAllowedItemIdentifiers:(NSToolbar *)toolbar;
@end
@interface NSToolbar : NSObject
- (instancetype)initWithIdentifier:(NSString *)identifier;
@property(nullable, weak) id<NSToolbarDelegate> delegate;
@property BOOL showsBaselineSeparator;
@end
@interface NSWindow : NSObject
@property NSWindowStyleMask styleMask;
@property(readonly) NSRect frame;
@property(readonly) NSRect contentLayoutRect;
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
@property NSWindowCollectionBehavior collectionBehavior;
@property(nullable, strong) NSToolbar *toolbar;
@property NSWindowToolbarStyle toolbarStyle;
- (BOOL)setFrameAutosaveName:(NSString *)name;
- (nullable NSButton *)standardWindowButton:(NSWindowButton)button;
@end
#pragma clang assume_nonnull end
