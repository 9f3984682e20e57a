#import "ui/BDDiscreteProgressCell.h"

#import "base/Retained.h"
#import "ui/CellGeometry.h"

@implementation BDDiscreteProgressCell

- (void)drawInteriorWithFrame:(NSRect)cellFrame inView:(NSView *)controlView {
    [super drawInteriorWithFrame:cellFrame inView:controlView];
    [progress setFrame:vant::nsRect(vant::barFrame(vant::frame(cellFrame)))];
    [progress sizeToFit];
}

- (void)setProgress:(NSProgressIndicator *)indicator {
    vant::hold(progress, indicator);
    [progress sizeToFit];
}

- (NSProgressIndicator *)progress {
    return progress;
}

@end
