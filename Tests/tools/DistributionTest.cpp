#include "GNUstep/tools/package/Distribution.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/package/PackageInfo.hpp"
#include "GNUstep/tools/package/Xml.hpp"

#include <gtest/gtest.h>

namespace vant::tools {

namespace {

using Names = std::vector<std::string>;

/// A distribution with the choices "a" and "b", each with a package of that name.
std::string distribution(const std::string &a, const std::string &b, const std::string &more = "") {
    return "<installer-gui-script><title> T &#38; U </title>"
           "<choices-outline><line choice='b'/><line choice='a'/></choices-outline>"
           "<choice id='a' " +
           a + "><pkg-ref id='a'/></choice><choice id='b' " + b +
           "><pkg-ref id='b'/></choice><pkg-ref id='a'>#a%20file.pkg</pkg-ref><pkg-ref id='b'>b.pkg</pkg-ref>" + more +
           "</installer-gui-script>";
}

Names selected(const std::string &text) {
    Names names;
    for (const auto &component : readDistribution(text).selected)
        names.push_back(component.file);
    return names;
}

std::string refusal(const std::string &text) {
    try {
        static_cast<void>(readDistribution(text));
    } catch (const ExpansionError &error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(Distribution, InstallsItsPackagesInTheOrderOfTheChoices) {
    EXPECT_EQ(selected(distribution("", "")), (Names{"b.pkg", "a file.pkg"}));
    EXPECT_EQ(readDistribution(distribution("", "")).title, "T & U");
}

TEST(Distribution, LeavesOutWhatIsNotSelectedAtTheStart) {
    EXPECT_EQ(selected(distribution("start_selected='false'", "")), Names{"b.pkg"});
    EXPECT_EQ(selected(distribution("", "start_selected='1 &gt; 2'")), Names{"a file.pkg"});
    EXPECT_EQ(selected(distribution("start_selected='true'", "start_selected='!true'")), Names{"a file.pkg"});
}

TEST(Distribution, AChoiceMayDependOnAnother) {
    EXPECT_EQ(selected(distribution("selected='choices.b.selected'", "start_selected='false'")), Names{});
    EXPECT_EQ(selected(distribution("selected='!choices[\"b\"].selected'", "start_selected='false'")),
              Names{"a file.pkg"});
    EXPECT_EQ(selected(distribution("selected='my.choice.selected'", "")), (Names{"b.pkg", "a file.pkg"}));
}

TEST(Distribution, CallsItsOwnFunctions) {
    const std::string script = "<script><![CDATA[function old() { return system.compareVersions('10.9', '10.10') < 0; }"
                               "]]></script>";
    EXPECT_EQ(selected(distribution("start_selected='old()'", "start_selected='!old()'", script)), Names{"a file.pkg"});
}

TEST(Distribution, RefusesWhatItCannotAnswer) {
    const auto sentence = refusal(distribution("start_selected='system.version.ProductVersion &gt; 10'", ""));
    EXPECT_TRUE(sentence.starts_with("The package asks what cannot be answered here")) << sentence;
    EXPECT_FALSE(refusal(distribution("start_selected='nonsense('", "")).empty());
}

TEST(Distribution, AChoiceOutsideOfTheOutlineIsNoChoice) {
    EXPECT_EQ(selected(distribution("", "", "<choice id='c'><pkg-ref id='c'>c.pkg</pkg-ref></choice>")),
              (Names{"b.pkg", "a file.pkg"}));
    EXPECT_EQ(selected("<installer-script><pkg-ref id='a'>a.pkg</pkg-ref></installer-script>"), Names{});
}

TEST(Distribution, NestedLinesAndReferencesInAChoiceCountOnceEach) {
    EXPECT_EQ(selected("<installer-gui-script><choices-outline><line choice='x'><line choice='y'/></line>"
                       "</choices-outline><choice id='x'><pkg-ref id='p'>#p.pkg</pkg-ref></choice>"
                       "<choice id='y'><pkg-ref id='p'/><pkg-ref id='q'>#q.pkg</pkg-ref></choice>"
                       "</installer-gui-script>"),
              (Names{"p.pkg", "q.pkg"}));
}

TEST(Distribution, APackageThatIsNotActiveStaysOut) {
    EXPECT_EQ(selected(distribution("", "", "<pkg-ref id='a' active='false'/>")), Names{"b.pkg"});
}

TEST(Distribution, ItsOwnCheckMayRefuse) {
    EXPECT_EQ(refusal(distribution("", "", "<installation-check script='1 === 2'/>")),
              "The package's own check refuses the installation.");
    EXPECT_EQ(refusal(distribution("", "", "<installation-check script='true'/>")), "");
}

TEST(Distribution, AChoiceMayNameAnotherPlace) {
    EXPECT_EQ(readDistribution(distribution("customLocation='/Other'", "")).selected.at(1).location, "/Other");
}

TEST(Distribution, ThreeThousandChoicesAreReadAtOnce) {
    std::string lines;
    std::string choices;
    for (int i = 0; i < 3000; ++i) {
        const auto name = std::to_string(i);
        lines += "<line choice='" + name + "'/>";
        choices += "<choice id='" + name + "' start_selected='!false'><pkg-ref id='" + name + "'>#" + name +
                   ".pkg</pkg-ref></choice>";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(selected("<installer-gui-script><choices-outline>" + lines + "</choices-outline>" + choices +
                       "</installer-gui-script>")
                  .size(),
              3000U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(PackageInfo, IsReadInWhateverEncoding) {
    const std::string text = "<?xml version='1.0' encoding='UTF-16'?><pkg-info install-location='/A'/>";
    std::string wide = "\xFE\xFF";
    for (const char character : text)
        wide += {'\0', character};
    EXPECT_EQ(readPackageInfo(wide).installLocation, "/A");
    EXPECT_EQ(readPackageInfo("<pkg-info install-location='/&#x42;&#252;'/>").installLocation, "/Bü");
    EXPECT_EQ(readPackageInfo("<pkg-info/>").installLocation, "/");
}

TEST(PackageInfo, NamesItsScripts) {
    const auto info =
        readPackageInfo("<pkg-info><!-- <scripts/> --><payload numberOfFiles='2'/><scripts>"
                        "<preinstall file='./before'/><postinstall file='./after'/></scripts></pkg-info>");
    EXPECT_TRUE(info.hasFiles);
    EXPECT_EQ(info.preinstall, "./before");
    EXPECT_EQ(info.postinstall, "./after");
}

TEST(PackageInfo, IsRefusedWhenItIsSomethingElse) {
    for (const auto *text : {"", "<pkg-info", "<other/>", "<pkg-info a=1/>", "plain"})
        EXPECT_THROW(static_cast<void>(readPackageInfo(text)), ExpansionError) << text;
}

TEST(Xml, HasLimits) {
    std::string deep;
    for (int i = 0; i < 200; ++i)
        deep += "<a>";
    EXPECT_THROW(static_cast<void>(parseXml(deep)), ExpansionError);
    std::string wide = "<a>";
    for (int i = 0; i < 100'001; ++i)
        wide += "<b/>";
    EXPECT_THROW(static_cast<void>(parseXml(wide + "</a>")), ExpansionError);
    EXPECT_THROW(static_cast<void>(parseXml("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&f;</a>")), ExpansionError);
}

} // namespace vant::tools
