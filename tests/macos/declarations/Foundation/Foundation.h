#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>
#include <objc/objc.h>
#include <sys/types.h>

// Values

// https://developer.apple.com/documentation/foundation/nspoint
typedef CGPoint NSPoint;
// https://developer.apple.com/documentation/foundation/nssize
typedef CGSize NSSize;
// https://developer.apple.com/documentation/foundation/nsrect
typedef CGRect NSRect;

extern "C" {

// https://developer.apple.com/documentation/foundation/nsmakepoint
NSPoint NSMakePoint(CGFloat x, CGFloat y);
// https://developer.apple.com/documentation/foundation/nsmakesize
NSSize NSMakeSize(CGFloat w, CGFloat h);
// https://developer.apple.com/documentation/foundation/nsmakerect
NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h);
// https://developer.apple.com/documentation/foundation/nsminx(_:)
CGFloat NSMinX(NSRect rect);
// https://developer.apple.com/documentation/foundation/nsmaxy(_:)
CGFloat NSMaxY(NSRect rect);

} // extern "C"

// https://developer.apple.com/documentation/foundation/nsedgeinsets
typedef struct NSEdgeInsets {
    CGFloat top;
    CGFloat left;
    CGFloat bottom;
    CGFloat right;
} NSEdgeInsets;

// https://developer.apple.com/documentation/foundation/nsrange
typedef struct NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

extern "C" {

// https://developer.apple.com/documentation/foundation/nsmakerange
NSRange NSMakeRange(NSUInteger loc, NSUInteger len);

} // extern "C"

// https://developer.apple.com/documentation/foundation/nstimeinterval
typedef double NSTimeInterval;
// https://developer.apple.com/documentation/foundation/unichar
typedef unsigned short unichar;

@class NSArray<ObjectType>;
@class NSDictionary<KeyType, ObjectType>;

// https://developer.apple.com/documentation/foundation/nscoder
@interface NSCoder : NSObject
@end

// https://developer.apple.com/documentation/foundation/nsstring
@interface NSString : NSObject
@property (readonly) NSUInteger length;
+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length;
- (void)getCharacters:(unichar *)buffer range:(NSRange)range;
@end

// https://developer.apple.com/documentation/foundation/nsnumber
@interface NSNumber : NSObject
@property (readonly) BOOL boolValue;
@property (readonly) double doubleValue;
@property (readonly) long long longLongValue;
@end

// https://developer.apple.com/documentation/foundation/nsdata
@interface NSData : NSObject
@property (readonly) NSUInteger length;
@property (readonly) const void *bytes;
@end

// https://developer.apple.com/documentation/foundation/nsdate
@interface NSDate : NSObject
@property (readonly) NSTimeInterval timeIntervalSince1970;
@end

// https://developer.apple.com/documentation/foundation/nstimezone
@interface NSTimeZone : NSObject
// https://developer.apple.com/documentation/foundation/nstimezone/name
@property (readonly, copy) NSString *name;
@end

// https://developer.apple.com/documentation/foundation/nserrordomain
typedef NSString *NSErrorDomain;
// https://developer.apple.com/documentation/foundation/nscocoaerrordomain
extern "C" const NSErrorDomain NSCocoaErrorDomain;
// https://developer.apple.com/documentation/foundation/nsfilenosuchfileerror-swift.var
enum : NSInteger {
    NSFileNoSuchFileError = 4,
};

// https://developer.apple.com/documentation/foundation/nserror
@interface NSError : NSObject
// https://developer.apple.com/documentation/foundation/nserror/init(domain:code:userinfo:)
+ (instancetype)errorWithDomain:(NSErrorDomain)domain code:(NSInteger)code userInfo:(NSDictionary *)dict;
// https://developer.apple.com/documentation/foundation/nserror/localizeddescription
@property (readonly, copy) NSString *localizedDescription;
@end

// Collections

// https://developer.apple.com/documentation/foundation/nsfastenumerationstate
typedef struct {
    unsigned long state;
    id __unsafe_unretained *itemsPtr;
    unsigned long *mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

// https://developer.apple.com/documentation/foundation/nsfastenumeration
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)len;
@end

// https://developer.apple.com/documentation/foundation/nsarray
@interface NSArray<__covariant ObjectType> : NSObject <NSFastEnumeration>
@property (readonly) ObjectType firstObject;
@property (readonly) NSUInteger count;
// https://developer.apple.com/documentation/foundation/nsarray/array
+ (instancetype)array;
// https://developer.apple.com/documentation/foundation/nsarray/init(objects:count:)
// What a literal of an array is made with.
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)cnt;
@end

// https://developer.apple.com/documentation/foundation/nsmutablearray
@interface NSMutableArray<ObjectType> : NSArray<ObjectType>
- (void)addObject:(ObjectType)anObject;
@end

// https://developer.apple.com/documentation/foundation/nsdictionary
@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSFastEnumeration>
- (ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

// The run loop

// https://developer.apple.com/documentation/objectivec/nsobject-swift.class/perform(_:with:afterdelay:)
// In the default mode of the run loop, and the receiver is kept until then.
@interface NSObject (NSDelayedPerforming)
- (void)performSelector:(SEL)aSelector withObject:(id)anArgument afterDelay:(NSTimeInterval)delay;
// https://developer.apple.com/documentation/objectivec/nsobject-swift.class/cancelpreviousperformrequests(withtarget:)
+ (void)cancelPreviousPerformRequestsWithTarget:(id)aTarget;
@end

// Notifications

// https://developer.apple.com/documentation/foundation/nsnotification/name-swift.struct
typedef NSString *NSNotificationName;

// https://developer.apple.com/documentation/foundation/nsnotification
@interface NSNotification : NSObject
// https://developer.apple.com/documentation/foundation/nsnotification/userinfo
@property (readonly, copy) NSDictionary *userInfo;
@end

// https://developer.apple.com/documentation/foundation/operationqueue
@interface NSOperationQueue : NSObject
@property (class, readonly, strong) NSOperationQueue *mainQueue;
@end

// https://developer.apple.com/documentation/foundation/notificationcenter
@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter *defaultCenter;
// https://developer.apple.com/documentation/foundation/notificationcenter/addobserver(forname:object:queue:using:)
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)obj
                             queue:(NSOperationQueue *)queue
                        usingBlock:(void (^)(NSNotification *notification))block;
- (void)removeObserver:(id)observer;
@end

// Preferences, bundles, places

// https://developer.apple.com/documentation/foundation/userdefaults
@interface NSUserDefaults : NSObject
// https://developer.apple.com/documentation/foundation/userdefaults/init(suitename:)
// Nil for the application's own domain and for the global one.
- (instancetype)initWithSuiteName:(NSString *)suitename NS_DESIGNATED_INITIALIZER;
- (id)objectForKey:(NSString *)defaultName;
// https://developer.apple.com/documentation/foundation/userdefaults/standard
@property (class, readonly, strong) NSUserDefaults *standardUserDefaults;
// https://developer.apple.com/documentation/foundation/userdefaults/stringarray(forkey:)
// Nil for what is no array of strings.
- (NSArray<NSString *> *)stringArrayForKey:(NSString *)defaultName;
// https://developer.apple.com/documentation/foundation/userdefaults/set(_:forkey:)-7a02g
- (void)setObject:(id)value forKey:(NSString *)defaultName;
@end

// https://developer.apple.com/documentation/foundation/bundle
@interface NSBundle : NSObject
@property (readonly, copy) NSString *bundleIdentifier;
+ (instancetype)bundleWithPath:(NSString *)path;
// https://developer.apple.com/documentation/foundation/bundle/object(forinfodictionarykey:)
- (id)objectForInfoDictionaryKey:(NSString *)key;
@end

// https://developer.apple.com/documentation/foundation/urlresourcekey
typedef NSString *NSURLResourceKey;

// https://developer.apple.com/documentation/foundation/nsurl
@interface NSURL : NSObject
// https://developer.apple.com/documentation/foundation/nsurl/init(string:)
// Nil for what is no address; since macOS 14 every percent sign of one with a character that has no place in it is encoded.
+ (instancetype)URLWithString:(NSString *)URLString;
// https://developer.apple.com/documentation/foundation/nsurl/fileurl(withfilesystemrepresentation:isdirectory:relativeto:)
+ (NSURL *)fileURLWithFileSystemRepresentation:(const char *)path
                                   isDirectory:(BOOL)isDir
                                 relativeToURL:(NSURL *)baseURL;
@property (readonly, copy) NSString *absoluteString;
// https://developer.apple.com/documentation/foundation/nsurl/path
// Without a slash at its end.
@property (readonly, copy) NSString *path;
// https://developer.apple.com/documentation/foundation/nsurl/filesystemrepresentation
@property (readonly) const char *fileSystemRepresentation __attribute__((objc_returns_inner_pointer));
// https://developer.apple.com/documentation/foundation/nsurl/getresourcevalue(_:forkey:)
// YES with nil in `value` for what the file system does not tell.
- (BOOL)getResourceValue:(out id *)value forKey:(NSURLResourceKey)key error:(NSError **)error;
@end

extern "C" {

// https://developer.apple.com/documentation/foundation/urlresourcekey/ishiddenkey
extern const NSURLResourceKey NSURLIsHiddenKey;
// https://developer.apple.com/documentation/foundation/urlresourcekey/addedtodirectorydatekey
extern const NSURLResourceKey NSURLAddedToDirectoryDateKey;
// https://developer.apple.com/documentation/foundation/urlresourcekey/contentmodificationdatekey
extern const NSURLResourceKey NSURLContentModificationDateKey;

} // extern "C"

// https://developer.apple.com/documentation/foundation/filemanager/directoryenumerationoptions
typedef NSUInteger NSDirectoryEnumerationOptions;

// https://developer.apple.com/documentation/foundation/filemanager
@interface NSFileManager : NSObject
@property (class, readonly, strong) NSFileManager *defaultManager;
// https://developer.apple.com/documentation/foundation/filemanager/displayname(atpath:)
- (NSString *)displayNameAtPath:(NSString *)path;
// https://developer.apple.com/documentation/foundation/filemanager/fileexists(atpath:)
- (BOOL)fileExistsAtPath:(NSString *)path;
// https://developer.apple.com/documentation/foundation/filemanager/fileexists(atpath:isdirectory:)
- (BOOL)fileExistsAtPath:(NSString *)path isDirectory:(BOOL *)isDirectory;
// https://developer.apple.com/documentation/foundation/filemanager/contentsofdirectory(atpath:)
// Shallow, in no order. Nil where it cannot be listed.
- (NSArray<NSString *> *)contentsOfDirectoryAtPath:(NSString *)path error:(NSError **)error;
// https://developer.apple.com/documentation/foundation/filemanager/contentsofdirectory(at:includingpropertiesforkeys:options:)
// Shallow, in no order. Nil where it cannot be listed.
- (NSArray<NSURL *> *)contentsOfDirectoryAtURL:(NSURL *)url
                    includingPropertiesForKeys:(NSArray<NSURLResourceKey> *)keys
                                       options:(NSDirectoryEnumerationOptions)mask
                                         error:(NSError **)error;
// https://developer.apple.com/documentation/foundation/filemanager/trashitem(at:resultingitemurl:)
- (BOOL)trashItemAtURL:(NSURL *)url resultingItemURL:(NSURL **)outResultingURL error:(NSError **)error;
@end

// https://developer.apple.com/documentation/foundation/filemanager/searchpathdirectory
enum NSSearchPathDirectory : NSUInteger {
    NSApplicationSupportDirectory = 14,
    NSDownloadsDirectory = 15,
    NSTrashDirectory = 102,
};
// https://developer.apple.com/documentation/foundation/filemanager/searchpathdomainmask
typedef NSUInteger NSSearchPathDomainMask;
enum : NSSearchPathDomainMask {
    NSUserDomainMask = 1,
};

extern "C" {

// https://developer.apple.com/documentation/foundation/nssearchpathfordirectoriesindomains(_:_:_:)
NSArray<NSString *> *NSSearchPathForDirectoriesInDomains(
    NSSearchPathDirectory directory, NSSearchPathDomainMask domainMask, BOOL expandTilde);
// https://developer.apple.com/documentation/foundation/nshomedirectory()
NSString *NSHomeDirectory(void);

} // extern "C"
