#pragma once
#import <AppKit/AppKit.h>

/// What the wizard window tells of its user. Main thread.
@protocol WizardWindowTarget <NSObject>
/// Button 1 (Go Back), 2 (Continue) or 3 (Cancel) was pressed.
- (void)wizardButtonPressed:(NSInteger)number;
/// The window's close button was pressed.
- (void)wizardWindowClosed;
@end

/// The host's one window: a page title, room for a pane, and the three wizard buttons. Main thread.
@interface WizardWindow : NSObject {
    NSWindow *window;
    NSTextField *titleField;
    NSView *paneArea;
    NSButton *buttons[3];
    id<WizardWindowTarget> target;
}

/// Opens the window, with an empty page. The target is not owned.
- (id)initWithTarget:(id<WizardWindowTarget>)windowTarget;

/// Shows a page; its view fills the pane area and follows the window's size.
- (void)showPage:(NSView *)view title:(NSString *)title;

/// Numbers count from 1.
- (void)setButton:(NSInteger)number enabled:(BOOL)enabled;
- (void)setButton:(NSInteger)number hidden:(BOOL)hidden;

@end
