#pragma once
#import <AppKit/AppKit.h>

/// Asks, in a panel of its own, whether an installation that has not finished is to be stopped; the safe answer is the
/// default one. A question that is open already is not asked twice, and counts as answered with NO. Main thread.
BOOL VantAskWhetherToStop(void);

/// Takes an open question back: it has been overtaken. Main thread.
void VantWithdrawQuestion(void);
