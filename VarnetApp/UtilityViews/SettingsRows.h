#pragma once

#include "VarnetCore/Base/Date.h"

#include <QByteArray>
#include <QLocale>
#include <QVariant>

#include <string>
#include <vector>

namespace varnet {

/// Something that the user did.
struct ActionEntry {
    std::string key; ///< the record's id
    std::string title;
    std::string detail;
    Date date;
    Date today; ///< some moment of today
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const ActionEntry&, const ActionEntry&) = default;
};

/// A finding that the user set aside.
struct IgnoredEntry {
    std::string key; ///< the finding's id
    Date date;
    Date today; ///< some moment of today
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const IgnoredEntry&, const IgnoredEntry&) = default;
};

} // namespace varnet
