// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/MainThreadCalls.h"

#include <cmath>
#include <memory>
#include <utility>

@interface BWToolbarDelegate : NSObject <NSToolbarDelegate> {
@public
    std::function<void()> openSettings;
}
- (void)openSettingsFromToolbar;
- (void)windowDidResize:(NSNotification *)notification;
@end

static NSToolbarItemIdentifier const settingsItem = @"com.burnwick.settings";

static void moveTitleBarButtons(NSWindow *window) {
    constexpr CGFloat firstX = 16;
    constexpr CGFloat distance = 20;
    CGFloat x = firstX;
    for (const NSWindowButton kind : {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton}) {
        NSButton *button = [window standardWindowButton:kind];
        [button setFrameOrigin:NSMakePoint(x, NSMinY(button.frame))];
        x += distance;
    }
}

@implementation BWToolbarDelegate
- (void)windowDidResize:(NSNotification *)notification {
    moveTitleBarButtons(notification.object);
}
- (NSArray<NSToolbarItemIdentifier> *)toolbarDefaultItemIdentifiers:(NSToolbar *)toolbar {
    return @[ NSToolbarFlexibleSpaceItemIdentifier, settingsItem ];
}
- (NSArray<NSToolbarItemIdentifier> *)toolbarAllowedItemIdentifiers:(NSToolbar *)toolbar {
    return [self toolbarDefaultItemIdentifiers:toolbar];
}
- (void)openSettingsFromToolbar {
    dispatch_async(dispatch_get_main_queue(), ^{
      if (self->openSettings)
          self->openSettings();
    });
}
- (NSToolbarItem *)toolbar:(NSToolbar *)toolbar
        itemForItemIdentifier:(NSToolbarItemIdentifier)identifier
    willBeInsertedIntoToolbar:(BOOL)inserted {
    if (![identifier isEqualToString:settingsItem])
        return nil;
    NSImage *image = [NSImage imageNamed:@"settings"];
    if (image == nil)
        image = [NSImage imageWithSystemSymbolName:@"gearshape" accessibilityDescription:@"Settings"];
    [image setTemplate:YES]; // in the toolbar's own colour
    NSButton *button = [[NSButton alloc] initWithFrame:NSMakeRect(0, 0, 28, 28)];
    button.image = image;
    button.imagePosition = NSImageOnly;
    button.title = @"Settings"; // for assistive technology
    button.target = self;
    button.action = @selector(openSettingsFromToolbar);
    button.imageScaling = NSImageScaleProportionallyDown;
    button.bezelStyle = NSBezelStyleTexturedRounded;
    button.bordered = NO;
    NSToolbarItem *item = [[NSToolbarItem alloc] initWithItemIdentifier:identifier];
    item.view = button;
    item.label = @"";
    item.toolTip = @"Settings";
    return item;
}
@end

namespace burnwick {

namespace {

NSWindow *windowOf(std::uintptr_t id) {
    return ((__bridge NSView *)reinterpret_cast<void *>(id)).window; // as Qt documents winId()
}

void coverWithTitleBar(NSWindow *window, NSWindowStyleMask style) {
    window.styleMask = style | NSWindowStyleMaskFullSizeContentView;
    window.titlebarAppearsTransparent = YES;
    window.titleVisibility = NSWindowTitleHidden;
}

int titleBarHeight(NSWindow *window) {
    const CGFloat covered = NSHeight(window.frame) - NSHeight(window.contentLayoutRect);
    return static_cast<int>(std::ceil(covered));
}

class MacWindowChrome final : public WindowChrome {
public:
    ~MacWindowChrome() override {
        [NSNotificationCenter.defaultCenter removeObserver:m_toolbarDelegate];
        m_toolbarDelegate->openSettings = nullptr;
    }

    void decorateDashboard(std::uintptr_t id, std::function<void()> openSettings,
                           HeightHandler onHeight) override {
        NSWindow *window = windowOf(id);
        coverWithTitleBar(window, (window.styleMask & ~NSWindowStyleMaskResizable));
        window.collectionBehavior =
            (window.collectionBehavior & ~NSWindowCollectionBehaviorFullScreenPrimary) |
            NSWindowCollectionBehaviorFullScreenNone;
        [window setFrameAutosaveName:@""];
        m_toolbarDelegate->openSettings = std::move(openSettings);
        NSToolbar *toolbar = [[NSToolbar alloc] initWithIdentifier:@"MainToolbar"];
        toolbar.delegate = m_toolbarDelegate;
        toolbar.showsBaselineSeparator = NO;
        window.toolbar = toolbar;
        window.toolbarStyle = NSWindowToolbarStyleUnified;
        // The system lays the buttons out with the toolbar, and again when the content makes room for it.
        [NSNotificationCenter.defaultCenter addObserver:m_toolbarDelegate
                                               selector:@selector(windowDidResize:)
                                                   name:NSWindowDidResizeNotification
                                                 object:window];
        m_calls.queued([window, onHeight = std::move(onHeight)] {
            moveTitleBarButtons(window);
            onHeight(titleBarHeight(window));
        })();
    }

    void decorateSettings(std::uintptr_t id, HeightHandler onHeight) override {
        NSWindow *window = windowOf(id);
        coverWithTitleBar(window, NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
        m_calls.queued([window, onHeight = std::move(onHeight)] { onHeight(titleBarHeight(window)); })();
    }

private:
    /// The toolbar holds its delegate weakly.
    BWToolbarDelegate *m_toolbarDelegate = [[BWToolbarDelegate alloc] init];
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<WindowChrome> platform::makeWindowChrome() {
    return std::make_unique<MacWindowChrome>();
}

} // namespace burnwick
