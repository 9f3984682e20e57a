#import <Cocoa/Cocoa.h>

@class VantButton;

/// An object of the nib: gives its controls the images and texts that lie in the plug-in's own
/// bundle, which a nib cannot name in the same way on every platform. Main thread.
@interface VantNibSetup : NSObject {
    IBOutlet NSButton *backButton;
    IBOutlet NSButton *nextButton;
    IBOutlet NSMatrix *pageIndicator;
    IBOutlet NSImageView *slide;
    IBOutlet NSTextField *title;
    IBOutlet NSTextField *slideText;
    IBOutlet NSTextField *status;
    IBOutlet NSProgressIndicator *waitingBar;
    IBOutlet NSProgressIndicator *downloadBar;
    IBOutlet NSProgressIndicator *installationBar;
    IBOutlet NSTableView *table;
    IBOutlet VantButton *link;
}
/// Action of the link: opens the vendor's support page in the user's browser.
- (IBAction)openSupportPage:(id)sender;
@end
