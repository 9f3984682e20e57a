#pragma once
#include "WebSite.h"

#include <algorithm>
#include <mutex>

namespace vant::test {

/// An archive that the site offers, and how its line behaves.
struct Line {
    /// How a reply ends for the download: with a file, as an error page does too, or with a failure.
    enum class End { Arrives, IsRetried, IsFinal };

    HttpReply reply;
    HttpReply faulty = {};
    End faultyEnd = End::IsRetried;
    /// So many requests get `reply`, then so many `faulty`, and all others `reply` again.
    int soundTries = 0;
    int faults = 0;

    /// Whether the request of this number, from 1, gets the faulty reply.
    [[nodiscard]] bool isFaulty(int request) const { return request > soundTries && request <= soundTries + faults; }
    /// Faulty replies among so many.
    [[nodiscard]] std::size_t faultyOf(int requests) const {
        return static_cast<std::size_t>(std::clamp(requests - soundTries, 0, faults));
    }
};

/// What lay in an archive's place when the archive was to be expanded.
enum class Found { Nothing, Whole, OtherContent, HalfWritten };

struct Expansion {
    std::string name;
    Found found;
};

/// A site whose lines have speeds of their own and may break. In place of being expanded by the tool, each archive is
/// looked at, at the moment at which it would be: a whole one brings its package, anything else nothing.
class LineSite : public WebSite {
protected:
    LineSite();

    /// A zip archive with one known package of this size; no two are alike.
    [[nodiscard]] static std::string archive(std::size_t number, std::size_t size);
    [[nodiscard]] static std::string nameOf(std::size_t number) { return std::to_string(number) + ".zip"; }
    [[nodiscard]] static std::filesystem::path fileOf(std::size_t number) { return downloads() / nameOf(number); }

    /// Downloads all of them at once, as the one run of a process would, and waits until every download has ended and
    /// has been announced. False when one has not within the time.
    [[nodiscard]] bool run(const std::vector<Line> &lines);

    /// Fails where the run has lost more than its failures cost, or has expanded an archive half written.
    ///
    /// Each created file has a place, in the order of creation, and each finish opens the next place. The places left
    /// over are therefore the last ones, as many as there are files whose downloads failed; and a place whose file
    /// never became whole brings nothing.
    void expectNoMoreLostThanTheFailuresCost() const;

    /// Numbers of the archives whose package is not in the list.
    [[nodiscard]] std::vector<std::size_t> lost() const;
    /// Names of the created files, in the order of their creation.
    [[nodiscard]] std::vector<std::string> created() const;
    [[nodiscard]] static const std::vector<Expansion> &expansions();
    /// Requests for an archive so far.
    [[nodiscard]] int triesFor(std::size_t number) const;

private:
    void reset();
    [[nodiscard]] HttpReply replyOf(std::size_t number);
    [[nodiscard]] std::size_t replies() const;
    /// Faulty replies that ended so.
    [[nodiscard]] std::size_t faultyReplies(Line::End end) const;
    /// Replies that bring a file to its end.
    [[nodiscard]] std::size_t arrivals() const;
    [[nodiscard]] bool allEnded() const;

    std::vector<Line> lines_;
    mutable std::mutex mutex_;
    std::vector<int> tries_; ///< of each line, under the mutex
};

} // namespace vant::test
