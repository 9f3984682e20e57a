#pragma once
#include "ArchiveBuilder.hpp"
#include "Jail.hpp"
#include "ToolRun.hpp"

#include <gtest/gtest.h>

namespace vant::test {

using Tree = std::vector<std::string>;

struct Shape {
    const char *name;
    samples::Format format;
    samples::Filter filter;
    const char *option;
};

inline constexpr Shape shapes[] = {
    {"zip", samples::Format::Zip, samples::Filter::None, "-xk"},
    {"cpio", samples::Format::Cpio, samples::Filter::None, "-x"},
    {"cpio.gz", samples::Format::Cpio, samples::Filter::Gzip, "-x"},
    {"cpio.bz2", samples::Format::Cpio, samples::Filter::Bzip2, "-x"},
    {"new cpio", samples::Format::NewCpio, samples::Filter::None, "-x"},
    {"new cpio.gz", samples::Format::NewCpio, samples::Filter::Gzip, "-x"},
};

class Ditto : public testing::Test {
protected:
    std::filesystem::path archive(const Shape &shape, const std::vector<samples::Item> &items) {
        return writeArchive(jail_.path("archive"), shape.format, shape.filter, items);
    }

    ToolRun expand(const Shape &shape, const std::vector<samples::Item> &items) {
        archive(shape, items);
        return ditto(shape.option);
    }

    ToolRun ditto(const std::string &option) {
        return runTool(dittoTool(), {option, jail_.path("archive"), out()}, {{"LC_ALL", "C"}});
    }

    [[nodiscard]] std::filesystem::path out() const { return jail_.path("some/where/out"); }

    Jail jail_;
};

} // namespace vant::test
