#pragma once
#import <Foundation/Basics.h>

/// Strings and attributed strings.

NS_ASSUME_NONNULL_BEGIN

@class NSArray<ObjectType>, NSData, NSDictionary<KeyType, ObjectType>, NSError, NSCharacterSet;

typedef unsigned short unichar;
typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding {
    NSASCIIStringEncoding = 1,
    NSUTF8StringEncoding = 4,
    NSISOLatin1StringEncoding = 5,
    NSUnicodeStringEncoding = 10,
};

typedef NS_OPTIONS(NSUInteger, NSStringCompareOptions) {
    NSCaseInsensitiveSearch = 1,
    NSLiteralSearch = 2,
    NSBackwardsSearch = 4,
    NSAnchoredSearch = 8,
    NSNumericSearch = 64,
};

typedef NS_ENUM(NSInteger, NSComparisonResult) {
    NSOrderedAscending = -1L,
    NSOrderedSame,
    NSOrderedDescending,
};

@interface NSString : NSObject <NSCopying, NSMutableCopying, NSCoding>
@property (readonly) NSUInteger length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSString (Making)
+ (instancetype)string;
+ (instancetype)stringWithString:(NSString *)string;
+ (nullable instancetype)stringWithUTF8String:(const char *)bytes;
+ (instancetype)stringWithFormat:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);
- (instancetype)initWithFormat:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);
- (instancetype)initWithFormat:(NSString *)format arguments:(va_list)arguments NS_FORMAT_FUNCTION(1, 0);
- (nullable instancetype)initWithUTF8String:(const char *)bytes;
- (nullable instancetype)initWithBytes:(const void *)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (nullable instancetype)initWithData:(NSData *)data encoding:(NSStringEncoding)encoding;
@end

@interface NSString (Comparing)
- (BOOL)isEqualToString:(NSString *)string;
- (NSComparisonResult)compare:(NSString *)string;
- (NSComparisonResult)compare:(NSString *)string options:(NSStringCompareOptions)options;
- (NSComparisonResult)caseInsensitiveCompare:(NSString *)string;
- (BOOL)hasPrefix:(NSString *)string;
- (BOOL)hasSuffix:(NSString *)string;
- (NSRange)rangeOfString:(NSString *)string;
@end

@interface NSString (Deriving)
- (NSString *)stringByAppendingString:(NSString *)string;
- (NSString *)stringByAppendingFormat:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);
- (NSString *)stringByTrimmingCharactersInSet:(NSCharacterSet *)set;
- (NSString *)substringFromIndex:(NSUInteger)from;
- (NSString *)substringToIndex:(NSUInteger)to;
- (NSString *)substringWithRange:(NSRange)range;
- (NSArray<NSString *> *)componentsSeparatedByString:(NSString *)separator;
- (NSString *)stringByReplacingOccurrencesOfString:(NSString *)target
                                        withString:(NSString *)replacement API_AVAILABLE(macos(10.5));
@property (readonly) int intValue;
@property (readonly) double doubleValue;
@property (readonly) NSInteger integerValue API_AVAILABLE(macos(10.5));
@property (readonly) BOOL boolValue API_AVAILABLE(macos(10.5));
@property (readonly, copy) NSString *lowercaseString;
@property (readonly, copy) NSString *uppercaseString;
@end

@interface NSString (Bytes)
@property (nullable, readonly) const char *UTF8String;
- (nullable NSData *)dataUsingEncoding:(NSStringEncoding)encoding;
- (nullable NSData *)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
- (BOOL)getCString:(char *)buffer
         maxLength:(NSUInteger)length
          encoding:(NSStringEncoding)encoding API_AVAILABLE(macos(10.4));
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding API_AVAILABLE(macos(10.4));
@end

@interface NSString (Files)
+ (nullable instancetype)stringWithContentsOfFile:(NSString *)path
                                         encoding:(NSStringEncoding)encoding
                                            error:(NSError **)error API_AVAILABLE(macos(10.4));
+ (nullable instancetype)stringWithContentsOfFile:(NSString *)path
                                     usedEncoding:(nullable NSStringEncoding *)encoding
                                            error:(NSError **)error API_AVAILABLE(macos(10.4));
+ (nullable id)stringWithContentsOfFile:(NSString *)path
    API_DEPRECATED("Use +stringWithContentsOfFile:encoding:error: instead", macos(10.0, 10.4));
- (BOOL)writeToFile:(NSString *)path
         atomically:(BOOL)atomically
           encoding:(NSStringEncoding)encoding
              error:(NSError **)error API_AVAILABLE(macos(10.4));
@end

@interface NSString (PropertyLists)
- (id)propertyList;
- (nullable NSDictionary *)propertyListFromStringsFileFormat;
@end

@interface NSString (Paths)
@property (readonly, getter=isAbsolutePath) BOOL absolutePath;
@property (readonly, copy) NSString *lastPathComponent;
@property (readonly, copy) NSString *pathExtension;
@property (readonly, copy) NSString *stringByDeletingLastPathComponent;
@property (readonly, copy) NSString *stringByDeletingPathExtension;
@property (readonly, copy) NSString *stringByExpandingTildeInPath;
@property (readonly, copy) NSString *stringByStandardizingPath;
@property (readonly) const char *fileSystemRepresentation;
- (NSString *)stringByAppendingPathComponent:(NSString *)component;
- (nullable NSString *)stringByAppendingPathExtension:(NSString *)extension;
@end

@interface NSCharacterSet : NSObject <NSCopying, NSMutableCopying>
@property (class, readonly, copy) NSCharacterSet *whitespaceCharacterSet;
@end

@interface NSMutableString : NSString
- (void)replaceCharactersInRange:(NSRange)range withString:(NSString *)string;
@end

@interface NSMutableString (Changing)
- (void)appendString:(NSString *)string;
- (void)appendFormat:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);
- (void)setString:(NSString *)string;
@end

typedef NSString *NSAttributedStringKey;

@interface NSAttributedString : NSObject <NSCopying, NSMutableCopying>
@property (readonly, copy) NSString *string;
@end

@interface NSAttributedString (Making)
@property (readonly) NSUInteger length;
- (instancetype)initWithString:(NSString *)string;
- (instancetype)initWithString:(NSString *)string
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id> *)attributes;
@end

@interface NSMutableAttributedString : NSAttributedString
@end

@interface NSMutableAttributedString (Changing)
- (void)addAttribute:(NSAttributedStringKey)name value:(id)value range:(NSRange)range;
- (void)addAttributes:(NSDictionary<NSAttributedStringKey, id> *)attributes range:(NSRange)range;
@end

PLATFORM_EXPORT NSString *NSHomeDirectory(void);
PLATFORM_EXPORT NSString *NSTemporaryDirectory(void);

NS_ASSUME_NONNULL_END
