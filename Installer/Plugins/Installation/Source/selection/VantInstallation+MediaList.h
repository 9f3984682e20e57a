#import "shell/VantInstallation.h"

/// The media list and the bookkeeping of what was selected. Thread: main.
@interface VantInstallation (MediaList)
/// Makes the lists new that both views keep.
- (void)resetBookkeeping;
/// Makes the location of a selected component the current one; nil for a component without.
- (void)setCurrentLocation:(NSString *)location;
/// Counts the component at the current location, which keeps the host's button 2 disabled.
- (void)countCurrentComponent;
/// Sets the number of selected components.
- (void)countSelectedComponents;
/// Lists every selected component of the media.
- (void)listMediaSelection;
/// Lists what is installed beside the selection: uninstaller, second scan drivers, manual.
- (void)listMediaComponentsBesideSelection;
@end
