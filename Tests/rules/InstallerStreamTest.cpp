#include "install/package/InstallerStream.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

using vant::InstallerStream;

namespace {

std::FILE *fileHolding(const std::string &text) {
    std::FILE *file = std::tmpfile();
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
    return file;
}

} // namespace

TEST(InstallerStream, GivesOneLineAtATimeWithItsLineFeed) {
    InstallerStream stream(fileHolding("one\n\ntwo"));
    EXPECT_STREQ(stream.nextLine(), "one\n");
    EXPECT_STREQ(stream.nextLine(), "\n");
    EXPECT_STREQ(stream.nextLine(), "two");
    EXPECT_EQ(stream.nextLine(), nullptr);
    EXPECT_EQ(stream.nextLine(), nullptr);
}

TEST(InstallerStream, CutsLongLinesAfter1023Bytes) {
    InstallerStream stream(fileHolding(std::string(1023, 'a') + "b\n"));
    EXPECT_EQ(std::string(stream.nextLine()), std::string(1023, 'a'));
    EXPECT_STREQ(stream.nextLine(), "b\n");
    EXPECT_EQ(stream.nextLine(), nullptr);
}

TEST(InstallerStream, AnAbsentStreamIsAtItsEnd) {
    InstallerStream stream(nullptr);
    EXPECT_EQ(stream.nextLine(), nullptr);
    stream.drain();
}

TEST(InstallerStream, DrainsToTheEnd) {
    std::FILE *file = fileHolding(std::string(100000, 'x') + "\nlast\n");
    const int observer = dup(fileno(file));
    {
        InstallerStream stream(file);
        stream.drain();
        EXPECT_EQ(stream.nextLine(), nullptr);
        EXPECT_EQ(lseek(observer, 0, SEEK_CUR), 100006);
    }
    close(observer);
}

TEST(InstallerStream, ClosesWhatItOwns) {
    std::FILE *file = fileHolding("text");
    const int descriptor = fileno(file);
    { const InstallerStream stream(file); }
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}
