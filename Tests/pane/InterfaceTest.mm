#import "PaneTest.h"
#import "slides/VantInstallation+SlideContent.h"
#import "slides/VantInstallation+SlideRotation.h"

#include <cmath>

using namespace vant::test;
namespace fs = std::filesystem;

class Interface : public PaneTest {
protected:
    Interface() { createIdlePane(); }

    template<class T>
    T *control(const char *name) {
        return field<T *>(pane, name);
    }

    bool shows(id control, NSString *resource) {
        return [[[control image] TIFFRepresentation] isEqual:[[pane resourceImageNamed:resource] TIFFRepresentation]];
    }

    /// All that a user sees of the pane, by name. The three bars lie on each other by design; one stands for all.
    std::vector<std::pair<std::string, NSView *>> visibleControls() {
        std::vector<std::pair<std::string, NSView *>> controls;
        for (const char *name : {"imageView", "productTitle", "productDesc", "backButton", "radioButton", "nextButton",
                                 "mProgressInfoTF", "mVTPackageInstallationProg"})
            controls.emplace_back(name, control<NSView>(name));
        controls.emplace_back("link", link());
        controls.emplace_back("table", [control<NSTableView>("list1") enclosingScrollView]);
        return controls;
    }

    NSButton *link() {
        for (NSView *view in [[pane contentView] subviews])
            if ([view isKindOfClass:bundleClass(@"VantButton")])
                return (NSButton *)view;
        return nil;
    }

    void expectControlsInPlace() {
        const auto controls = visibleControls();
        const NSRect whole = [[pane contentView] bounds];
        for (std::size_t i = 0; i < controls.size(); ++i) {
            const NSRect frame = [controls[i].second frame];
            EXPECT_TRUE(NSContainsRect(whole, frame)) << controls[i].first << " leaves the pane";
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_FALSE(NSIntersectsRect(frame, [controls[j].second frame]))
                    << controls[i].first << " lies on " << controls[j].first;
        }
    }
};

TEST_F(Interface, EveryControlOfThePaneIsConnected) {
    const std::pair<const char *, Class> controls[] = {
        {"mView", [NSView class]},
        {"list1", [NSTableView class]},
        {"mVTPackageDownloadProg", [NSProgressIndicator class]},
        {"mVTPackageInstallationProg", [NSProgressIndicator class]},
        {"mVTPackageInstallationProgDummy", [NSProgressIndicator class]},
        {"mProgressInfoTF", [NSTextField class]},
        {"imageView", [NSImageView class]},
        {"nextButton", [NSButton class]},
        {"backButton", [NSButton class]},
        {"productTitle", [NSTextField class]},
        {"productDesc", [NSTextField class]},
        {"radioButton", [NSMatrix class]},
    };
    for (const auto &[name, kind] : controls)
        EXPECT_TRUE([control<NSObject>(name) isKindOfClass:kind]) << name;
    EXPECT_NE(link(), nil);
}

TEST_F(Interface, SlideControlsSendTheirTagToChangeImage) {
    const std::pair<const char *, NSInteger> controls[] = {{"radioButton", 0}, {"backButton", 1}, {"nextButton", 2}};
    for (const auto &[name, tag] : controls) {
        auto *each = control<NSControl>(name);
        EXPECT_EQ([each tag], tag) << name;
        EXPECT_EQ((id)[each target], pane) << name;
        EXPECT_EQ(text(NSStringFromSelector([each action])), "changeImage:") << name;
    }
}

TEST_F(Interface, OpensOnTheFirstOfTwoPages) {
    auto *dots = control<NSMatrix>("radioButton");
    EXPECT_EQ([dots numberOfRows], 1);
    EXPECT_EQ([dots numberOfColumns], 2);
    EXPECT_EQ([dots selectedColumn], 0);
    EXPECT_TRUE(shows([dots cellAtRow:0 column:0], @"indicator_selected.png"));
    EXPECT_TRUE(shows([dots cellAtRow:0 column:1], @"Indicator_normal.png"));
    EXPECT_TRUE(shows(control<NSButton>("nextButton"), @"Next_Normal.png"));
}

static NSSize pixels(NSString *path) {
    NSImageRep *picture = [NSImageRep imageRepWithContentsOfFile:path];
    return NSMakeSize(static_cast<CGFloat>([picture pixelsWide]), static_cast<CGFloat>([picture pixelsHigh]));
}

TEST_F(Interface, EveryImageIsThereAtSingleAndDoubleSize) {
    NSBundle *bundle = [NSBundle bundleForClass:paneClass()];
    for (NSString *name in @[
             @"Toner.jpg", @"Mobile.jpg", @"Next_Normal.png", @"Next_Disable.png", @"Back_Normal.png",
             @"Back_Disable.png", @"indicator_selected.png", @"Indicator_normal.png"
         ]) {
        NSString *path = [bundle pathForResource:name ofType:nil];
        ASSERT_NE(path, nil) << text(name);
        NSString *twice =
            [NSString stringWithFormat:@"%@@2x.%@", [path stringByDeletingPathExtension], [path pathExtension]];
        const NSSize size = pixels(path);
        ASSERT_GT(size.width, 0) << text(name);
        EXPECT_TRUE(NSEqualSizes(pixels(twice), NSMakeSize(2 * size.width, 2 * size.height))) << text(name);
    }
}

TEST_F(Interface, AnImageBringsThePixelsOfBothSizesInOneSizeOfPoints) {
    for (NSString *name in @[ @"Toner.jpg", @"Mobile.jpg", @"Next_Normal.png", @"indicator_selected.png" ]) {
        NSImage *image = [pane resourceImageNamed:name];
        std::vector<NSInteger> widths;
        for (NSImageRep *each in [image representations]) {
            widths.push_back([each pixelsWide]);
            EXPECT_TRUE(NSEqualSizes([each size], [image size])) << text(name);
        }
        const auto width = static_cast<NSInteger>([image size].width);
        EXPECT_EQ(widths, (std::vector<NSInteger>{width, 2 * width})) << text(name);
    }
}

TEST_F(Interface, AnOrdinaryScreenIsGivenTheSingleSize) {
    for (NSString *name in @[ @"Toner.jpg", @"Next_Normal.png" ]) {
        NSImage *image = [pane resourceImageNamed:name];
        EXPECT_EQ([[image bestRepresentationForDevice:[[NSScreen mainScreen] deviceDescription]] pixelsWide],
                  static_cast<NSInteger>([image size].width));
    }
}

TEST_F(Interface, AnImageIsLoadedOnce) {
    EXPECT_EQ([pane resourceImageNamed:@"Toner.jpg"], [pane resourceImageNamed:@"Toner.jpg"]);
    EXPECT_EQ([pane resourceImageNamed:@"missing.png"], nil);
}

TEST_F(Interface, TextsCannotBeEdited) {
    for (const char *name : {"mProgressInfoTF", "productTitle", "productDesc"})
        EXPECT_FALSE([control<NSTextField>(name) isEditable] || [control<NSTextField>(name) isSelectable]) << name;
}

TEST_F(Interface, BarsAreShownAndHiddenAtOnce) {
    for (const char *name :
         {"mVTPackageDownloadProg", "mVTPackageInstallationProg", "mVTPackageInstallationProgDummy"}) {
        auto *bar = control<NSProgressIndicator>(name);
        [bar setHidden:NO];
        EXPECT_FALSE([bar isHidden]) << name;
        [bar setHidden:YES];
        EXPECT_TRUE([bar isHidden]) << name;
    }
}

TEST_F(Interface, ControlsKeepTheirPlaceAtEverySize) {
    for (const NSSize size :
         {NSMakeSize(620, 420), NSMakeSize(640, 340), NSMakeSize(700, 470), NSMakeSize(1920, 1000)}) {
        [[pane contentView] setFrameSize:size];
        expectControlsInPlace();
        const NSRect bar = [control<NSView>("mVTPackageInstallationProg") frame];
        EXPECT_EQ(bar.origin.y, 22);
        EXPECT_EQ(bar.size.width, size.width - 40);
        EXPECT_EQ(NSMaxY([control<NSView>("imageView") frame]), size.height - 16);
        EXPECT_EQ([control<NSView>("imageView") frame].size.width, 270);
    }
}

TEST_F(Interface, TheKeysGoFromThePaneThroughAllItsControlsAndEndWithTheLast) {
    NSView *const order[] = {control<NSView>("mView"),
                             control<NSView>("backButton"),
                             control<NSView>("radioButton"),
                             control<NSView>("nextButton"),
                             link(),
                             control<NSView>("list1")};
    for (std::size_t i = 0; i + 1 < std::size(order); ++i)
        EXPECT_EQ([order[i] nextKeyView], order[i + 1]) << i;
    // The host joins the loop here.
    EXPECT_EQ([order[std::size(order) - 1] nextKeyView], nil);
}

TEST_F(Interface, TheTableTakesTheKeysOnlyWhenThereIsSomethingToScroll) {
    auto *list = control<NSTableView>("list1");
    for (const NSUInteger count : {2U, 50U}) {
        NSMutableArray *rows = [[NSMutableArray alloc] init];
        while ([rows count] < count)
            [rows addObject:[[[bundleClass(@"BDObject") alloc] init] autorelease]];
        field<id>(pane, "objects1") = rows;
        [list reloadData];
        EXPECT_EQ([list acceptsFirstResponder], count > 10) << count;
    }
}

TEST_F(Interface, AButtonThatIsDisabledUnderTheKeysHandsThemToTheOther) {
    NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 620, 420)
                                                   styleMask:NSTitledWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setContentView:[pane contentView]];
    auto *next = control<NSButton>("nextButton");
    auto *back = control<NSButton>("backButton");
    [window makeFirstResponder:next];
    [pane changeImage:next];
    EXPECT_EQ((id)[window firstResponder], back);
    [pane changeImage:back];
    EXPECT_EQ((id)[window firstResponder], next);
    [window makeFirstResponder:link()];
    [pane changeImage:next];
    EXPECT_EQ((id)[window firstResponder], link());
}

TEST_F(Interface, ControlsWithoutATextAreDescribed) {
    for (const char *name : {"backButton", "nextButton", "radioButton", "list1", "imageView", "mVTPackageDownloadProg",
                             "mVTPackageInstallationProg", "mVTPackageInstallationProgDummy"})
        EXPECT_GT([[control<NSView>(name) toolTip] length], 0U) << name;
}

TEST_F(Interface, TheIndicatorSaysWhichPageIsUp) {
    auto *dots = control<NSMatrix>("radioButton");
    EXPECT_EQ(text([dots toolTip]), "Page 1 of 2");
    [pane changeImage:control<NSButton>("nextButton")];
    EXPECT_EQ(text([dots toolTip]), "Page 2 of 2");
}

TEST_F(Interface, TheNameColumnFollowsTheTable) {
    auto *list = control<NSTableView>("list1");
    for (const CGFloat width : {620, 1280, 640}) {
        [[pane contentView] setFrameSize:NSMakeSize(width, 420)];
        const NSRect last = [list rectOfColumn:3];
        EXPECT_LE(std::abs(NSMaxX(last) - [[list superview] bounds].size.width), 8) << width;
    }
}

TEST_F(Interface, LongNamesAndStatusTextsEndInAnEllipsis) {
    EXPECT_EQ([[control<NSTextField>("mProgressInfoTF") cell] lineBreakMode], NSLineBreakByTruncatingTail);
    NSTableColumn *names = [control<NSTableView>("list1") tableColumnWithIdentifier:@"name"];
    EXPECT_EQ([[names dataCell] lineBreakMode], NSLineBreakByTruncatingTail);
}

TEST_F(Interface, TextsBeginWhereTheControlsOfTheirColumnDo) {
    const auto lettersOf = [](NSControl *each) {
        return NSMinX([each frame]) + NSMinX([[each cell] titleRectForBounds:[each bounds]]);
    };
    EXPECT_EQ(lettersOf(control<NSTextField>("mProgressInfoTF")),
              NSMinX([[control<NSView>("list1") enclosingScrollView] frame]));
    EXPECT_EQ(lettersOf(control<NSTextField>("mProgressInfoTF")), NSMinX([control<NSView>("imageView") frame]));
    EXPECT_EQ(lettersOf(control<NSTextField>("productTitle")), lettersOf(control<NSTextField>("productDesc")));
    EXPECT_EQ(lettersOf(control<NSTextField>("productTitle")), lettersOf(link()));
}

TEST_F(Interface, TheLinkNamesTheVendorOfTheModelRecord) {
    [model setObject:@"Other & Sons" forKey:@"VendorName"];
    createPane();
    EXPECT_EQ(text([link() title]), "Other & Sons support on the web");
}

TEST_F(Interface, TheCheckBoxesCannotBeChanged) {
    EXPECT_FALSE([[[control<NSTableView>("list1") tableColumnWithIdentifier:@"check"] dataCell] isEnabled]);
}

TEST_F(Interface, TheLinkIsAsWideAsItsWordsAtEverySize) {
    const CGFloat width = [[link() attributedTitle] size].width;
    EXPECT_LE(std::abs([link() bounds].size.width - width), 12);
    const CGFloat before = [link() bounds].size.width;
    [[pane contentView] setFrameSize:NSMakeSize(1280, 900)];
    EXPECT_EQ([link() bounds].size.width, before);
}

TEST_F(Interface, TheLinkIsBlueAndUnderlined) {
    NSAttributedString *title = [link() attributedTitle];
    ASSERT_GT([title length], 0U);
    EXPECT_TRUE([[NSColor blueColor] isEqual:[title attribute:NSForegroundColorAttributeName
                                                        atIndex:0
                                                 effectiveRange:nullptr]]);
    EXPECT_NE([title attribute:NSUnderlineStyleAttributeName atIndex:0 effectiveRange:nullptr], nil);
}

/// What a text needs in a control's width, in the control's font.
static CGFloat heightFor(NSTextField *field, NSString *words) {
    NSCell *cell = [[[field cell] copy] autorelease];
    [cell setStringValue:words];
    return [cell cellSizeForBounds:NSMakeRect(0, 0, [field bounds].size.width, 10000)].height;
}

static NSDictionary *table(const fs::path &folder, const char *name) {
    NSString *content = [NSString stringWithContentsOfFile:ns(folder / (std::string(name) + ".strings"))];
    return [content propertyListFromStringsFileFormat];
}

TEST_F(Interface, NothingIsClippedInAnyLanguage) {
    int languages = 0;
    for (const auto &folder : fs::directory_iterator(VANT_HOST_RESOURCES)) {
        if (folder.path().extension() != ".lproj")
            continue;
        ++languages;
        NSDictionary *words = table(folder.path(), "Localizable");
        for (const char *page : {"TONER", "MOBILE_PRINT"}) {
            const auto check = [&](const char *part, const char *name) {
                NSString *key = [NSString stringWithFormat:@"%s.%s", page, part];
                NSString *filled = [[words objectForKey:key] stringByReplacingOccurrencesOfString:@"__MFG__"
                                                                                       withString:@"Quorvel"];
                ASSERT_GT([filled length], 0U) << folder.path() << ' ' << text(key);
                auto *field = control<NSTextField>(name);
                EXPECT_LE(heightFor(field, filled), [field bounds].size.height) << folder.path() << ' ' << text(key);
            };
            check("TITLE", "productTitle");
            check("DESC", "productDesc");
        }
        NSDictionary *own =
            table(fs::path(VANT_TEST_BUNDLE) / "Resources" / folder.path().filename(), "Localizable-Inst");
        NSAttributedString *label =
            [[[NSAttributedString alloc] initWithString:[own objectForKey:@"SupportLink"]
                                             attributes:@{NSFontAttributeName : [link() font]}] autorelease];
        EXPECT_LE([label size].width, [control<NSView>("productDesc") bounds].size.width) << folder.path();
    }
    EXPECT_EQ(languages, 10);
}
