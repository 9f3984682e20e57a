#import "LineSite.h"

#include "Jail.hpp"
#include <algorithm>
#include <random>

using namespace vant::test;
using Sizes = std::vector<std::size_t>;

/// Sound downloads over lines that differ in speed, as real ones do: each archive has to be whole when it is expanded,
/// and each package has to arrive.
class DownloadOrder : public LineSite {
protected:
    static constexpr int runs = 20;
    static constexpr std::size_t least = 3'000;
    static constexpr std::size_t most = 30'000;

    Sizes randomSizes(std::size_t count) {
        Sizes sizes(count);
        for (std::size_t &size : sizes)
            size = std::uniform_int_distribution(least, most)(random_);
        return sizes;
    }
    Sizes risingSizes(std::size_t count) {
        Sizes sizes = randomSizes(count);
        std::sort(sizes.begin(), sizes.end());
        return sizes;
    }
    Sizes fallingSizes(std::size_t count) {
        Sizes sizes = risingSizes(count);
        std::reverse(sizes.begin(), sizes.end());
        return sizes;
    }
    static Sizes equalSizes(std::size_t count) { return Sizes(count, most / 2); }

    std::vector<Line> linesFor(const Sizes &sizes) {
        std::vector<Line> lines;
        for (const std::size_t size : sizes) {
            Line line;
            line.reply.body = archive(lines.size(), size);
            line.reply.pieceLength = 2'000;
            line.reply.bytesPerSecond = std::uniform_real_distribution(0.5e6, 4e6)(random_);
            line.reply.jitter = 0.9;
            lines.push_back(std::move(line));
        }
        return lines;
    }

    void expectAllArrive(const Sizes &sizes, const char *shape) {
        @autoreleasepool {
            ASSERT_TRUE(run(linesFor(sizes))) << shape;
            EXPECT_EQ(lost(), Sizes{}) << shape;
            for (const Expansion &expansion : expansions())
                EXPECT_EQ(expansion.found, Found::Whole) << shape << ": " << expansion.name;
            expectNoMoreLostThanTheFailuresCost();
        }
    }

    void expectAllOf(std::size_t count) {
        for (int number = 0; number < runs && !HasFailure(); ++number) {
            expectAllArrive(randomSizes(count), "random");
            expectAllArrive(risingSizes(count), "rising");
            expectAllArrive(fallingSizes(count), "falling");
            expectAllArrive(equalSizes(count), "equal");
        }
    }

private:
    std::mt19937 random_{20261121};
};

TEST_F(DownloadOrder, OfTwoArchivesNoneIsLostOrExpandedBeforeItIsWhole) {
    expectAllOf(2);
}

TEST_F(DownloadOrder, OfThreeArchivesNoneIsLostOrExpandedBeforeItIsWhole) {
    expectAllOf(3);
}

TEST_F(DownloadOrder, OfTenArchivesNoneIsLostOrExpandedBeforeItIsWhole) {
    expectAllOf(10);
}

TEST_F(DownloadOrder, OfThirtyArchivesNoneIsLostOrExpandedBeforeItIsWhole) {
    expectAllOf(30);
}
