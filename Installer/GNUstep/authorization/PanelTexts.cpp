#include "GNUstep/authorization/PanelTexts.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vant {
namespace {

constexpr std::array<PanelTexts, 10> texts = {{
    {.language = "en",
     .title = "Administrator Rights",
     .headline = "%@ wants to make changes.",
     .detail = "It is about to install software for all users of this computer.",
     .userName = "User name:",
     .grant = "OK",
     .cancel = "Cancel"},
    {.language = "fr",
     .title = "Droits d’administrateur",
     .headline = "%@ souhaite effectuer des modifications.",
     .detail = "Des logiciels vont être installés pour tous les utilisateurs de cet ordinateur.",
     .userName = "Nom d’utilisateur :",
     .grant = "OK",
     .cancel = "Annuler"},
    {.language = "de",
     .title = "Administratorrechte",
     .headline = "%@ möchte Änderungen vornehmen.",
     .detail = "Es soll Software für alle Benutzer dieses Computers installiert werden.",
     .userName = "Benutzername:",
     .grant = "OK",
     .cancel = "Abbrechen"},
    {.language = "it",
     .title = "Diritti di amministratore",
     .headline = "%@ vuole apportare modifiche.",
     .detail = "Sta per installare software per tutti gli utenti di questo computer.",
     .userName = "Nome utente:",
     .grant = "OK",
     .cancel = "Annulla"},
    {.language = "es",
     .title = "Derechos de administrador",
     .headline = "%@ quiere realizar cambios.",
     .detail = "Se va a instalar software para todos los usuarios de este ordenador.",
     .userName = "Nombre de usuario:",
     .grant = "Aceptar",
     .cancel = "Cancelar"},
    {.language = "pt",
     .title = "Direitos de administrador",
     .headline = "%@ pretende fazer alterações.",
     .detail = "Será instalado software para todas as contas deste computador.",
     .userName = "Nome da conta:",
     .grant = "OK",
     .cancel = "Cancelar"},
    {.language = "nl",
     .title = "Beheerdersrechten",
     .headline = "%@ wil wijzigingen aanbrengen.",
     .detail = "Er wordt software geïnstalleerd voor alle gebruikers van deze computer.",
     .userName = "Gebruikersnaam:",
     .grant = "OK",
     .cancel = "Annuleer"},
    {.language = "ko",
     .title = "관리자 권한",
     .headline = "%@에서 변경하려고 합니다.",
     .detail = "이 컴퓨터의 모든 사용자를 위한 소프트웨어를 설치하려고 합니다.",
     .userName = "사용자 이름:",
     .grant = "확인",
     .cancel = "취소"},
    {.language = "zh-Hans",
     .title = "管理员权限",
     .headline = "“%@”想要进行更改。",
     .detail = "即将为这台电脑的所有用户安装软件。",
     .userName = "用户名：",
     .grant = "好",
     .cancel = "取消"},
    {.language = "zh-Hant",
     .title = "管理者權限",
     .headline = "「%@」想要進行更動。",
     .detail = "即將為這部電腦的所有使用者安裝軟體。",
     .userName = "使用者名稱：",
     .grant = "好",
     .cancel = "取消"},
}};

// clang-format off
constexpr auto otherNames = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"English",            "en"},
    {"French",             "fr"},
    {"German",             "de"},
    {"Italian",            "it"},
    {"Spanish",            "es"},
    {"Portuguese",         "pt"},
    {"Dutch",              "nl"},
    {"Korean",             "ko"},
    {"SimplifiedChinese",  "zh-Hans"},
    {"TraditionalChinese", "zh-Hant"},
    {"zh_TW",              "zh-Hant"},
    {"zh_HK",              "zh-Hant"},
    {"zh_MO",              "zh-Hant"},
    {"zh",                 "zh-Hans"},
});
// clang-format on

/// True for the code itself, and for the code with a region or script behind it.
bool matches(std::string_view language, std::string_view code) noexcept {
    constexpr auto hyphen = [](char c) { return c == '_' ? '-' : c; };
    if (language.size() < code.size() || !std::ranges::equal(language.substr(0, code.size()), code, {}, hyphen, hyphen))
        return false;
    const auto rest = language.substr(code.size());
    return rest.empty() || rest.front() == '-' || rest.front() == '_';
}

const PanelTexts *textsFor(std::string_view language) noexcept {
    const auto codeMatches = [&](const PanelTexts &row) { return matches(language, row.language); };
    if (const auto *const row = std::ranges::find_if(texts, codeMatches); row != texts.end())
        return row;
    const auto nameMatches = [&](const auto &row) { return matches(language, row.first); };
    const auto *const other = std::ranges::find_if(otherNames, nameMatches);
    return other == otherNames.end() ? nullptr : std::ranges::find(texts, other->second, &PanelTexts::language);
}

} // namespace

std::span<const PanelTexts> allPanelTexts() noexcept {
    return texts;
}

const PanelTexts &panelTexts(std::span<const std::string> languages) noexcept {
    for (const std::string &language : languages)
        if (const PanelTexts *const found = textsFor(language); found != nullptr)
            return *found;
    return texts.front();
}

} // namespace vant
