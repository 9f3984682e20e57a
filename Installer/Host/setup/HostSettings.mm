#import "HostSettings.h"

static NSString *absolutePath(NSString *path) {
    if (path == nil || [path isAbsolutePath])
        return path;
    NSString *folder = [[NSFileManager defaultManager] currentDirectoryPath];
    return [[folder stringByAppendingPathComponent:path] stringByStandardizingPath];
}

static NSTimeInterval secondsForKey(NSString *key, NSTimeInterval otherwise) {
    NSString *text = [[NSUserDefaults standardUserDefaults] stringForKey:key];
    return text != nil ? [text doubleValue] : otherwise;
}

static NSString *stringForKey(NSString *key, NSString *otherwise) {
    NSString *text = [[NSUserDefaults standardUserDefaults] stringForKey:key];
    return text != nil ? text : otherwise;
}

HostSettings VantHostSettings(void) {
    NSString *beside = [[[NSBundle mainBundle] bundlePath] stringByDeletingLastPathComponent];
    NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
    return {
        .flow = stringForKey(@"Flow", @"media"),
        .language = stringForKey(@"Language", @"EN"),
        .bundle =
            absolutePath(stringForKey(@"Bundle", [beside stringByAppendingPathComponent:@"VantInstallation.bundle"])),
        .media = absolutePath(stringForKey(@"Media", beside)),
        .webSelection = absolutePath(stringForKey(@"WebSelection", nil)),
        .site = stringForKey(@"Site", nil),
        .output = absolutePath(stringForKey(@"Output", nil)),
        .installRoot = [[[NSProcessInfo processInfo] environment] objectForKey:@"VANT_INSTALL_ROOT"],
        .timeOut = secondsForKey(@"TimeOut", 600),
        .linger = secondsForKey(@"Linger", 1),
        .stillAfter = secondsForKey(@"StillAfter", 60),
        .obeys = [defaults boolForKey:@"Obey"] != NO,
        .debug = [defaults boolForKey:@"Debug"] != NO,
    };
}
