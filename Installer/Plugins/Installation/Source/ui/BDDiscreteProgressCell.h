#import <Cocoa/Cocoa.h>

/// Shows a row's bar: every time the cell is drawn it lays the indicator, which must sit in the table already, over
/// itself. A copy of the cell shares the indicator without owning it. Main thread.
@interface BDDiscreteProgressCell : NSTextFieldCell {
    NSProgressIndicator *progress;
}
- (void)drawInteriorWithFrame:(NSRect)cellFrame inView:(NSView *)controlView;
/// Takes shared ownership of the indicator, gives up the one before and sizes the new one to fit. Nil for none.
- (void)setProgress:(NSProgressIndicator *)indicator;
/// The indicator, nil for none.
- (NSProgressIndicator *)progress;
@end
