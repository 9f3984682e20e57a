#pragma once
#import <Foundation/Values.h>

/// Arrays, dictionaries, sets of objects and of indexes.

NS_ASSUME_NONNULL_BEGIN

@class NSEnumerator<ObjectType>;

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSMutableCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
- (ObjectType)objectAtIndex:(NSUInteger)index;
@end

@interface NSArray <ObjectType>(Making)
+ (instancetype)array;
+ (instancetype)arrayWithObject:(ObjectType)object;
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)count;
+ (instancetype)arrayWithObjects:(ObjectType)first, ... NS_REQUIRES_NIL_TERMINATION;
+ (instancetype)arrayWithArray:(NSArray<ObjectType> *)array;
@end

@interface NSArray <ObjectType>(Files)
+ (nullable NSArray<ObjectType> *)arrayWithContentsOfFile:(NSString *)path
    API_DEPRECATED("Use +arrayWithContentsOfURL:error: instead", macos(10.0, 27.2));
- (BOOL)writeToFile:(NSString *)path
         atomically:(BOOL)atomically API_DEPRECATED("Use -writeToURL:error: instead", macos(10.0, 27.0));
@end

@interface NSArray <ObjectType>(Looking)
@property (nullable, nonatomic, readonly) ObjectType firstObject API_AVAILABLE(macos(10.6));
@property (nullable, nonatomic, readonly) ObjectType lastObject;
- (BOOL)containsObject:(ObjectType)object;
- (NSUInteger)indexOfObject:(ObjectType)object;
- (NSUInteger)indexOfObjectIdenticalTo:(ObjectType)object;
- (NSString *)componentsJoinedByString:(NSString *)separator;
- (NSArray<ObjectType> *)subarrayWithRange:(NSRange)range;
- (NSArray<ObjectType> *)arrayByAddingObject:(ObjectType)object;
- (NSArray<ObjectType> *)sortedArrayUsingSelector:(SEL)comparison;
- (void)makeObjectsPerformSelector:(SEL)operation;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)object;
- (void)insertObject:(ObjectType)object atIndex:(NSUInteger)index;
- (void)removeLastObject;
- (void)removeObjectAtIndex:(NSUInteger)index;
- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(ObjectType)object;
@end

@interface NSMutableArray <ObjectType>(Changing)
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;
- (void)addObjectsFromArray:(NSArray<ObjectType> *)array;
- (void)removeAllObjects;
- (void)removeObject:(ObjectType)object;
- (void)removeObjectIdenticalTo:(ObjectType)object;
- (void)setArray:(NSArray<ObjectType> *)array;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType>
    : NSObject <NSCopying, NSMutableCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
- (nullable ObjectType)objectForKey:(KeyType)key;
@end

@interface NSDictionary <KeyType, ObjectType>(Making)
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObject:(ObjectType)object forKey:(KeyType<NSCopying>)key;
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
+ (instancetype)dictionaryWithDictionary:(NSDictionary<KeyType, ObjectType> *)dictionary;
@property (readonly, copy) NSArray<KeyType> *allKeys;
@property (readonly, copy) NSArray<ObjectType> *allValues;
@end

@interface NSDictionary <KeyType, ObjectType>(Files)
- (BOOL)writeToFile:(NSString *)path
         atomically:(BOOL)atomically API_DEPRECATED("Use -writeToURL:error: instead", macos(10.0, 27.0));
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(ObjectType)object forKey:(KeyType<NSCopying>)key;
- (void)removeObjectForKey:(KeyType)key;
@end

@interface NSMutableDictionary <KeyType, ObjectType>(Changing)
+ (instancetype)dictionaryWithCapacity:(NSUInteger)capacity;
+ (nullable NSMutableDictionary<KeyType, ObjectType> *)dictionaryWithContentsOfFile:(NSString *)path;
- (void)addEntriesFromDictionary:(NSDictionary<KeyType, ObjectType> *)dictionary;
- (void)removeAllObjects;
@end

@interface NSSet<__covariant ObjectType> : NSObject <NSCopying, NSMutableCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
@end

@interface NSSet <ObjectType>(Making)
+ (instancetype)set;
+ (instancetype)setWithObject:(ObjectType)object;
+ (instancetype)setWithArray:(NSArray<ObjectType> *)array;
@property (readonly, copy) NSArray<ObjectType> *allObjects;
- (BOOL)containsObject:(ObjectType)object;
@end

@interface NSMutableSet<ObjectType> : NSSet <ObjectType>
- (void)addObject:(ObjectType)object;
- (void)removeObject:(ObjectType)object;
@end

@interface NSIndexSet : NSObject <NSCopying, NSMutableCopying>
+ (instancetype)indexSet;
+ (instancetype)indexSetWithIndex:(NSUInteger)index;
+ (instancetype)indexSetWithIndexesInRange:(NSRange)range;
@property (readonly) NSUInteger count;
@property (readonly) NSUInteger firstIndex;
@property (readonly) NSUInteger lastIndex;
- (NSUInteger)indexGreaterThanIndex:(NSUInteger)index;
- (BOOL)containsIndex:(NSUInteger)index;
@end

@interface NSMutableIndexSet : NSIndexSet
- (void)addIndex:(NSUInteger)index;
- (void)removeIndex:(NSUInteger)index;
- (void)removeAllIndexes;
@end

@interface NSEnumerator<ObjectType> : NSObject <NSFastEnumeration>
- (nullable ObjectType)nextObject;
@end

NS_ASSUME_NONNULL_END
