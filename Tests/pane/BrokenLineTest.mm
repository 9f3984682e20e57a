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
        line.faultyEnd = Line::End::Arrives;
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

    /// The archive started last is whole early, but its finish is held by line 1, whose file was made before. Line 0
    /// breaks meanwhile, and the retry writes the archive started last anew, by its faulty reply.
    std::vector<Line> linesWithARetryOfAHeldArchive() const {
        std::vector<Line> lines = soundLines(3);
        lines[0] = brokenAtHalf(0, Fault::close, always);
        lines[0].faulty.beforeHeader = [] { holdUntil([] { return isWhole(2); }); };
        lines[1].reply.atHalf = [this] { holdUntil([this] { return triesFor(2) > 1 && !isWhole(2); }); };
        lines[2].reply.beforeHeader = [] { holdUntil([] { return fs::exists(fileOf(1)); }); };
        lines[2].soundTries = 1;
        lines[2].faults = always;
        return lines;
    }
    /// Whether a sound archive lies complete in the download folder.
    static bool isWhole(std::size_t number) {
        std::error_code none;
        return fs::file_size(fileOf(number), none) == archive(number, size).size();
    }

    static constexpr int always = 99;
};

TEST_F(BrokenLine, AnErrorPageLosesItsOwnArchiveAlone) {
    for (const std::size_t count : {2U, 3U, 10U, 30U}) {
        expectAtEachPlace(
            count, [](std::size_t place) { return answeredBy(place, 404, "<html>not here</html>", Framing::length); });
        EXPECT_EQ(lost(), Numbers{count - 1}) << "in the run whose last line was broken";
    }
}

TEST_F(BrokenLine, AnArchiveCutWithoutAWordLosesItselfAlone) {
    for (const std::size_t count : {2U, 3U, 10U, 30U}) {
        expectAtEachPlace(count, [](std::size_t place) {
            return answeredBy(place, 200, archive(place, size).substr(0, size / 2), Framing::close);
        });
        EXPECT_EQ(lost(), Numbers{count - 1}) << "in the run whose last line was broken";
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

// What waits for what, moment by moment

TEST_F(BrokenLine, AHeldFinishIsReleasedByTheFailureThatItWaitedFor) {
    // The first to have a file ends last, in a failure that is never retried: its coded body is not whole.
    std::vector<Line> lines = soundLines(2);
    lines[0].faulty.body = gzipStored(lines[0].reply.body).substr(0, size / 2);
    lines[0].faulty.fields = {{"Content-Encoding", "gzip"}};
    lines[0].faulty.pieceLength = 1'000;
    lines[0].faulty.atHalf = [] { holdUntil([] { return isWhole(1); }); };
    lines[0].faultyEnd = Line::End::IsFinal;
    lines[0].faults = always;
    lines[1].reply.beforeHeader = [] { holdUntil([] { return fs::exists(fileOf(0)); }); };
    ASSERT_TRUE(run(lines));
    expectNoMoreLostThanTheFailuresCost();
    EXPECT_EQ(created(), (Texts{nameOf(0), nameOf(1)}));
    EXPECT_EQ(lost(), (Numbers{0, 1})) << "the one finish opens the failed file's place";
}

TEST_F(BrokenLine, AnArchiveThatARetryWritesAnewIsExpandedOnceItIsWholeAgain) {
    std::vector<Line> lines = linesWithARetryOfAHeldArchive();
    lines[2].faulty = std::exchange(lines[2].reply, sound(2).reply);
    lines[2].faultyEnd = Line::End::Arrives;
    lines[2].soundTries = 0;
    lines[2].faults = 1;
    lines[2].reply.atHalf = [] { holdUntil([] { return fs::exists(downloads() / "1"); }); };
    ASSERT_TRUE(run(lines));
    expectNoMoreLostThanTheFailuresCost();
    EXPECT_EQ(created(), (Texts{nameOf(1), nameOf(2), nameOf(0), nameOf(2)}));
    EXPECT_EQ(lost(), Numbers{0});
}

TEST_F(BrokenLine, ARetryThatFailsTakesTheArchiveThatItWroteAnewWithIt) {
    std::vector<Line> lines = linesWithARetryOfAHeldArchive();
    lines[2].faulty = brokenAtHalf(2, Fault::close, always).faulty;
    ASSERT_TRUE(run(lines));
    expectNoMoreLostThanTheFailuresCost();
    EXPECT_EQ(created(), (Texts{nameOf(1), nameOf(2), nameOf(0), nameOf(2), nameOf(2)}));
    EXPECT_EQ(expansions().back().found, Found::Nothing);
    EXPECT_EQ(lost(), (Numbers{0, 2}));
}
