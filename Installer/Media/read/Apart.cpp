#include "read/Apart.hpp"

#include "GNUstep/tools/process/Worker.hpp"

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace vant::media {
namespace {

struct Closer {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

bool write(std::FILE *file, const std::string &text) {
    return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

std::string readAll(std::FILE *file) {
    std::string text;
    std::array<char, 16384> buffer{};
    std::rewind(file);
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file))
        text.append(buffer.data(), count);
    return text;
}

} // namespace

ApartResult runApart(const std::function<std::string(const Alive &)> &work) {
    const File answer(std::tmpfile());
    if (!answer)
        throw std::runtime_error("no temporary file can be made");
    const tools::WorkEnd end = tools::inWorker([&](const tools::Watchdog &watchdog) {
        return write(answer.get(), work([&watchdog] { watchdog.progressed(); }));
    });
    if (end == tools::WorkEnd::Interrupted)
        throw std::runtime_error("interrupted");
    if (end == tools::WorkEnd::Done)
        return {.fault = {}, .answer = readAll(answer.get())};
    const std::string sentence(tools::sentenceFor(end));
    return {.fault = sentence.empty() ? "What was read cannot be kept" : sentence, .answer = {}};
}

} // namespace vant::media
