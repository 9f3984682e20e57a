#import <Foundation/Foundation.h>

/// Reading the host's property lists. The files come from outside, so every accessor checks the type that it promises:
/// a value of another type counts as absent.

/// A new array read from the file, autoreleased; nil when the file is missing, unreadable or holds no array.
NSMutableArray *VantArrayFromFile(NSString *path);

/// A new dictionary read from the file, autoreleased; nil when the file is missing, unreadable or holds no dictionary.
NSMutableDictionary *VantDictionaryFromFile(NSString *path);

/// The string under the key, nil when the container is no dictionary or the value no string.
NSString *VantStringForKey(id container, NSString *key);

/// The dictionary under the key, nil when the container is no dictionary or the value no dictionary.
NSDictionary *VantDictionaryForKey(id container, NSString *key);
