#pragma once
#import "NoticeStrip.h"

/// What the wizard window tells of its user. Main thread.
@protocol WizardWindowTarget <NSObject>
/// Button 1 (Go Back), 2 (Continue) or 3 (Cancel) was pressed.
- (void)wizardButtonPressed:(NSInteger)number;
/// The window's close button, or the one of a notice, was pressed. NO keeps the window open.
- (BOOL)wizardWindowShouldClose;
@end

/// The host's one window: a page title, room for a pane, and the three wizard buttons. Main thread.
@interface WizardWindow : NSObject {
    NSWindow *window;
    NSTextField *titleField;
    NSView *paneArea;
    NoticeStrip *notice;
    NSArray *pageControls;
    NSButton *buttons[3];
    id<WizardWindowTarget> target;
}

/// Opens the window, with an empty page. The target is not owned.
- (id)initWithTarget:(id<WizardWindowTarget>)windowTarget;

/// Shows a page; its view fills the pane area and follows the window's size. The Tab key walks from the page's controls
/// to the wizard's buttons and back; the page's first control has the keyboard.
- (void)showPage:(NSView *)view title:(NSString *)title;

/// Says how far the page is in the window's title: "3 of 8"; nothing for package 0.
- (void)showPackage:(NSUInteger)number of:(NSUInteger)count;

/// Says a sentence between the page and the wizard's buttons; nil takes it away.
- (void)showNotice:(NSString *)text;

/// Numbers count from 1.
- (void)setButton:(NSInteger)number enabled:(BOOL)enabled;
- (void)setButton:(NSInteger)number hidden:(BOOL)hidden;

@end
