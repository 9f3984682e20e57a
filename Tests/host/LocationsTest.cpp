#include "Locations.hpp"

#include <gtest/gtest.h>

using vant::host::absoluteLocation;

TEST(HostLocations, ALocationIsTakenBelowTheBaseUnlessItIsWhole) {
    struct Row {
        const char *location;
        const char *base;
        const char *whole;
    };
    const Row rows[] = {
        {"Packages/Fax.pkg", "/media", "/media/Packages/Fax.pkg"},
        {"Packages/Fax.pkg", "/media/", "/media/Packages/Fax.pkg"},
        {"Packages/Über 50 %.pkg", "/media", "/media/Packages/Über 50 %.pkg"},
        {"/else/Fax.pkg", "/media", "/else/Fax.pkg"},
        {"http://site/Fax.zip", "/media", "http://site/Fax.zip"},
        {"http://site/Fax.zip", "http://other", "http://site/Fax.zip"},
        {"Fax.zip", "http://site:8080/a", "http://site:8080/a/Fax.zip"},
        {"a b/Gerät#1.zip", "http://site", "http://site/a%20b/Ger%C3%A4t%231.zip"},
        {"a%20b.zip", "http://site", "http://site/a%20b.zip"},
        {"", "/media", ""},
        {"Fax.pkg", "", "Fax.pkg"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(absoluteLocation(row.location, row.base), row.whole) << row.location << " below " << row.base;
}
