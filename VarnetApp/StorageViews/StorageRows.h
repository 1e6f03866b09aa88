#pragma once

#include "VarnetCore/Storage/StorageFamily.h"

#include <QByteArray>
#include <QLocale>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// A line of the storage list: a family of projects, or below an unfolded one each of its folders.
struct StorageRow {
    std::string key;
    QString title;
    QString subtitle;
    QString figure;
    QString review; ///< "3.9 GB to review"; mostly empty
    QString about;  ///< a tooltip
    bool warns = false;
    bool member = false;
    bool foldable = false;
    bool unfolded = false;
    bool last = false;    ///< of its family's members
    QList<double> shares; ///< of each bucket, in their order; 1 is the largest family
    std::string familyID;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const StorageRow&, const StorageRow&) = default;
};

/// Keys of rows: a family and its project may have the same path.
std::string familyRowKey(const std::string& familyID);
std::string projectRowKey(const std::string& path);

/// How the list is shown.
struct StorageListing {
    QString search; ///< sought in names, without regard to case; empty: everything
    /// Whether a family shows its folders.
    /// @param found the search has found some of its folders, not the family by its own name
    std::function<bool(const std::string& familyID, bool found)> unfolded;
    bool scanning = false;
    QLocale locale;

    /// @param families in the order of the list
    std::vector<StorageRow> rows(std::span<const StorageFamily> families) const;
};

/// A line of the detail sheet: a bucket, or what is known of the project.
struct StorageFact {
    std::string key;
    QString label;
    QString words;
    QString tone;      ///< name of a Theme colour for a dot; empty: none
    double share = 0;  ///< of the project, 0 to 1
    bool ours = false; ///< the words are a text of ours and no name

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const StorageFact&, const StorageFact&) = default;
};

/// A folder offered for review.
struct StorageCandidateRow {
    std::string key; ///< its path
    QString name;
    QString note;
    QString figure;
    QString tone; ///< name of a Theme colour
    bool ticked = true;
    std::uint64_t bytes = 0;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const StorageCandidateRow&, const StorageCandidateRow&) = default;
};

/// The largest first.
/// @param isTicked by path
std::vector<StorageCandidateRow> candidateRows(const StorageProject& project,
                                               const std::function<bool(const std::string&)>& isTicked,
                                               const QLocale& locale);
/// Those of which there is something, in their order.
std::vector<StorageFact> bucketFacts(const StorageProject& project, const QLocale& locale);
/// Beside its name, path and source.
std::vector<StorageFact> projectFacts(const StorageProject& project, const QLocale& locale);

} // namespace varnet
