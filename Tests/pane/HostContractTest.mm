#import "PaneTest.h"

using namespace vant::test;

class HostContract : public PaneTest {};

TEST_F(HostContract, ThePaneIsReturnedEvenWithoutAModelRecord) {
    EXPECT_NE(createPane(nil), nil);
}

TEST_F(HostContract, ContentViewIsTheRootViewOfTheInterface) {
    createPane(nil);
    ASSERT_NE([pane contentView], nil);
    EXPECT_EQ([pane contentView], field<NSView *>(pane, "mView"));
}

TEST_F(HostContract, WindowTitleComesFromTheHostsOwnBundle) {
    createPane(nil);
    EXPECT_EQ(text([pane windowTitle]), "Installing Software");
}

TEST_F(HostContract, ButtonsAnswerStringsAndOnlyARefusedPromptChangesThem) {
    createPane(nil);
    EXPECT_EQ(text([pane isPluginValid]), "YES");
    EXPECT_EQ(text([pane performButton3Action]), "0");
    field<BOOL>(pane, "mAuthCancelledOrError") = YES;
    EXPECT_EQ(text([pane isPluginValid]), "NO");
    EXPECT_EQ(text([pane performButton1Action]), "0");
    EXPECT_EQ(text([pane performButton2Action]), "0");
    EXPECT_EQ(text([pane performButton3Action]), "3");
}
