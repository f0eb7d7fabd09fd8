// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// Declares what Burnwick calls, to compile its backend for macOS where the system's headers are not at hand.
// ../known-names.py compares it with the description of these frameworks, line by line. Never shipped.
#pragma once

#import <Foundation/Foundation.h>

typedef const struct __attribute__((objc_bridge(NSArray))) __CFArray *CFArrayRef;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef double CFTimeInterval;

typedef struct __FSEventStream *FSEventStreamRef;
typedef const struct __FSEventStream *ConstFSEventStreamRef;
typedef unsigned int FSEventStreamCreateFlags, FSEventStreamEventFlags;
typedef unsigned long long FSEventStreamEventId;
struct FSEventStreamContext {
    long version;
    void *_Nullable info;
    const void *_Nullable (*_Nullable retain)(const void *_Nullable info);
    void (*_Nullable release)(const void *_Nullable info);
    CFStringRef _Nullable (*_Nullable copyDescription)(const void *_Nullable info);
};
typedef void (*FSEventStreamCallback)(ConstFSEventStreamRef _Nonnull stream, void *_Nullable info, size_t count,
                                      void *_Nonnull paths, const FSEventStreamEventFlags *_Nonnull flags,
                                      const FSEventStreamEventId *_Nonnull ids);
enum : FSEventStreamEventId { kFSEventStreamEventIdSinceNow = 0xFFFFFFFFFFFFFFFF };
enum : FSEventStreamCreateFlags {
    kFSEventStreamCreateFlagNoDefer = 0x2,
    kFSEventStreamCreateFlagWatchRoot = 0x4,
    kFSEventStreamCreateFlagFileEvents = 0x10,
};
enum : FSEventStreamEventFlags {
    kFSEventStreamEventFlagMustScanSubDirs = 0x1,
    kFSEventStreamEventFlagUserDropped = 0x2,
    kFSEventStreamEventFlagKernelDropped = 0x4,
    kFSEventStreamEventFlagEventIdsWrapped = 0x8,
    kFSEventStreamEventFlagRootChanged = 0x20,
    kFSEventStreamEventFlagMount = 0x40,
    kFSEventStreamEventFlagUnmount = 0x80,
    kFSEventStreamEventFlagItemIsFile = 0x10000,
    kFSEventStreamEventFlagItemIsDir = 0x20000,
    kFSEventStreamEventFlagItemIsSymlink = 0x40000,
};
extern "C" {
FSEventStreamRef _Nullable FSEventStreamCreate(CFAllocatorRef _Nullable allocator, FSEventStreamCallback _Nonnull callback, FSEventStreamContext *_Nullable context, CFArrayRef _Nonnull pathsToWatch, FSEventStreamEventId sinceWhen, CFTimeInterval latency, FSEventStreamCreateFlags flags);
void FSEventStreamSetDispatchQueue(FSEventStreamRef _Nonnull streamRef, dispatch_queue_t _Nullable q);
Boolean FSEventStreamStart(FSEventStreamRef _Nonnull streamRef);
void FSEventStreamStop(FSEventStreamRef _Nonnull streamRef);
void FSEventStreamInvalidate(FSEventStreamRef _Nonnull streamRef);
void FSEventStreamRelease(FSEventStreamRef _Nonnull streamRef);
}
