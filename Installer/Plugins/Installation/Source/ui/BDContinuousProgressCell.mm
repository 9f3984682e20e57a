#import "ui/BDContinuousProgressCell.h"

#import "base/Retained.h"
#import "ui/CellGeometry.h"

@implementation BDContinuousProgressCell

- (void)drawInteriorWithFrame:(NSRect)cellFrame inView:(NSView *)controlView {
    [super drawInteriorWithFrame:cellFrame inView:controlView];
    [progress setFrame:vant::nsRect(vant::spinnerFrame(vant::frame(cellFrame)))];
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
