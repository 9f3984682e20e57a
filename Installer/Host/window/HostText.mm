#import "HostText.h"

static NSString *textOf(NSString *key, NSString *table) {
    return [[NSBundle mainBundle] localizedStringForKey:key value:nil table:table];
}

NSString *VantHostText(NSString *key) {
    return textOf(key, nil);
}

NSString *VantNoticeText(NSString *key) {
    return textOf(key, @"Notices");
}

NSString *VantNoticeTextWithCode(NSString *key, int code) {
    NSString *number = [NSString stringWithFormat:@"%d", code];
    return [VantNoticeText(key) stringByReplacingOccurrencesOfString:@"__CODE__" withString:number];
}

NSString *VantCountText(NSUInteger number, NSUInteger count) {
    NSString *text = VantNoticeText(@"Count");
    for (NSArray *part in @[ @[ @"__NUMBER__", @(number) ], @[ @"__COUNT__", @(count) ] ])
        text = [text stringByReplacingOccurrencesOfString:[part objectAtIndex:0]
                                               withString:[[part objectAtIndex:1] description]];
    return text;
}
