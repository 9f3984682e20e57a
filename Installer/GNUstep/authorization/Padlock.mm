#import "GNUstep/authorization/Padlock.h"

@implementation VantPadlock

- (void)drawRect:(NSRect)dirty {
    (void)dirty;
    const CGFloat width = NSWidth([self bounds]);
    const CGFloat bodyHeight = NSHeight([self bounds]) * 0.55;
    [self drawShackleAt:NSMakePoint(width / 2, bodyHeight + width * 0.06) radius:width * 0.26 down:bodyHeight];
    NSBezierPath *body = [NSBezierPath bezierPathWithRoundedRect:NSMakeRect(0, 0, width, bodyHeight)
                                                         xRadius:6
                                                         yRadius:6];
    [[NSColor colorWithCalibratedRed:0.91 green:0.70 blue:0.24 alpha:1] set];
    [body fill];
    [[NSColor colorWithCalibratedRed:0.45 green:0.32 blue:0.06 alpha:1] set];
    const CGFloat hole = width * 0.2;
    [[NSBezierPath bezierPathWithOvalInRect:NSMakeRect((width - hole) / 2, (bodyHeight - hole) / 2, hole, hole)] fill];
}

- (void)drawShackleAt:(NSPoint)centre radius:(CGFloat)radius down:(CGFloat)bottom {
    NSBezierPath *shackle = [NSBezierPath bezierPath];
    [shackle moveToPoint:NSMakePoint(centre.x + radius, bottom)];
    [shackle appendBezierPathWithArcWithCenter:centre radius:radius startAngle:0 endAngle:180];
    [shackle lineToPoint:NSMakePoint(centre.x - radius, bottom)];
    [shackle setLineWidth:radius * 0.5];
    [[NSColor colorWithCalibratedWhite:0.55 alpha:1] set];
    [shackle stroke];
}

@end
