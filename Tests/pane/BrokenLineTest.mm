#import "download/VantInstallation+WebDriver.h"

#import "LineSite.h"

#include "Jail.hpp"

using namespace vant::test;
namespace fs = std::filesystem;
using Numbers = std::vector<std::size_t>;
using Texts = std::vector<std::string>;

/// One broken line among sound ones, at the first, a middle and the last place.
class BrokenLine : public LineSite {
protected:
    static constexpr std::size_t size = 20'000;

    static Line sound(std::size_t number) {
        Line line;
        line.reply.body = archive(number, size);
        line.reply.pieceLength = 2'000;
        line.reply.bytesPerSecond = 0.5e6 * static_cast<double>(1 + number * 7 % 5);
        line.reply.jitter = 0.9;
        return line;
    }
    static std::vector<Line> soundLines(std::size_t count) {
        std::vector<Line> lines;
        for (std::size_t number = 0; number < count; ++number)
            lines.push_back(sound(number));
        return lines;
    }
    /// A line that ends in the middle of its archive, so many times.
    static Line brokenAtHalf(std::size_t number, Fault fault, int times) {
        Line line = sound(number);
        line.faulty = line.reply;
        line.faulty.fault = fault;
        line.faulty.faultAfter = line.reply.body.size() / 2;
        line.faults = times;
        return line;
    }
    /// A line on which something else than the archive arrives.
    static Line answeredBy(std::size_t number, int status, const std::string &body, Framing framing) {
        Line line = sound(number);
        line.faulty.status = status;
        line.faulty.body = body;
        line.faulty.framing = framing;
        line.faults = always;
        line.faultyArrives = true;
        return line;
    }

    template<class Make>
    void expectAtEachPlace(std::size_t count, const Make &broken) {
        for (const std::size_t place : {std::size_t{0}, count / 2, count - 1}) {
            @autoreleasepool {
                std::vector<Line> lines = soundLines(count);
                lines[place] = broken(place);
                ASSERT_TRUE(run(lines)) << "broken at " << place << " of " << count;
                expectNoMoreLostThanTheFailuresCost();
            }
            if (HasFailure())
                FAIL() << "broken at " << place << " of " << count;
        }
    }

    static constexpr int always = 99;
};

TEST_F(BrokenLine, AnErrorPageLosesItsOwnArchiveAlone) {
    for (const std::size_t count : {2U, 3U, 10U, 30U}) {
        expectAtEachPlace(
            count, [](std::size_t place) { return answeredBy(place, 404, "<html>not here</html>", Framing::length); });
        EXPECT_EQ(lost(), Numbers{count - 1}) << "the last place came last";
    }
}

TEST_F(BrokenLine, AnArchiveCutWithoutAWordLosesItselfAlone) {
    for (const std::size_t count : {2U, 3U, 10U, 30U}) {
        expectAtEachPlace(count, [](std::size_t place) {
            return answeredBy(place, 200, archive(place, size).substr(0, size / 2), Framing::close);
        });
        EXPECT_EQ(lost(), Numbers{count - 1}) << "the last place came last";
    }
}

TEST_F(BrokenLine, ALineCutShortOfItsLengthLosesWhatItsPlaceCosts) {
    for (const std::size_t count : {2U, 3U, 10U, 30U})
        expectAtEachPlace(count, [](std::size_t place) { return brokenAtHalf(place, Fault::close, always); });
}

TEST_F(BrokenLine, ALineResetAtHalfLosesWhatItsPlaceCosts) {
    for (const std::size_t count : {2U, 3U, 10U, 30U})
        expectAtEachPlace(count, [](std::size_t place) { return brokenAtHalf(place, Fault::reset, always); });
}

TEST_F(BrokenLine, ALineThatStallsBeyondTheTimeOutLosesWhatItsPlaceCosts) {
    shortenTimeOuts(2.0);
    expectAtEachPlace(3, [](std::size_t place) { return brokenAtHalf(place, Fault::stall, 1); });
}

TEST_F(BrokenLine, ALineThatIsBetterTheNextTimeLosesNothingWhenItWasTheLast) {
    for (const std::size_t count : {2U, 3U, 10U, 30U})
        for (const int times : {1, 2}) {
            expectAtEachPlace(count, [times](std::size_t place) { return brokenAtHalf(place, Fault::reset, times); });
            EXPECT_EQ(triesFor(count - 1), times + 1);
            EXPECT_EQ(created().size(), count + static_cast<std::size_t>(times));
        }
}
