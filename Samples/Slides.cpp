#include "Slides.hpp"

#include "Catalogue.hpp"

#include <string>

namespace fs = std::filesystem;

namespace vant::samples {

namespace {

struct SlideText {
    const char *code; ///< language code that the host's strings name
    const char16_t *title;
    const char16_t *message;
};

constexpr SlideText texts[] = {
    {"EN", u"Colour that keeps its promise",
     u"Genuine Quorvel supplies are matched to your printer, so the hundredth page looks like the first."},
    {"FN", u"Des couleurs qui tiennent parole",
     u"Les consommables Quorvel sont accordés à votre imprimante : la centième page est aussi belle que la première."},
    {"GR", u"Farben, die Wort halten",
     u"Quorvel-Verbrauchsmaterial ist auf Ihren Drucker abgestimmt. So sieht die hundertste Seite aus wie die erste."},
    {"IT", u"Colori che mantengono la promessa",
     u"I materiali Quorvel sono tarati sulla stampante: la centesima pagina è come la prima."},
    {"SP", u"Colores que cumplen",
     u"Los consumibles Quorvel se ajustan a su impresora: la página cien se ve como la primera."},
    {"PT", u"Cores que cumprem",
     u"Os consumíveis Quorvel são afinados para a sua impressora: a centésima página é igual à primeira."},
    {"DT", u"Kleur die zijn belofte houdt",
     u"Quorvel-verbruiksartikelen zijn op uw printer afgestemd: pagina honderd is even mooi als pagina één."},
    {"KR", u"약속을 지키는 색상",
     u"Quorvel 정품 소모품은 프린터에 맞춰져 있어 백 번째 페이지도 첫 페이지처럼 선명합니다."},
    {"CP", u"始终如一的色彩", u"Quorvel 原装耗材专为您的打印机调校，第一百页与第一页同样出色。"},
    {"CT", u"始終如一的色彩", u"Quorvel 原廠耗材專為您的印表機調校，第一百頁與第一頁同樣出色。"},
};

constexpr SlideText defaults[] = {
    {"EN", u"Scan once, find it for good",
     u"Quorvel scanning files your documents by name and date, in colour and searchable."},
    {"GR", u"Einmal scannen, immer finden",
     u"Quorvel legt Ihre Dokumente nach Name und Datum ab, in Farbe und durchsuchbar."},
};

/// With a byte-order mark, the only way for the pane's reader to know an encoding.
std::string utf16(const std::u16string &text) {
    std::string bytes = "\xFE\xFF";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit & 0xFF);
    }
    return bytes;
}

void writeSlide(const fs::path &folder, const fs::path &picture, const SlideText &text) {
    const std::u16string document = std::u16string(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<SLIDE>\n  <TITLE>") +
                                    text.title + u"</TITLE>\n  <MESSAGE>" + text.message + u"</MESSAGE>\n</SLIDE>\n";
    writeText(folder / text.code / "string.xml", utf16(document));
    fs::copy_file(picture, folder / text.code / "image.png");
}

} // namespace

void writeSlides(const fs::path &media, const fs::path &picture, const fs::path &defaultPicture) {
    for (const auto &text : texts)
        writeSlide(media / "GTA", picture, text);
    for (const auto &text : defaults)
        writeSlide(media / "GTA_Default", defaultPicture, text);
}

} // namespace vant::samples
