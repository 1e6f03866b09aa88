#include "VarnetApp/StorageViews/StorageRows.h"

#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageMap/MapLooks.h"
#include "VarnetApp/StorageViews/StorageTexts.h"
#include "VarnetCore/Base/LexicalPath.h"

#include <algorithm>

namespace varnet {

namespace {

enum Role {
    keyRole,
    titleRole,
    subtitleRole,
    figureRole,
    reviewRole,
    aboutRole,
    warnsRole,
    memberRole,
    foldableRole,
    unfoldedRole,
    lastRole,
    sharesRole
};

QList<double> sharesOf(const StorageBuckets& buckets, std::uint64_t largest) {
    QList<double> shares;
    for (const StorageBucket bucket : allStorageBuckets) {
        const auto found = buckets.find(bucket);
        const double bytes = found == buckets.end() ? 0 : static_cast<double>(found->second);
        shares.append(largest == 0 ? 0 : bytes / static_cast<double>(largest));
    }
    return shares;
}

bool contains(const std::string& name, const QString& search) {
    return shownName(name).contains(search, Qt::CaseInsensitive);
}

bool matches(const StorageProject& project, const QString& search) {
    return contains(project.branch, search) || contains(project.name, search) ||
           contains(std::string(LexicalPath::lastComponent(project.path)), search);
}

} // namespace

std::string familyRowKey(const std::string& familyID) {
    return "family:" + familyID;
}

std::string projectRowKey(const std::string& path) {
    return "project:" + path;
}

std::vector<QByteArray> StorageRow::roles() {
    return {"key",   "title",  "subtitle", "figure",   "review", "about",
            "warns", "member", "foldable", "unfolded", "last",   "shares"};
}

QVariant StorageRow::value(int role) const {
    switch (role) {
    case keyRole:
        return keyInQml(key);
    case titleRole:
        return title;
    case subtitleRole:
        return subtitle;
    case figureRole:
        return figure;
    case reviewRole:
        return review;
    case aboutRole:
        return about;
    case warnsRole:
        return warns;
    case memberRole:
        return member;
    case foldableRole:
        return foldable;
    case unfoldedRole:
        return unfolded;
    case lastRole:
        return last;
    case sharesRole:
        return QVariant::fromValue(shares);
    default:
        return {};
    }
}

std::vector<StorageRow> StorageListing::rows(std::span<const StorageFamily> families) const {
    std::uint64_t largest = 0;
    for (const StorageFamily& family : families)
        largest = std::max(largest, family.bytes());
    std::vector<StorageRow> rows;
    for (const StorageFamily& family : families) {
        const bool named = search.isEmpty() || contains(family.name(), search);
        std::vector<const StorageProject*> members;
        for (const StorageProject& member : family.members)
            if (named || matches(member, search)) members.push_back(&member);
        if (members.empty()) continue;

        const bool alone = family.members.size() == 1;
        StorageRow row;
        row.key = familyRowKey(family.id);
        row.familyID = family.id;
        row.title = shownName(family.name());
        row.subtitle = StorageTexts::subtitle(family, scanning);
        row.figure = StorageTexts::size(family, locale);
        row.foldable = !alone;
        row.unfolded = !alone && unfolded && unfolded(family.id, !named);
        row.warns = alone && StorageTexts::isPartial(family, scanning);
        if (row.warns) row.subtitle = StorageTexts::subtitle(family.members.front(), scanning);
        if (alone) row.review = StorageTexts::toReview(family.reviewBytes(), locale);
        row.about = alone ? shownName(family.members.front().path)
                          : QString("Combined size · Expand to see each folder");
        row.shares = sharesOf(family.buckets(), largest);
        rows.push_back(std::move(row));
        if (!rows.back().unfolded) continue;

        std::ranges::stable_sort(members, std::ranges::greater{},
                                 [](const StorageProject* member) { return member->bytes(); });
        for (const StorageProject* member : members) {
            StorageRow child;
            child.key = projectRowKey(member->path);
            child.familyID = family.id;
            child.title = StorageTexts::title(*member);
            child.subtitle = StorageTexts::subtitle(*member, scanning);
            child.figure = StorageTexts::size(*member, locale);
            child.review = StorageTexts::toReview(member->reviewBytes(), locale);
            child.about = shownName(member->path);
            child.warns = StorageTexts::isPartial(*member, scanning);
            child.member = true;
            child.last = member == members.back();
            child.shares = sharesOf(member->buckets, largest);
            rows.push_back(std::move(child));
        }
    }
    return rows;
}

std::vector<QByteArray> StorageFact::roles() {
    return {"label", "words", "tone", "share", "ours"};
}

QVariant StorageFact::value(int role) const {
    const QVariant values[]{label, words, tone, share, ours};
    return role >= 0 && role < static_cast<int>(std::size(values)) ? values[role] : QVariant();
}

std::vector<QByteArray> StorageCandidateRow::roles() {
    return {"key", "name", "note", "figure", "tone", "ticked"};
}

QVariant StorageCandidateRow::value(int role) const {
    const QVariant values[]{keyInQml(key), name, note, figure, tone, ticked};
    return role >= 0 && role < static_cast<int>(std::size(values)) ? values[role] : QVariant();
}

std::vector<StorageCandidateRow> candidateRows(const StorageProject& project,
                                               const std::function<bool(const std::string&)>& isTicked,
                                               const QLocale& locale) {
    std::vector<StorageCandidateRow> rows;
    for (const StorageCandidate& candidate : project.candidates)
        rows.push_back({candidate.path, shownName(candidate.relativePath()),
                        StorageTexts::note(candidate.bucket), StorageTexts::size(candidate.bytes, locale),
                        MapLooks::bucketToneName(candidate.bucket), isTicked(candidate.path),
                        candidate.bytes});
    std::ranges::stable_sort(rows, std::ranges::greater{}, &StorageCandidateRow::bytes);
    return rows;
}

std::vector<StorageFact> bucketFacts(const StorageProject& project, const QLocale& locale) {
    std::vector<StorageFact> facts;
    const std::uint64_t all = project.bytes();
    for (const StorageBucket bucket : allStorageBuckets) {
        const auto found = project.buckets.find(bucket);
        if (found == project.buckets.end() || found->second == 0) continue;
        const QString name = QString::fromUtf8(rawValue(bucket).data());
        facts.push_back({name.toStdString(), name, StorageTexts::size(found->second, locale),
                         MapLooks::bucketToneName(bucket),
                         static_cast<double>(found->second) / static_cast<double>(all), false});
    }
    return facts;
}

std::vector<StorageFact> projectFacts(const StorageProject& project, const QLocale& locale) {
    const auto fact = [](const char* label, QString value, bool ours = false) {
        return StorageFact{label, label, std::move(value), {}, 0, ours};
    };
    return {fact("Branch", StorageTexts::title(project)), fact("Git", shownName(project.gitSummary), true),
            fact("Last change", StorageTexts::day(project.lastModified, locale))};
}

} // namespace varnet
