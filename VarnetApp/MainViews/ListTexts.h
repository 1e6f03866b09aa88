#pragma once

#include "VarnetApp/AppStore/Page.h"
#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Service.h"

#include <QString>

#include <cstddef>
#include <string>

/// The words of the activity lists.
namespace varnet::ListTexts {

struct Head {
    QString headline;
    QString line;
    QString searchPrompt;
};

/// What stands in a list's place.
struct Notice {
    QString icon;
    QString title;
    QString text;
    bool isError = false;
};

Head head(Page page);
/// @param count formatted; "—" when nothing is measured
QString note(const QString& count);

/// @param filtered a search or an agent narrows the list
Notice empty(Page page, bool filtered);
Notice unavailable();

std::string portText(std::size_t count);
/// ":3000", or how many there are.
std::string portNumbers(const Service& service);
std::string subtitle(const ApplicationGroup& group);
std::string subtitle(const Service& service, Date now);
std::string stopHelp(const ApplicationGroup& group);
std::string stopHelp(const Service& service);
QString tickLabel(const QString& name);
QString openLabel(const QString& name);

} // namespace varnet::ListTexts
