// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/Text.h"

#include <memory>
#include <optional>
#include <utility>

@interface BWStatusItemTarget : NSObject {
@public
    burnwick::StatusItem::ActivateHandler handler;
}
- (void)openMainWindow;
@end

@implementation BWStatusItemTarget
- (void)openMainWindow {
    [NSApp activateIgnoringOtherApps:YES];
    if (handler)
        handler({});
}
@end

namespace burnwick {

namespace {

NSFontWeight weightOf(TitleSegment::Weight weight) {
    switch (weight) {
    case TitleSegment::Weight::semibold:
        return NSFontWeightSemibold;
    case TitleSegment::Weight::heavy:
        return NSFontWeightHeavy;
    case TitleSegment::Weight::regular:
        break;
    }
    return NSFontWeightRegular;
}

NSAttributedString *attributedTitle(const StatusTitle &title) {
    NSMutableAttributedString *text = [[NSMutableAttributedString alloc] init];
    for (const TitleSegment &segment : title) {
        NSMutableDictionary<NSAttributedStringKey, id> *style = [NSMutableDictionary dictionary];
        style[NSFontAttributeName] = [NSFont systemFontOfSize:statusTitlePixelSize
                                                       weight:weightOf(segment.weight)];
        if (segment.color)
            style[NSForegroundColorAttributeName] = [NSColor colorWithSRGBRed:segment.color->red
                                                                        green:segment.color->green
                                                                         blue:segment.color->blue
                                                                        alpha:1];
        else if (segment.dimmed)
            style[NSForegroundColorAttributeName] =
                [NSColor.controlTextColor colorWithAlphaComponent:dimmedOpacity];
        [text appendAttributedString:[[NSAttributedString alloc] initWithString:toNSString(segment.text)
                                                                     attributes:style]];
    }
    return text;
}

class MacStatusItem final : public StatusItem {
public:
    ~MacStatusItem() override {
        if (m_item != nil)
            [NSStatusBar.systemStatusBar removeStatusItem:m_item];
    }

    void setActivateHandler(ActivateHandler handler) override { m_target->handler = std::move(handler); }

    void show(const StatusItemContent &content) override {
        if (m_shown == content)
            return;
        m_shown = content;
        if (m_item == nil)
            makeItem();
        m_item.button.attributedTitle = attributedTitle(content.title);
    }

private:
    void makeItem() {
        m_item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
        NSImage *icon = [NSImage imageNamed:@"bwIcon"];
        icon.size = NSMakeSize(16, 16);
        [icon setTemplate:YES]; // its property is a keyword of C++
        m_item.button.image = icon;
        m_item.button.imagePosition = NSImageLeft;
        m_item.button.target = m_target;
        m_item.button.action = @selector(openMainWindow);
    }

    BWStatusItemTarget *m_target = [[BWStatusItemTarget alloc] init];
    NSStatusItem *m_item = nil; ///< nil before the first content
    std::optional<StatusItemContent> m_shown;
};

} // namespace

std::unique_ptr<BarExtension> platform::makeBarExtension() {
    return nullptr;
}

std::unique_ptr<StatusItem> platform::makeStatusItem() {
    return std::make_unique<MacStatusItem>();
}

} // namespace burnwick
