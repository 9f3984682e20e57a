#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

// An installer that installs nothing and prints as many progress lines as VANT_BENCH_LINES says (2,000), in the form of
// the real tool, flushing each as the real tool does on a stream: as fast as it can, or evenly over the seconds of
// VANT_BENCH_SECONDS.
int main() {
    const char *setting = std::getenv("VANT_BENCH_LINES");
    const int lines = setting == nullptr ? 2000 : std::atoi(setting);
    const char *pace = std::getenv("VANT_BENCH_SECONDS");
    const std::chrono::duration<double> whole(pace == nullptr ? 0.0 : std::atof(pace));
    const auto start = std::chrono::steady_clock::now();
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::puts("installer: Package name is Sample");
    for (int line = 1; line <= lines; ++line) {
        std::this_thread::sleep_until(start + whole * line / lines);
        const double percent = 97.75 * line / lines;
        std::printf("installer:%%%.6f\n", percent);
    }
    std::puts("installer:%100.000000\ninstaller: The install was successful.");
    return 0;
}
