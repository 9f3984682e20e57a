#pragma once
#import "shell/VantInstallation.h"
#import "WizardWindow.h"

#include "Timeline.hpp"

/// The host's side of the contract with a page: takes its wishes for the wizard's buttons, hands out the language
/// parser and is told when to go on. Every call is put on the timeline. A page may call from any thread.
@interface HostObserver : NSObject <VantObserver> {
    WizardWindow *window;
    vant::host::Timeline *timeline;
    id parser;
    BOOL continued;
    NSDate *button2Enabled;
}

/// Owns none of its arguments; they must outlive the observer.
- (id)initWithWindow:(WizardWindow *)wizardWindow timeline:(vant::host::Timeline *)runTimeline;

/// YES once the page asked to go on.
- (BOOL)continued;

/// When button 2 was last enabled; nil while it is disabled. Main thread.
- (NSDate *)button2Enabled;

@end
