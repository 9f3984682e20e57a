#include "install/package/InstallerOutput.hpp"
#include "install/package/InstallerStream.hpp"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <new>
#include <string>
#include <unistd.h>

// Reading a million lines of installer output, against mawk splitting the same bytes and grep counting in them. The
// file is made once, in memory where the machine has such a folder.

namespace {

constexpr int lineCount = 1'000'000;
std::size_t allocations = 0;

std::string makeOutput() {
    std::string path = access("/dev/shm", W_OK) == 0 ? "/dev/shm/vant-output-XXXXXX" : "/tmp/vant-output-XXXXXX";
    std::FILE *file = fdopen(mkstemp(path.data()), "w");
    for (int line = 0; line < lineCount / 2; ++line) {
        std::fprintf(file, "installer:%%%.6f\n", 97.75 * line / (lineCount / 2.0));
        std::fputs("installer:PHASE:Writing files\xE2\x80\xA6\n", file);
    }
    std::fclose(file);
    return path;
}

const std::string &output() {
    static const std::string path = makeOutput();
    return path;
}

void pane(benchmark::State &state) {
    std::size_t lines = 0;
    const std::size_t before = allocations;
    for (auto _ : state) {
        vant::InstallerStream stream(std::fopen(output().c_str(), "r"));
        double sum = 0.0;
        while (const char *line = stream.nextLine()) {
            const auto read = vant::readInstallerLine(line);
            sum += read.percentage ? read.percentage->value : 0.0;
            ++lines;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(lines));
    state.counters["allocations_a_line"] = static_cast<double>(allocations - before) / static_cast<double>(lines);
}

void command(benchmark::State &state, const std::string &words) {
    // Through a pipe: grep stops at the first match when it sees that nobody reads.
    const std::string line = words + " " + output() + " | cat > /dev/null";
    for (auto _ : state)
        if (std::system(line.c_str()) != 0)
            state.SkipWithError(words.c_str());
    state.SetItemsProcessed(state.iterations() * lineCount);
}

} // namespace

void *operator new(std::size_t size) {
    ++allocations;
    if (void *memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept {
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept {
    std::free(memory);
}

int main(int count, char **arguments) {
    benchmark::Initialize(&count, arguments);
    output();
    benchmark::RegisterBenchmark("pane", pane)->Unit(benchmark::kMillisecond)->UseRealTime();
    const auto reference = [](const char *name, const std::string &words) {
        benchmark::RegisterBenchmark(name, [words](benchmark::State &state) { command(state, words); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    reference("mawk", "mawk -F% '{ sum += $2 } END { print sum }'");
    reference("grep", "grep -c '^installer:%'");
    benchmark::RunSpecifiedBenchmarks();
    unlink(output().c_str());
    return 0;
}
