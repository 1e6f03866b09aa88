#include "VarnetApp/UtilityViews/SettingsModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/UtilityViews/SettingsTexts.h"
#include "VarnetCore/Base/Clock.h"

#include <algorithm>
#include <array>

namespace varnet {

namespace {

struct Language {
    const char* code;
    const char* name;
};

constexpr std::array<Language, 2> allLanguages{{{"en", "English"}, {"cs", "Čeština"}}};
constexpr std::array<const char*, 3> allAppearances{"System", "Light", "Dark"};

bool isIndex(int index, std::size_t size) {
    return index >= 0 && static_cast<std::size_t>(index) < size;
}

} // namespace

void SettingsModel::begin() {
    store().publishLatest();
    connect(&store(), &VarnetStore::snapshotChanged, this, &SettingsModel::refresh);
    connect(&store(), &VarnetStore::settingsChanged, this, &SettingsModel::refresh);
    connect(&store(), &VarnetStore::loginChanged, this, &SettingsModel::refresh);
    connect(&store(), &VarnetStore::historyChanged, this, &SettingsModel::refreshHistory);
    connect(&context().localization, &AppLocalization::languageChanged, this, &SettingsModel::refreshHistory);
    refreshHistory();
}

QStringList SettingsModel::languages() const {
    QStringList names;
    for (const Language& language : allLanguages)
        names.append(QString::fromUtf8(language.name));
    return names;
}

QStringList SettingsModel::appearances() const {
    return {allAppearances.begin(), allAppearances.end()};
}

void SettingsModel::chooseLanguage(int index) {
    if (isIndex(index, allLanguages.size()))
        context().localization.setLanguageCode(allLanguages.at(static_cast<std::size_t>(index)).code);
}

void SettingsModel::chooseAppearance(int index) {
    if (isIndex(index, allAppearances.size()))
        store().setAppearance(allAppearances.at(static_cast<std::size_t>(index)));
}

void SettingsModel::openCollection() {
    store().navigate("hall");
}

SettingsModel::Shown SettingsModel::read() const {
    const AppLocalization& localization = context().localization;
    const FanSnapshot& fans = store().snapshot().fans;
    Shown shown;
    const QString code = localization.languageCode();
    const auto language =
        std::ranges::find_if(allLanguages, [&](const auto& one) { return one.code == code; });
    if (language != allLanguages.end()) shown.language = static_cast<int>(language - allLanguages.begin());
    const QString chosen = store().appearance();
    const auto appearance =
        std::ranges::find_if(allAppearances, [&](const char* one) { return one == chosen; });
    if (appearance != allAppearances.end())
        shown.appearance = static_cast<int>(appearance - allAppearances.begin());
    // What waits for approval is switched off by switching it off here.
    shown.login = store().launchAtLogin() || store().loginNeedsApproval();
    shown.fans = SettingsTexts::fans(fans, Figures(localization.locale()));
    shown.fansMeasured = fans.availability == FanAvailability::available && !fans.fans.empty();
    shown.hasActions = !store().actions().empty();
    shown.lastAction = "No actions in the last seven days.";
    if (shown.hasActions) {
        const HistoryRecord& last = store().actions().front();
        const QString when = SettingsTexts::moment(last.date, context().clock.now(), localization.locale());
        shown.lastAction = localization.text(QString::fromStdString(last.title)) + " · " +
                           localization.text(QString::fromStdString(last.detail)) + " · " + when;
    }
    shown.ignoredTitle = SettingsTexts::ignoredFindings(store().ignored().size());
    return shown;
}

void SettingsModel::refresh() {
    Shown next = read();
    if (next == shown_) return;
    shown_ = std::move(next);
    emit changed();
}

void SettingsModel::refreshHistory() {
    const Date now = context().clock.now();
    const QLocale& locale = context().localization.locale();
    std::vector<ActionEntry> actions;
    for (const HistoryRecord& action : store().actions())
        actions.push_back({action.id.text(), action.title, action.detail, action.date, now, locale});
    actions_.update(std::move(actions));
    std::vector<IgnoredEntry> ignored;
    for (const auto& [id, date] : store().ignored())
        ignored.push_back({id, date, now, locale});
    std::ranges::stable_sort(ignored, std::ranges::greater(), &IgnoredEntry::date);
    ignored_.update(std::move(ignored));
    refresh();
}

} // namespace varnet
