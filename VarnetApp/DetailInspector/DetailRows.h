#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Monitoring/ProcessSample.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// One fact about what is inspected: an icon and a line.
struct FactRow {
    std::string key; ///< the icon's name
    QString text;
    bool isAgent = false;

    static std::vector<QByteArray> roles() { return {"iconName", "text", "isAgent"}; }
    QVariant value(int role) const;
    friend bool operator==(const FactRow&, const FactRow&) = default;
};

/// An address that a server answers at.
struct AddressRow {
    std::string key; ///< the port
    int port = 0;

    static std::vector<QByteArray> roles() { return {"port", "shownAddress"}; }
    QVariant value(int role) const;
    friend bool operator==(const AddressRow&, const AddressRow&) = default;
};

/// A running server of the inspected group.
struct DetailServerRow {
    std::string key;
    QString name;
    QString ports;
    bool stoppable = false;
    QString stopReason;

    static std::vector<QByteArray> roles() { return {"key", "name", "ports", "stoppable", "stopReason"}; }
    QVariant value(int role) const;
    friend bool operator==(const DetailServerRow&, const DetailServerRow&) = default;
};

/// A process in the tree below what is inspected.
struct DetailProcessRow {
    std::string key;
    QString name;
    int pid = 0;
    int depth = 0;
    std::optional<double> cpu; ///< percent of one core, averaged over 30 seconds
    QString executable;
    QString workingDirectory;
    const Figures* figures = nullptr; ///< outlives the row

    static std::vector<QByteArray> roles() {
        return {"name", "pidText", "depth", "cpu", "executable", "workingDirectory"};
    }
    QVariant value(int role) const;
    friend bool operator==(const DetailProcessRow&, const DetailProcessRow&) = default;
};

/// Levels that are still indented; deeper ones stand below each other.
inline constexpr int deepestIndent = 6;

/// The tree in the order it is shown: every process right below its parent, oldest first.
std::vector<DetailProcessRow> processRows(std::span<const SampleRef> processes, const Figures& figures);

} // namespace varnet
