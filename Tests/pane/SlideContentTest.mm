#import "PaneTest.h"
#import "slides/VantInstallation+SlideContent.h"

#include "Jail.hpp"

using namespace vant::test;
namespace fs = std::filesystem;

class SlideContent : public PaneTest {
protected:
    SlideContent() { setHostString(@"Language Setting", @"EN"); }

    static void writeSlideFile(std::string_view relative, std::string_view content) {
        const fs::path path = temporary("Vantrel") / relative;
        fs::create_directories(path.parent_path());
        writeFile(path, std::string(content));
    }

    /// A picture of 28 by 28 points, told from the built-in ones by its size.
    static void writePicture(std::string_view relative) {
        const fs::path path = temporary("Vantrel") / relative;
        fs::create_directories(path.parent_path());
        fs::copy_file(fs::path(VANT_TEST_BUNDLE) / "Resources" / "Next_Normal.png", path);
    }
};

TEST_F(SlideContent, NothingIsFoundWithoutSlideFolders) {
    createIdlePane();
    EXPECT_EQ([pane getGTAImagePath:nil], nil);
    EXPECT_EQ([pane getDefaultGTAImagePath], nil);
    EXPECT_EQ([pane getGTATitlestring:nil], nil);
    EXPECT_EQ([pane getDefaultGTATitlestring], nil);
    EXPECT_EQ([pane getGTADescString:nil], nil);
    EXPECT_EQ([pane getDefaultGTADescString], nil);
}

TEST_F(SlideContent, TheHostsLanguageCodeNamesTheFolderOfBothSets) {
    createIdlePane();
    writePicture("GTA/EN/image.png");
    writePicture("GTA_Default/EN/image.png");
    EXPECT_EQ(text([pane getGTAImagePath:nil]), temporary("Vantrel/GTA/EN/image.png"));
    EXPECT_EQ(text([pane getGTAImagePath:@"anything"]), temporary("Vantrel/GTA_Default/EN/image.png"));
    EXPECT_EQ(text([pane getDefaultGTAImagePath]), temporary("Vantrel/GTA_Default/EN/image.png"));
}

TEST_F(SlideContent, AnImageFileOfAnyKindCounts) {
    createIdlePane();
    fs::create_directories(temporary("Vantrel/GTA/EN/image.png"));
    EXPECT_NE([pane getGTAImagePath:nil], nil);
}

TEST_F(SlideContent, TitleAndDescriptionComeFromTheTagsOfTheirSet) {
    createIdlePane();
    writeSlideFile("GTA/EN/string.xml", "<TITLE>A</TITLE><TITLE>B</TITLE><MESSAGE>M</MESSAGE>");
    writeSlideFile("GTA_Default/EN/string.xml", "x<TITLE>A<TITLE>B</TITLE>");
    EXPECT_EQ(text([pane getGTATitlestring:nil]), "A");
    EXPECT_EQ(text([pane getGTADescString:nil]), "M");
    EXPECT_EQ(text([pane getDefaultGTATitlestring]), "B");
}

TEST_F(SlideContent, AFileWithoutTheTagIsShownWhole) {
    createIdlePane();
    writeSlideFile("GTA/EN/string.xml", "<MESSAGE>M</MESSAGE>");
    EXPECT_EQ(text([pane getGTATitlestring:nil]), "<MESSAGE>M</MESSAGE>");
    writeSlideFile("GTA/EN/string.xml", "plain");
    EXPECT_EQ(text([pane getGTATitlestring:nil]), "plain");
    EXPECT_EQ(text([pane getGTADescString:nil]), "plain");
}

TEST_F(SlideContent, WhatCannotBeReadAsTextFallsBack) {
    createIdlePane();
    fs::create_directories(temporary("Vantrel/GTA/EN/string.xml"));
    writeSlideFile("GTA_Default/EN/string.xml", "<TITLE>Fallen back</TITLE><MESSAGE>Text</MESSAGE>");
    EXPECT_EQ([pane getGTATitlestring:nil], nil) << "an empty text would be shown";
    EXPECT_EQ([pane getGTADescString:nil], nil);
    EXPECT_EQ(text([pane firstSlideTitle]), "Fallen back");
    EXPECT_EQ(text([pane firstSlideDescription]), "Text");
}

TEST_F(SlideContent, TheMainSetsPictureComesBeforeTheFallBack) {
    createIdlePane();
    writeSlideFile("GTA/EN/image.png", "main");
    writePicture("GTA_Default/EN/image.png");
    EXPECT_EQ(text([pane firstSlideImagePath]), temporary("Vantrel/GTA/EN/image.png"));
    fs::remove(temporary("Vantrel/GTA/EN/image.png"));
    EXPECT_EQ(text([pane firstSlideImagePath]), temporary("Vantrel/GTA_Default/EN/image.png"));
}

TEST_F(SlideContent, AByteOrderMarkSelectsUnicode) {
    createIdlePane();
    writeSlideFile("GTA/EN/string.xml", "\xEF\xBB\xBF<TITLE>정품 토너 é</TITLE>");
    EXPECT_EQ(text([pane getGTATitlestring:nil]), "정품 토너 é");
}

TEST_F(SlideContent, EachItemOfTheFirstPageFallsBackOnItsOwn) {
    createIdlePane();
    [[observer strings] setObject:@"By __MFG__" forKey:@"TONER.DESC"];
    writePicture("GTA/EN/image.png");
    writeSlideFile("GTA_Default/EN/string.xml", "<TITLE>Fallen back</TITLE>");
    EXPECT_EQ([[pane firstSlideImage] size].width, 28);
    EXPECT_EQ(text([pane firstSlideTitle]), "Fallen back");
    writeSlideFile("GTA/EN/string.xml", "<TITLE>Main</TITLE>");
    EXPECT_EQ(text([pane firstSlideTitle]), "Main");
    fs::remove(temporary("Vantrel/GTA/EN/string.xml"));
    fs::remove(temporary("Vantrel/GTA_Default/EN/string.xml"));
    EXPECT_EQ(text([pane firstSlideDescription]), "By Quorvel");
}

TEST_F(SlideContent, TheTonerPictureIsTheLastFallBack) {
    createIdlePane();
    const NSSize size = [[pane firstSlideImage] size];
    EXPECT_EQ(size.width, 270);
    EXPECT_EQ(size.height, 180);
}

TEST_F(SlideContent, EmptyTextOfAFileIsShownAndDoesNotFallBack) {
    createIdlePane();
    [[observer strings] setObject:@"Toner" forKey:@"TONER.TITLE"];
    writeSlideFile("GTA/EN/string.xml", "<TITLE></TITLE><MESSAGE></MESSAGE>");
    EXPECT_EQ(text([pane firstSlideTitle]), "");
    EXPECT_NE([pane firstSlideTitle], nil);
    EXPECT_EQ(text([pane firstSlideDescription]), "");
}

TEST_F(SlideContent, TextOfAFileKeepsThePlaceholder) {
    createIdlePane();
    writeSlideFile("GTA/EN/string.xml", "<TITLE>__MFG__</TITLE>");
    EXPECT_EQ(text([pane firstSlideTitle]), "__MFG__");
}

TEST_F(SlideContent, EveryPlaceholderOfAHostStringBecomesTheVendorsName) {
    createIdlePane();
    [[observer strings] setObject:@"__MFG__ by __MFG__" forKey:@"TONER.TITLE"];
    [[observer strings] setObject:@"__MFG__, __MFG__" forKey:@"TONER.DESC"];
    EXPECT_EQ(text([pane firstSlideTitle]), "Quorvel by Quorvel");
    EXPECT_EQ(text([pane firstSlideDescription]), "Quorvel, Quorvel");
}

TEST_F(SlideContent, AModelRecordWithoutAVendorLeavesThePlaceEmpty) {
    createIdlePane();
    field<NSDictionary *>(pane, "modelInfo") = [@{} retain];
    [[observer strings] setObject:@"Toner by __MFG__!" forKey:@"TONER.TITLE"];
    EXPECT_EQ(text([pane firstSlideTitle]), "Toner by !");
    field<NSDictionary *>(pane, "modelInfo") = [@{@"VendorName" : @7} retain];
    EXPECT_EQ(text([pane firstSlideTitle]), "Toner by !");
}

TEST_F(SlideContent, AHostWithoutALanguageParserGetsEmptyTexts) {
    createIdlePane();
    field<id>(pane, "mObserver") = nil;
    EXPECT_EQ(text([pane firstSlideTitle]), "");
    EXPECT_EQ(text([pane firstSlideDescription]), "");
}
