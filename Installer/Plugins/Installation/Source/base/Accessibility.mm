#import "base/Accessibility.h"

void VantLabel(id element, NSString *words) {
    if ([element respondsToSelector:@selector(setAccessibilityLabel:)])
        [element performSelector:@selector(setAccessibilityLabel:) withObject:words];
}

void VantDescribe(NSView *view, NSString *words) {
    [view setToolTip:words];
    VantLabel(view, words);
}

// Announcements are a window's: the platform reads out none of a single view.
void VantAnnounce(NSView *view, NSString *words) {
    if ([view window] != nil && [words length] > 0)
        NSAccessibilityPostNotificationWithUserInfo([view window], NSAccessibilityAnnouncementRequestedNotification,
                                                    @{NSAccessibilityAnnouncementKey : words});
}
