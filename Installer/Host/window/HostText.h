#pragma once
#import <Foundation/Foundation.h>

/// A string of the host's table "Localizable", in the language of this process.
NSString *VantHostText(NSString *key);

/// A string of the host's table "Notices".
NSString *VantNoticeText(NSString *key);

/// The same with an error's number in the place of "__CODE__".
NSString *VantNoticeTextWithCode(NSString *key, int code);

/// "3 of 8" in words.
NSString *VantCountText(NSUInteger number, NSUInteger count);
