#import "shell/VantInstallation.h"

/// What the pane tells and asks the host. Every message is guarded by itself: an object that answers it by forwarding
/// will do, and one that does not know it is left alone, which the trace log says. Thread: any; the host hears each
/// message on the thread that sends it.
@interface VantInstallation (HostLink)
- (void)enableHostButton1:(BOOL)enabled;
- (void)enableHostButton2:(BOOL)enabled;
/// Disables and hides the host's button 3: the page can't be cancelled any more.
- (void)withdrawHostButton3;
/// Tells the host to go on to its next page. A host without this operation is told nothing, and that is no fault.
- (void)tellHostToContinue;
/// The host's language parser, nil without one.
- (id)hostLanguageParser;
/// The host's string for a key, as its language parser gives it; nil without a parser.
- (NSString *)hostStringForKey:(NSString *)key;
@end
