// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <Foundation/Foundation.h>

#include "platform/Platform.h"
#include "platform/macos/rules/NumberRules.h"

#include <QtCore/QHash>

#include <memory>
#include <optional>
#include <variant>

namespace burnwick {

namespace {

struct ObjectOf {
    id operator()(bool value) const { return @(value); }
    id operator()(qint64 value) const { return @(value); }
    id operator()(double value) const { return @(value); }
    id operator()(const QString &value) const { return value.toNSString(); }
    id operator()(const QStringList &value) const {
        NSMutableArray<NSString *> *const texts = [NSMutableArray array];
        for (const QString &text : value)
            [texts addObject:text.toNSString()];
        return texts;
    }
};

std::optional<UserDefaults::Value> valueOfObject(id object) {
    if ([object isKindOfClass:[NSString class]])
        return QString::fromNSString(object);
    if ([object isKindOfClass:[NSArray class]]) {
        QStringList texts;
        for (id item in (NSArray *)object) {
            if (![item isKindOfClass:[NSString class]])
                return std::nullopt;
            texts += QString::fromNSString(item);
        }
        return texts;
    }
    if (![object isKindOfClass:[NSNumber class]])
        return std::nullopt;
    NSNumber *number = object;
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
        return number.boolValue == YES;
    if (CFNumberIsFloatType((__bridge CFNumberRef)number))
        return valueOf(number.doubleValue);
    return static_cast<qint64>(number.longLongValue);
}

NSUserDefaults *sharedDefaults() {
    NSString *const domain = @"com.burnwick";
    // The system refuses a bundle's own domain as a suite. The report is in no bundle.
    if ([NSBundle.mainBundle.bundleIdentifier isEqualToString:domain])
        return NSUserDefaults.standardUserDefaults;
    return [[NSUserDefaults alloc] initWithSuiteName:domain];
}

/// The user's defaults, which the program and the report share. The system writes them and reports no
/// failure.
class MacUserDefaults final : public UserDefaults {
public:
    explicit MacUserDefaults(Access access)
        : m_access(access) {}

    [[nodiscard]] bool contains(const QString &key) const override {
        return m_unsaved.contains(key) || [m_defaults objectForKey:key.toNSString()] != nil;
    }

protected:
    [[nodiscard]] std::optional<Value> value(const QString &key) const override {
        if (const auto unsaved = m_unsaved.constFind(key); unsaved != m_unsaved.constEnd())
            return *unsaved;
        return valueOfObject([m_defaults objectForKey:key.toNSString()]);
    }

    void setValue(const QString &key, const Value &value) override {
        if (m_access == Access::readOnly)
            m_unsaved.insert(key, value);
        else if (this->value(key) != value)
            [m_defaults setObject:std::visit(ObjectOf(), value) forKey:key.toNSString()];
    }

private:
    const Access m_access;
    NSUserDefaults *m_defaults = sharedDefaults();
    QHash<QString, Value> m_unsaved; ///< with read-only access
};

} // namespace

std::unique_ptr<UserDefaults> platform::makeUserDefaults(UserDefaults::Access access) {
    return std::make_unique<MacUserDefaults>(access);
}

} // namespace burnwick
