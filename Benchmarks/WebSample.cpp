// Builds what the measured web run downloads, still to be put into archives:  WebSample FOLDER
#include "Catalogue.hpp"

#include <cstdio>
#include <exception>

namespace {

using namespace vant::samples;

// Sizes that differ, so that the archives arrive in a known order. The first seven are installed, or dropped by the
// rules; an archive of an application alone installs nothing.
constexpr Sample downloads[] = {
    sample("Printer Driver.pkg", 400, 10'000'000),
    sample("Printer Manager.pkg", 300, 9'000'000),
    sample("Scan Manager.pkg", 100, 5'000'000),
    sample("Scanmate.pkg", 100, 4'000'000),
    sample("Hueforge.pkg", 200, 7'000'000),
    sample("Scanwick.pkg", 200, 6'000'000),
    sample("Fax.pkg", 200, 8'000'000),
    sample("Uninstaller.pkg", 8, 20'000),
};
constexpr Sample applications[] = {
    {{"Net Setter.app", "", "", Form::Flat}, 100, 2'000'000},
    {{"NetSetter.app", "", "", Form::Flat}, 100, 1'000'000},
    {{"Quorvel Scanner.app", "", "", Form::Flat}, 100, 3'000'000},
};

void build(const std::filesystem::path &folder) {
    for (const Sample &sample : downloads)
        writeSample(folder, sample);
    for (const Sample &sample : applications)
        for (const Item &item : payloadOf(sample))
            if (item.kind == Item::Kind::File)
                writeText(folder / sample.package.name / "Contents" / item.path, item.content);
}

} // namespace

int main(int count, char **arguments) {
    try {
        if (count == 2)
            return build(arguments[1]), 0;
        std::fputs("usage: WebSample FOLDER\n", stderr);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "WebSample: %s\n", error.what());
    }
    return 1;
}
