// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// Declares what Burnwick calls, to compile its backend for macOS where the system's headers are not at hand.
// ../known-names.py compares it with the description of these frameworks, line by line. Never shipped.
#pragma once

#include <Availability.h>
#include <dispatch/dispatch.h>
#include <objc/NSObject.h>

#define NS_ENUM(type, name) enum name : type name; enum name : type
#define NS_OPTIONS(type, name) type name; enum : type
#ifndef API_AVAILABLE
#define API_AVAILABLE(...)
#endif

#pragma clang assume_nonnull begin

@class NSString, NSError, NSURL;
typedef double NSTimeInterval;
typedef unsigned long NSStringEncoding;
typedef NSString *NSNotificationName;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

typedef const void *CFTypeRef;
typedef unsigned long CFTypeID;
typedef unsigned char Boolean;
typedef int OSStatus;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString *CFStringRef;
typedef const struct __attribute__((objc_bridge(NSNumber))) __CFNumber *CFNumberRef;
typedef const struct __attribute__((objc_bridge(NSDictionary))) __CFDictionary *CFDictionaryRef;
extern "C" {
CFTypeID CFGetTypeID(CFTypeRef value);
CFTypeID CFBooleanGetTypeID(void);
Boolean CFNumberIsFloatType(CFNumberRef number);
void NSLog(NSString *format, ...);
extern NSNotificationName const NSSystemClockDidChangeNotification;
}
static inline id _Nullable CFBridgingRelease(CFTypeRef _Nullable value) { return (__bridge_transfer id)value; }

typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable *_Nullable itemsPtr;
    unsigned long *_Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state objects:(id __unsafe_unretained _Nullable [_Nonnull])buffer count:(NSUInteger)len;
@end
@protocol NSCopying
@end

@interface NSObject (KeyValueObserving)
- (void)addObserver:(NSObject *)observer forKeyPath:(NSString *)path options:(NSUInteger)options context:(nullable void *)context;
- (void)removeObserver:(NSObject *)observer forKeyPath:(NSString *)path;
- (void)observeValueForKeyPath:(nullable NSString *)path ofObject:(nullable id)object change:(nullable id)change context:(nullable void *)context;
- (id)mutableCopy;
@end
@interface NSString : NSObject <NSCopying>
@property(nullable, readonly) const char *UTF8String;
- (nullable instancetype)initWithBytes:(const void *)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString *)other;
@end
@interface NSNumber : NSObject <NSCopying>
+ (NSNumber *)numberWithBool:(BOOL)value;
+ (NSNumber *)numberWithLongLong:(long long)value;
+ (NSNumber *)numberWithDouble:(double)value;
@property(readonly) BOOL boolValue;
@property(readonly) long long longLongValue;
@property(readonly) double doubleValue;
@end
@interface NSArray<__covariant T> : NSObject <NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const T _Nonnull [_Nonnull])objects count:(NSUInteger)count;
@end
@interface NSMutableArray<T> : NSArray <T>
+ (instancetype)array;
- (void)addObject:(T)object;
@end
@interface NSDictionary<__covariant K, __covariant V> : NSObject
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const V _Nonnull [_Nonnull])objects forKeys:(const K<NSCopying> _Nonnull [_Nonnull])keys count:(NSUInteger)count;
@end
@interface NSMutableDictionary<K, V> : NSDictionary <K, V>
- (void)setObject:(nullable V)object forKeyedSubscript:(K<NSCopying>)key;
@end
@interface NSData : NSObject
@property(readonly) NSUInteger length;
@property(readonly) const void *bytes;
+ (instancetype)dataWithBytes:(nullable const void *)bytes length:(NSUInteger)length;
@end
@interface NSError : NSObject
@property(readonly, copy) NSString *localizedDescription;
@end
@interface NSURL : NSObject
+ (nullable instancetype)URLWithString:(NSString *)text;
+ (NSURL *)fileURLWithPath:(NSString *)path;
@end
@interface NSFileHandle : NSObject
@property(class, readonly, strong) NSFileHandle *fileHandleWithNullDevice;
@end
@interface NSTask : NSObject
@property(nullable, copy) NSURL *executableURL;
@property(nullable, copy) NSArray<NSString *> *arguments;
@property(nullable, retain) id standardOutput;
@property(nullable, retain) id standardError;
- (BOOL)launchAndReturnError:(NSError *_Nullable *_Nullable)error;
@end
@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle *mainBundle;
@property(nullable, readonly, copy) NSString *bundleIdentifier;
@end
@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults *standardUserDefaults;
- (nullable instancetype)initWithSuiteName:(nullable NSString *)name;
- (nullable id)objectForKey:(NSString *)key;
- (void)setObject:(nullable id)value forKey:(NSString *)key;
@end
@interface NSNotification : NSObject
@property(nullable, readonly, retain) id object;
@end
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)addObserver:(id)observer selector:(SEL)selector name:(nullable NSNotificationName)name object:(nullable id)object;
- (void)removeObserver:(id)observer;
@end
@interface NSDistributedNotificationCenter : NSNotificationCenter
@property(class, readonly, strong) NSDistributedNotificationCenter *defaultCenter;
- (void)postNotificationName:(NSNotificationName)name object:(nullable NSString *)object userInfo:(nullable NSDictionary *)userInfo deliverImmediately:(BOOL)deliverImmediately;
@end
@interface NSAttributedString : NSObject
- (instancetype)initWithString:(NSString *)text attributes:(nullable NSDictionary<NSString *, id> *)attributes;
@end
@interface NSMutableAttributedString : NSAttributedString
- (void)appendAttributedString:(NSAttributedString *)text;
@end
#pragma clang assume_nonnull end
