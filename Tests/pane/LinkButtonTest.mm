#import "PaneTest.h"
#import "ui/VantButton.h"

using namespace vant::test;

static int inherited = 0;

static void countInherited(id, SEL, id) {
    ++inherited;
}

static NSColor *colourOfInheritedPress = nil;

static void noteInheritedPress(id button, SEL, NSEvent *) {
    colourOfInheritedPress = [[button attributedTitle] attribute:NSForegroundColorAttributeName
                                                         atIndex:0
                                                  effectiveRange:nullptr];
}

class LinkButton : public PaneTest {
protected:
    LinkButton() {
        createPane(nil);
        button = [[bundleClass(@"VantButton") alloc] initWithFrame:frame];
        NSDictionary *attributes = @{NSFontAttributeName : [NSFont systemFontOfSize:21], @"mark" : @"kept"};
        [button setAttributedTitle:[[[NSAttributedString alloc] initWithString:@"A link"
                                                                    attributes:attributes] autorelease]];
    }

    NSColor *colourAt(NSUInteger index) {
        return [[button attributedTitle] attribute:NSForegroundColorAttributeName atIndex:index effectiveRange:nullptr];
    }
    NSTrackingArea *area() { return field<NSTrackingArea *>(button, "_trackingArea"); }

    static constexpr NSRect frame = {{30, 40}, {100, 20}};
    VantButton *button;
};

TEST_F(LinkButton, HoveringTurnsTheWholeTitleRedAndLeavingTurnsItBlue) {
    [button mouseEntered:nil];
    EXPECT_TRUE([colourAt(0) isEqual:[NSColor redColor]]);
    EXPECT_TRUE([colourAt(5) isEqual:[NSColor redColor]]);
    [button mouseExited:nil];
    EXPECT_TRUE([colourAt(0) isEqual:[NSColor blueColor]]);
    EXPECT_TRUE([colourAt(5) isEqual:[NSColor blueColor]]);
}

TEST_F(LinkButton, AColourKeepsFontAndOtherAttributes) {
    [button setTextColor:[NSColor greenColor]];
    NSDictionary *attributes = [[button attributedTitle] attributesAtIndex:2 effectiveRange:nullptr];
    EXPECT_EQ([[attributes objectForKey:NSFontAttributeName] pointSize], 21);
    EXPECT_EQ(text([attributes objectForKey:@"mark"]), "kept");
    EXPECT_EQ(text([button title]), "A link");
}

TEST_F(LinkButton, AnEmptyTitleTakesAColourWithoutAFault) {
    [button setAttributedTitle:[[[NSAttributedString alloc] initWithString:@""] autorelease]];
    [button setTextColor:[NSColor redColor]];
    EXPECT_EQ([[button attributedTitle] length], 0U);
}

TEST_F(LinkButton, IsTrackedForHoverAndCursorInTheKeyWindowOnly) {
    EXPECT_EQ([area() options], 37U);
    EXPECT_EQ([area() options], NSTrackingMouseEnteredAndExited | NSTrackingCursorUpdate | NSTrackingActiveInKeyWindow);
    EXPECT_EQ([area() owner], button);
    EXPECT_EQ([area() userInfo], nil);
}

TEST_F(LinkButton, TracksItsFrameAsIfItWereItsBoundsUntilTheFirstUpdate) {
    EXPECT_TRUE(NSEqualRects([area() rect], frame));
    [button updateTrackingAreas];
    EXPECT_TRUE(NSEqualRects([area() rect], [button bounds]));
}

TEST_F(LinkButton, AnUpdateReplacesTheAreaByOneOverTheNewBounds) {
    NSTrackingArea *before = [area() retain];
    [button setFrameSize:NSMakeSize(55, 12)];
    [button updateTrackingAreas];
    EXPECT_TRUE(NSEqualRects([area() rect], NSMakeRect(0, 0, 55, 12)));
    EXPECT_EQ([[button trackingAreas] count], 1U);
    EXPECT_EQ([[button trackingAreas] lastObject], area());
    EXPECT_NE(area(), before);
    EXPECT_EQ([before retainCount], 1U) << "the area before is given up";
}

TEST_F(LinkButton, TheInheritedHandlingIsLeftOut) {
    // It would set a cursor of its own, and update areas that the button keeps itself.
    for (SEL operation : { @selector(updateTrackingAreas), @selector(cursorUpdate:) })
        class_replaceMethod([NSButton class], operation, reinterpret_cast<IMP>(countInherited), "v@:@");
    [button updateTrackingAreas];
    [button cursorUpdate:nil];
    EXPECT_EQ(inherited, 0);
}

TEST_F(LinkButton, TheCursorBecomesAPointingHand) {
    [[NSCursor arrowCursor] set];
    [button cursorUpdate:nil];
    EXPECT_EQ([NSCursor currentCursor], [NSCursor pointingHandCursor]);
}

TEST_F(LinkButton, APressTurnsTheTitleBlueWhileThePointerIsStillInside) {
    NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 300, 200)
                                                   styleMask:NSTitledWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [[window contentView] addSubview:button];
    [window orderFront:nil];
    [button mouseEntered:nil];
    const auto mouse = [&](NSEventType type) {
        return [NSEvent mouseEventWithType:type
                                  location:NSMakePoint(60, 50)
                             modifierFlags:0
                                 timestamp:0
                              windowNumber:[window windowNumber]
                                   context:nil
                               eventNumber:0
                                clickCount:1
                                  pressure:0];
    };
    [NSApp postEvent:mouse(NSLeftMouseUp) atStart:NO];
    [button mouseDown:mouse(NSLeftMouseDown)];
    EXPECT_TRUE([colourAt(0) isEqual:[NSColor blueColor]]);
}

TEST_F(LinkButton, APressTurnsTheTitleBlueBeforeTheInheritedHandling) {
    // The inherited handling sends the action, and returns only when that has been done.
    class_replaceMethod([NSButton class], @selector(mouseDown:), reinterpret_cast<IMP>(noteInheritedPress), "v@:@");
    [button mouseEntered:nil];
    [button mouseDown:nil];
    ASSERT_NE(colourOfInheritedPress, nil);
    EXPECT_TRUE([colourOfInheritedPress isEqual:[NSColor blueColor]]);
}
