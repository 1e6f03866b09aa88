#include "VarnetApp/MainViews/ActivityRow.h"

#include "VarnetApp/MainViews/ListTexts.h"

namespace varnet {

namespace {

enum Role {
    keyRole,
    titleRole,
    subtitleRole,
    primaryRole,
    secondaryRole,
    fractionRole,
    barToneRole,
    tileToneRole,
    tileLetterRole,
    tileIconRole,
    portsRole,
    stateRole,
    worktreeRole,
    agentsRole,
    tickedRole,
    openRole,
    stoppableRole,
    tickLabelRole,
    stopHelpRole,
    stopReasonRole,
    openLabelRole,
};

QString words(const std::string& text) {
    return QString::fromStdString(text);
}

/// The names, one a line.
QString lines(const std::vector<std::string>& names) {
    QString text;
    for (const std::string& name : names) {
        if (!text.isEmpty()) text += '\n';
        text += words(name);
    }
    return text;
}

} // namespace

std::vector<QByteArray> ActivityRow::roles() {
    return {"key",      "title",      "subtitle",  "primary",   "secondary", "fraction",   "barTone",
            "tileTone", "tileLetter", "tileIcon",  "ports",     "stateText", "worktree",   "agents",
            "ticked",   "open",       "stoppable", "tickLabel", "stopHelp",  "stopReason", "openLabel"};
}

QVariant ActivityRow::value(int role) const {
    const bool memoryFirst = telling->sort == SortOrder::memory;
    switch (role) {
    case keyRole:
        return words(key);
    case titleRole:
        return words(name);
    case subtitleRole:
        return words(subtitle);
    case primaryRole:
        return memoryFirst ? telling->figures.memory(memory) : telling->figures.percent(cpu);
    case secondaryRole:
        return memoryFirst ? telling->figures.percent(cpu) : telling->figures.memory(memory);
    case fractionRole:
        return share;
    case barToneRole:
        return memoryFirst ? QString("memory") : barTone(kind);
    case tileToneRole:
        return tileFor(kind, words(name)).tone;
    case tileLetterRole:
        return tileFor(kind, words(name)).letter;
    case tileIconRole:
        return tileFor(kind, words(name)).icon;
    case portsRole:
        return words(ports);
    case stateRole:
        return words(state);
    case worktreeRole:
        return words(worktree);
    case agentsRole:
        return lines(agents);
    case tickedRole:
        return ticked;
    case openRole:
        return open;
    case stoppableRole:
        return stoppable;
    case tickLabelRole:
        return ListTexts::tickLabel(words(name));
    case stopHelpRole:
        return words(stopHelp);
    case stopReasonRole:
        return words(stopReason);
    case openLabelRole:
        return ListTexts::openLabel(words(name));
    default:
        return {};
    }
}

} // namespace varnet
