#pragma once
#import <Foundation/Collections.h>

/// Files, bundles, property lists, the user's defaults.

NS_ASSUME_NONNULL_BEGIN

@class NSURL;

typedef NSString *NSFileAttributeKey;
PLATFORM_EXPORT NSFileAttributeKey const NSFilePosixPermissions;

@interface NSDirectoryEnumerator<ObjectType> : NSEnumerator <ObjectType>
- (void)skipDescendents;
@end

@interface NSFileManager : NSObject
@property (class, readonly) NSFileManager *defaultManager;
@property (readonly, copy) NSString *currentDirectoryPath;
- (BOOL)fileExistsAtPath:(NSString *)path;
- (BOOL)fileExistsAtPath:(NSString *)path isDirectory:(nullable BOOL *)isDirectory;
- (BOOL)isExecutableFileAtPath:(NSString *)path;
- (BOOL)createFileAtPath:(NSString *)path
                contents:(nullable NSData *)contents
              attributes:(nullable NSDictionary<NSFileAttributeKey, id> *)attributes;
- (BOOL)createDirectoryAtPath:(NSString *)path
    withIntermediateDirectories:(BOOL)intermediate
                     attributes:(nullable NSDictionary<NSFileAttributeKey, id> *)attributes
                          error:(NSError **)error API_AVAILABLE(macos(10.5));
- (nullable NSArray<NSString *> *)contentsOfDirectoryAtPath:(NSString *)path
                                                      error:(NSError **)error API_AVAILABLE(macos(10.5));
- (nullable NSArray<NSString *> *)subpathsAtPath:(NSString *)path;
- (nullable NSDirectoryEnumerator<NSString *> *)enumeratorAtPath:(NSString *)path;
- (nullable NSDictionary<NSFileAttributeKey, id> *)attributesOfItemAtPath:(NSString *)path
                                                                    error:(NSError **)error API_AVAILABLE(macos(10.5));
- (BOOL)copyItemAtPath:(NSString *)source
                toPath:(NSString *)destination
                 error:(NSError **)error API_AVAILABLE(macos(10.5));
- (BOOL)moveItemAtPath:(NSString *)source
                toPath:(NSString *)destination
                 error:(NSError **)error API_AVAILABLE(macos(10.5));
- (BOOL)removeItemAtPath:(NSString *)path error:(NSError **)error API_AVAILABLE(macos(10.5));
@end

@interface NSFileHandle : NSObject
- (void)closeFile API_DEPRECATED("Use -closeAndReturnError: instead", macos(10.0, 27.0));
@end

@interface NSFileHandle (Making)
@property (class, readonly) NSFileHandle *fileHandleWithNullDevice;
@property (class, readonly) NSFileHandle *fileHandleWithStandardError;
@end

@interface NSBundle : NSObject
@property (class, readonly) NSBundle *mainBundle;
+ (NSBundle *)bundleForClass:(Class)which;
+ (nullable instancetype)bundleWithPath:(NSString *)path;
@property (readonly, copy) NSString *bundlePath;
@property (nullable, readonly, copy) NSString *resourcePath;
@property (nullable, readonly, copy) NSString *builtInPlugInsPath;
@property (nullable, readonly, copy) NSDictionary<NSString *, id> *infoDictionary;
@property (nullable, readonly) Class principalClass;
- (BOOL)load;
- (nullable NSString *)pathForResource:(nullable NSString *)name ofType:(nullable NSString *)extension;
- (nullable NSString *)pathForResource:(nullable NSString *)name
                                ofType:(nullable NSString *)extension
                           inDirectory:(nullable NSString *)folder;
- (NSString *)localizedStringForKey:(NSString *)key
                              value:(nullable NSString *)value
                              table:(nullable NSString *)table __attribute__((format_arg(1)));
- (nullable id)objectForInfoDictionaryKey:(NSString *)key;
@end

typedef NS_OPTIONS(NSUInteger, NSPropertyListMutabilityOptions) {
    NSPropertyListImmutable = 0,
    NSPropertyListMutableContainers = 1,
    NSPropertyListMutableContainersAndLeaves = 2,
};
typedef NSPropertyListMutabilityOptions NSPropertyListReadOptions;

typedef NS_ENUM(NSUInteger, NSPropertyListFormat) {
    NSPropertyListOpenStepFormat = 1,
    NSPropertyListXMLFormat_v1_0 = 100,
    NSPropertyListBinaryFormat_v1_0 = 200,
};

API_AVAILABLE(macos(10.2))
@interface NSPropertyListSerialization : NSObject
+ (nullable id)propertyListWithData:(NSData *)data
                            options:(NSPropertyListReadOptions)options
                             format:(nullable NSPropertyListFormat *)format
                              error:(NSError **)error API_AVAILABLE(macos(10.6));
+ (nullable NSData *)dataWithPropertyList:(id)list
                                   format:(NSPropertyListFormat)format
                                  options:(NSUInteger)options
                                    error:(NSError **)error API_AVAILABLE(macos(10.6));
@end

@interface NSXMLParser : NSObject
- (instancetype)initWithData:(NSData *)data;
@property (nullable, readonly, copy) NSError *parserError;
@property (readonly) NSInteger lineNumber;
- (BOOL)parse;
@end

@interface NSUserDefaults : NSObject
@property (class, readonly, strong) NSUserDefaults *standardUserDefaults;
- (nullable id)objectForKey:(NSString *)key;
- (BOOL)boolForKey:(NSString *)key;
- (nullable NSString *)stringForKey:(NSString *)key;
- (void)setObject:(nullable id)value forKey:(NSString *)key;
- (void)registerDefaults:(NSDictionary<NSString *, id> *)defaults;
@end

NS_ASSUME_NONNULL_END
