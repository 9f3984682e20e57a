#import "RecordingControls.h"

@implementation VantRecordingBar

- (id)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    calls = [[NSMutableArray alloc] init];
    return self;
}

- (void)dealloc {
    [calls release];
    [super dealloc];
}

- (void)startAnimation:(id)sender {
    [calls addObject:@"start"];
    [super startAnimation:sender];
}

- (void)stopAnimation:(id)sender {
    [calls addObject:@"stop"];
    [super stopAnimation:sender];
}

- (NSArray *)calls {
    return calls;
}

@end

@implementation VantRecordingField

- (id)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    texts = [[NSMutableArray alloc] init];
    return self;
}

- (void)dealloc {
    [texts release];
    [super dealloc];
}

- (void)setStringValue:(NSString *)text {
    [texts addObject:text];
    [super setStringValue:text];
}

- (NSArray *)texts {
    return texts;
}

@end
